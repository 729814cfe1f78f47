// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

// What the background agent leaves for the forms and for itself.
namespace settings
{

// What a feature does at present and what it will do next, in sentences. Of an agent that has ended nothing
// is left; one that was killed leaves its last, so ask first whether one runs.
struct AgentState {
    QString now;
    QString next;

    bool operator==(const AgentState &) const = default;
};
AgentState readAgentState(QStringView feature);
void writeAgentState(QStringView feature, const AgentState &state);

// A note of the agent to its next start, so that an act can be undone after a crash. Empty: none.
QString readAgentNote(QStringView name);
void writeAgentNote(QStringView name, const QString &text);

} // namespace settings
