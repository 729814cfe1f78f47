// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

// What the background agent stores for the forms and for its own next start.
namespace settings
{

// What a feature is doing and what it will do next, as sentences. Cleared when the agent ends, but not if it
// is killed, so check first whether one is running.
struct AgentState {
    QString now;
    QString next;

    bool operator==(const AgentState &) const = default;
};
AgentState readAgentState(QStringView feature);
void writeAgentState(QStringView feature, const AgentState &state);

// A note from the agent to its next start, so that changes can be undone after a crash. Empty if there is
// none.
QString readAgentNote(QStringView name);
void writeAgentNote(QStringView name, const QString &text);

} // namespace settings
