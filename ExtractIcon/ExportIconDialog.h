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

// Exports one icon or several: for one it lists each image, for several each combination of size and depth
// that occurs. Check marks apply to PNG; an icon file always contains all sizes. Deletes itself when done.
class ExportIconDialog : public QDialog
{
    Q_OBJECT

public:
    struct Choice {
        QString source; // the file that contains the icons
        QList<icons::IconRecord> records;
        QList<icons::IconImage> images; // for a single icon, in directory order; otherwise empty
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
    // The number of written files, and the first of them.
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
    // One per row, in directory order; the list shows them reversed.
    QList<icons::ImageFacts> m_sizes;
    QListWidget *m_list;
    QLineEdit *m_name;
    NoticeBar *m_notice;
    QList<QPushButton *> m_buttons;
    QPushButton *m_png = nullptr;
    JobHost *m_job;
};
