// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/AgentLog.h"
#include "widgets/FLTreeView.h"

// What the agent did for one feature, and why, newest first. Read again by refresh() when it has grown.
class AgentLogView : public FLTreeWidget
{
    Q_OBJECT

public:
    explicit AgentLogView(QStringView feature, QWidget *parent = nullptr);

    void refresh();
    // The latest; an invalid time when there is none.
    const automation::LogEntry &latest() const { return m_latest; }

private:
    QStringView m_feature;
    QDateTime m_shown; // last write of the log on show
    automation::LogEntry m_latest;
};
