// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/AgentState.h"

#include "settings/Settings.h"

#include <QStringBuilder>

namespace settings
{

namespace
{

// Written by the agent alone.
constexpr QStringView agentKey = u"Software\\Fernlight Larkspur\\Agent";

QString read(const QString &name)
{
    QString text;
    readString(agentKey, name, text);
    return text;
}

void write(const QString &name, const QString &text)
{
    if (text.isEmpty())
        deleteValue(agentKey, name);
    else if (read(name) != text)
        writeString(agentKey, name, text);
}

} // namespace

AgentState readAgentState(QStringView feature)
{
    return {read(feature % u" now"), read(feature % u" next")};
}

void writeAgentState(QStringView feature, const AgentState &state)
{
    write(feature % u" now", state.now);
    write(feature % u" next", state.next);
}

QString readAgentNote(QStringView name)
{
    return read(name.toString());
}

void writeAgentNote(QStringView name, const QString &text)
{
    write(name.toString(), text);
}

} // namespace settings
