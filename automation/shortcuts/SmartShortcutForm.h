// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/shortcuts/ShortcutFiles.h"
#include "core/LatestAnswer.h"
#include "widgets/FLWidget.h"
#include "widgets/JobHost.h"

class DropFrame;
class ElidedLabel;
class FLTreeView;
class NoticeBar;
class QPushButton;
class QStandardItemModel;
class QToolBar;
class QToolButton;
class SmartShortcutDialog;

// Shortcuts that start a program at a chosen priority: those on the desktop, in the Start menu and in a
// folder of the user's own are listed, made, changed, tried, put right and removed. There is no list besides
// the shortcut files themselves.
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
    // Reads the folders anew; selects the shortcut of that path, or else the one that was selected.
    void refresh(const QString &selected = {});
    void showFound(automation::ShortcutSearch search, const QString &selected);
    void showRow(int row, const automation::SmartShortcut &shortcut);
    void showButtons();
    const automation::SmartShortcut *current() const;
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
    FLTreeView *m_view;
    QStandardItemModel *m_model;
    NoticeBar *m_notice; // what was done
    NoticeBar *m_broken; // what is wrong with the list
    ElidedLabel *m_ownFolder;
    QPushButton *m_chooseFolder;
    QPushButton *m_noFolder;
    QList<automation::SmartShortcut> m_shortcuts;
    core::LatestAnswer m_search;
    JobHost m_jobs;
};
