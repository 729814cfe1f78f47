// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/shortcuts/ShortcutTest.h"

#include "platform/Programs.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

namespace automation
{

namespace
{

constexpr int maxWait = 5000; // ms
constexpr int interval = 100;

QString tr(const char *text)
{
    return QCoreApplication::translate("automation", text);
}

quint64 now()
{
    FILETIME time;
    GetSystemTimeAsFileTime(&time);
    return quint64(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

QString nameOf(DWORD number)
{
    for (int index = 0; index < priorityCount; ++index) {
        if (priorityClass(static_cast<Priority>(index)) == number)
            return priorityName(static_cast<Priority>(index)).toLower();
    }
    return {};
}

} // namespace

ShortcutTest::ShortcutTest(PriorityStart start) : m_start(std::move(start)), m_began(now()) {}

ShortcutTest::Result ShortcutTest::await(const core::CancelFlag &cancel) const
{
    const QString name = m_start.program.mid(m_start.program.lastIndexOf(u'\\') + 1);
    for (const QDeadlineTimer end(maxWait); !end.hasExpired() && !cancel.isSet(); QThread::msleep(interval)) {
        for (const platform::RunningProgram &program : platform::runningFrom(m_start.program)) {
            const QString found = nameOf(program.priorityClass);
            if (program.started < m_began || found.isEmpty())
                continue;
            if (program.priorityClass == priorityClass(m_start.priority))
                return {true, tr("%1 runs at %2 priority.").arg(name, found)};
            return {false,
                    tr("%1 runs at %2 priority. A program that asks for administrator rights, or sets its "
                       "own priority, cannot be given another one.")
                        .arg(name, found)};
        }
    }
    return {false, tr("%1 has ended already, or has handed over to one that was running before.").arg(name)};
}

} // namespace automation
