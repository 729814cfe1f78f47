// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/shortcuts/ShortcutFiles.h"
#include "widgets/FLTreeView.h"

class QStandardItemModel;

namespace automation
{

// False for a shortcut that needs repair or cannot be read.
bool isReady(const SmartShortcut &shortcut);

// The shortcuts that were found, one per row.
class SmartShortcutList : public FLTreeView
{
    Q_OBJECT

public:
    explicit SmartShortcutList(QWidget *parent = nullptr);

    // Replaces the rows, and selects the shortcut with that path.
    void setShortcuts(QList<SmartShortcut> shortcuts, const QString &selected);
    // The selected one, null if there is none. Valid until the next setShortcuts().
    const SmartShortcut *current() const;

private:
    void showRow(int row, const SmartShortcut &shortcut);

    QStandardItemModel *m_model;
    QList<SmartShortcut> m_shortcuts;
};

} // namespace automation
