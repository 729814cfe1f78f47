// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/AgentLog.h"
#include "widgets/FLTreeView.h"

// The log of the agent for one feature, newest first. refresh() reads it again if it has grown.
class AgentLogView : public FLTreeWidget
{
    Q_OBJECT

public:
    explicit AgentLogView(QStringView feature, QWidget *parent = nullptr);

    void refresh();
    // The newest entry; its time is invalid if there is none.
    const automation::LogEntry &latest() const { return m_latest; }

private:
    QStringView m_feature;
    QDateTime m_shown; // modification time of the shown log
    automation::LogEntry m_latest;
};
