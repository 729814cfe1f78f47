// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/shortcuts/ShortcutFiles.h"
#include "core/LatestAnswer.h"
#include "widgets/FLWidget.h"
#include "widgets/JobHost.h"

class DropFrame;
class ElidedLabel;
class NoticeBar;
class QPushButton;
class QToolBar;
class QToolButton;
class SmartShortcutDialog;

namespace automation
{
class SmartShortcutList;
}

// Manages shortcuts that start a program with a chosen priority: lists those on the desktop, in the Start
// menu and in a user-defined folder, and creates, edits, tests, repairs and deletes them. The shortcut files
// are the only storage.
class SmartShortcutForm : public FLWidget
{
    Q_OBJECT

public:
    explicit SmartShortcutForm(QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void buildWidgets();
    void buildLayout();
    void connectWidgets();
    // Reloads the folders; selects the shortcut with that path, or keeps the selection.
    void refresh(const QString &selected = {});
    void showFound(automation::ShortcutSearch search, const QString &selected);
    void showButtons();
    void add(const QString &path = {});
    void editCurrent();
    void removeCurrent();
    void testCurrent();
    void repairCurrent();
    void store(SmartShortcutDialog *dialog, const QString &path, std::function<QString()> write);
    void openDialog(SmartShortcutDialog *dialog, std::function<void()> save);
    void chooseOwnFolder();
    void setOwnFolder(const QString &folder);

    QToolBar *m_toolBar;
    QToolButton *m_add;
    QToolButton *m_edit;
    QToolButton *m_remove;
    QToolButton *m_test;
    QToolButton *m_repair;
    QToolButton *m_reveal;
    QToolButton *m_again;
    DropFrame *m_frame;
    automation::SmartShortcutList *m_view;
    NoticeBar *m_notice; // result of the last action
    NoticeBar *m_broken; // problems in the list
    ElidedLabel *m_ownFolder;
    QPushButton *m_chooseFolder;
    QPushButton *m_noFolder;
    core::LatestAnswer m_search;
    JobHost m_jobs;
};
