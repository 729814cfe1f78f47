// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/RunningJobs.h"

#include <QHash>
#include <QWidget>

class ModuleTable;
class QToolButton;

// The column of module buttons on the left, `sidePanelWidget`. The owner connects the buttons and sets which
// are checked.
class SidePanel : public QWidget
{
    Q_OBJECT

public:
    explicit SidePanel(const ModuleTable &table, QWidget *parent = nullptr);

    // Limits the width and lays the buttons out.
    void limitWidth();
    void layOut();

    // Shows the state of a page's jobs on its module's button.
    void showJob(int id, RunningJobs::State state);

    QToolButton *homeButton() const { return m_home; }
    QToolButton *miscToolsButton() const { return m_miscTools; }
    QToolButton *button(int id) const { return m_buttons.value(id); } // null for a module without a button
    const QHash<int, QToolButton *> &buttons() const { return m_buttons; }

private:
    QToolButton *makeButton(const QString &name, const QString &text, const QString &icon);

    QHash<int, QToolButton *> m_buttons; // by module id
    QList<QToolButton *> m_order;
    QToolButton *m_home = nullptr;
    QToolButton *m_miscTools = nullptr;
    QWidget *m_contents = nullptr;
};
