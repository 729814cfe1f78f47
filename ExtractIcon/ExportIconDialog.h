// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/IconExport.h"

#include <QDialog>
#include <QList>

class JobHost;
class NoticeBar;
class QLineEdit;
class QListWidget;
class QPushButton;

// Exports one icon, or several at once: of one it offers each image, of several each size and depth that one
// of them has. Check marks count for PNG; an icon file always holds all sizes. Deletes itself when it is
// done.
class ExportIconDialog : public QDialog
{
    Q_OBJECT

public:
    struct Choice {
        QString source; // the file with the icons
        QList<icons::IconRecord> records;
        QList<icons::IconImage> images; // of one icon, in the order of its directory; else empty
    };

    ExportIconDialog(Choice choice, QWidget *parent);

    void reject() override;

public slots:
    void on_checkAllButton_clicked();
    void on_uncheckAllButton_clicked();
    void on_exportPngButton_clicked();
    void on_exportIcoButton_clicked();
    void on_cancelButton_clicked();

signals:
    // How many files have been written, and the first of them.
    void exported(int files, const QString &first);

private:
    void buildContent();
    void fillList();
    void addItem(const icons::ImageFacts &facts, const QImage &image, const QString &more);
    void setAllChecked(bool checked);
    void updateButtons();
    bool nameIsUsable();
    QString chosenFolder();
    icons::ExportTask task() const;
    void start(icons::ExportTask task, bool png);
    void finish(const icons::ExportResult &result, const QString &error);

    const Choice m_choice;
    // One a row of the list, in the order of the directory: the list shows them reversed.
    QList<icons::ImageFacts> m_sizes;
    QListWidget *m_list;
    QLineEdit *m_name;
    NoticeBar *m_notice;
    QList<QPushButton *> m_buttons;
    QPushButton *m_png = nullptr;
    JobHost *m_job;
};
