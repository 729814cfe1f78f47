// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileTypes.h"

#include <QDialog>

class NoticeBar;
class QLabel;
class QListWidget;
class QPushButton;

// Edits the extensions of one category.
class DiskUsageEditFileTypesDialog : public QDialog
{
    Q_OBJECT

public:
    // `others` are the remaining categories, to detect extensions that are in two of them.
    DiskUsageEditFileTypesDialog(core::FileTypeCategory category, core::FileTypeTable others,
                                 QWidget *parent = nullptr);

signals:
    // The edited category's display text.
    void newValue(const QString &displayText);

public slots:
    void on_newFileExtensionValue(const QString &extension);

private slots:
    void on_AddButton_clicked();
    void on_DeleteButton_clicked();
    void on_SaveButton_clicked();

private:
    void buildLayout();
    void connectAll();
    void enableButtons();
    // Marks an extension that is in another category too.
    void addRow(const QString &extension);
    // A note about that; empty if the extension is in this category only.
    QString sharedNote(const QString &extension) const;

    core::FileTypeCategory m_category;
    core::FileTypeTable m_others;
    QListWidget *m_list;
    NoticeBar *m_notice;
    QPushButton *m_add;
    QPushButton *m_delete;
    QPushButton *m_save;
};
