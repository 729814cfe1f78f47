// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FLWidget.h"

#include <QTimer>

class AgentLogView;
class FLTreeView;
class NoticeBar;
class QCheckBox;
class QItemSelection;
class QLabel;
class QPushButton;
class QStandardItemModel;
class QToolBar;
class QToolButton;

// The user's keyboard shortcuts. This page edits and stores them; the background agent executes them and
// writes a log, which is shown below the list.
class HotkeyForm : public FLWidget
{
    Q_OBJECT

public:
    explicit HotkeyForm(QWidget *parent = nullptr);

public slots:
    // Appends a shortcut in its stored form, unless its combination is taken.
    void insertData(const QString &command);

private slots:
    void OnTreeViewSelectionChanged(const QItemSelection &selected, const QItemSelection &deselected);

private:
    void buildWidgets();
    void buildLayout();
    void connectWidgets();
    void load();
    void appendRow(const QString &command);
    void showRow(int row, const QString &command);
    QString commandAt(int row) const;
    int currentRow() const;
    bool isTaken(const QString &command, int except);
    void store();
    void apply();
    void add();
    void editCurrent();
    void replace(int row, const QString &command);
    void removeCurrent();
    void testCurrent();
    void moveCurrent(int by);
    void showAgent();
    void showConflicts();

    QCheckBox *m_enabled;
    QToolBar *m_toolBar;
    QToolButton *m_add;
    QToolButton *m_edit;
    QToolButton *m_remove;
    QToolButton *m_test;
    QToolButton *m_up;
    QToolButton *m_down;
    FLTreeView *m_view;
    QStandardItemModel *m_model;
    NoticeBar *m_notice;
    NoticeBar *m_conflicts;
    QLabel *m_agent;
    QPushButton *m_startAgent;
    AgentLogView *m_log;
    QTimer m_refresh;
    QString m_conflictsShown; // the last notice, dismissed by the user or not
};
