// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Tasks.h"

#include "SystemInfo/engine/Format.h"
#include "SystemInfo/engine/Pages.h"

#include <QLocale>
#include <QRegularExpression>

#include <map>

namespace systeminfo
{

namespace
{

using Kind = TaskTrigger::Kind;

constexpr int allMonths = 0xfff;

QString clockText(const QString &start)
{
    const QDateTime time = QDateTime::fromString(start, Qt::ISODate);
    return time.isValid() ? time.toString(QStringLiteral("HH:mm")) : QString();
}

QString atClock(const QString &text, const TaskTrigger &trigger)
{
    const QString clock = clockText(trigger.start);
    return clock.isEmpty() ? text : Words::tr("%1 at %2").arg(text, clock);
}

// The names of the set bits, lowest first.
template <class Name>
QString listed(quint32 bits, int count, Name name)
{
    QStringList names;
    for (int i = 0; i < count; ++i) {
        if (bits >> i & 1)
            names << name(i);
    }
    return names.join(QStringLiteral(", "));
}

QString weekdaysText(int bits)
{
    // Sunday is the first bit, and Qt's day 7.
    return listed(static_cast<quint32>(bits), 7, [](int i) { return QLocale::c().dayName(i == 0 ? 7 : i); });
}

QString monthsText(int bits)
{
    if (bits == allMonths)
        return Words::tr("every month");
    return listed(static_cast<quint32>(bits), 12, [](int i) { return QLocale::c().monthName(i + 1); });
}

QString daysOfMonth(const TaskTrigger &trigger)
{
    QString text = listed(trigger.days, 31, [](int i) { return QString::number(i + 1); });
    if (trigger.last)
        text += (text.isEmpty() ? QString() : QStringLiteral(", ")) + Words::tr("the last");
    return Words::tr("On day %1 of %2").arg(text, monthsText(trigger.months));
}

QString weekdaysOfMonth(const TaskTrigger &trigger)
{
    const QString ordinals[] = {Words::tr("first"), Words::tr("second"), Words::tr("third"),
                                Words::tr("fourth")};
    QString weeks =
        listed(static_cast<quint32>(trigger.weeks), 4, [&ordinals](int i) { return ordinals[i]; });
    if (trigger.last)
        weeks += (weeks.isEmpty() ? QString() : QStringLiteral(", ")) + Words::tr("last");
    return Words::tr("On the %1 %2 of %3")
        .arg(weeks, weekdaysText(trigger.weekdays), monthsText(trigger.months));
}

QString weekly(const TaskTrigger &trigger)
{
    const QString days = weekdaysText(trigger.weekdays);
    return trigger.interval > 1 ? Words::tr("Every %1 weeks on %2").arg(trigger.interval).arg(days)
                                : Words::tr("Every week on %1").arg(days);
}

QString occasion(const TaskTrigger &trigger)
{
    switch (trigger.kind) {
    case Kind::Event:
        return Words::tr("On an event");
    case Kind::Once: {
        const QDateTime time = QDateTime::fromString(trigger.start, Qt::ISODate);
        return time.isValid()
                   ? atClock(Words::tr("Once on %1").arg(time.date().toString(Qt::ISODate)), trigger)
                   : Words::tr("Once");
    }
    case Kind::Daily:
        return atClock(trigger.interval > 1 ? Words::tr("Every %1 days").arg(trigger.interval)
                                            : Words::tr("Every day"),
                       trigger);
    case Kind::Weekly:
        return atClock(weekly(trigger), trigger);
    case Kind::Monthly:
        return atClock(daysOfMonth(trigger), trigger);
    case Kind::MonthlyByWeekday:
        return atClock(weekdaysOfMonth(trigger), trigger);
    case Kind::Idle:
        return Words::tr("When the computer is idle");
    case Kind::Registration:
        return Words::tr("When the task is created or changed");
    case Kind::Boot:
        return Words::tr("When the computer starts");
    case Kind::Logon:
        return trigger.user.isEmpty() ? Words::tr("When a user logs on")
                                      : Words::tr("When %1 logs on").arg(trigger.user);
    case Kind::SessionChange:
        return Words::tr("When a session connects, disconnects, locks or unlocks");
    case Kind::Other:
        break;
    }
    return Words::tr("Another trigger");
}

Row taskRow(const ScheduledTask &task)
{
    Row row = item("Task", task.name, taskStateText(task.state));
    row.add(fact(SYSTEMINFO_LABEL("State"), taskStateText(task.state)));
    for (const TaskTrigger &trigger : task.triggers)
        row.add(fact(SYSTEMINFO_LABEL("Trigger"), triggerText(trigger)));
    for (const QString &action : task.actions)
        row.add(fact(SYSTEMINFO_LABEL("Action"), action));
    row.add(fact(SYSTEMINFO_LABEL("Last Run"), timeText(task.lastRun)));
    row.add(fact(SYSTEMINFO_LABEL("Next Run"), timeText(task.nextRun)));
    row.add(fact(SYSTEMINFO_LABEL("Last Result"), taskResultText(task.lastResult)));
    row.add(fact(SYSTEMINFO_LABEL("Author"), task.author, Privacy::Person));
    if (task.hidden)
        row.add(fact(SYSTEMINFO_LABEL("Hidden"), Value::yesNo(true)));
    return row;
}

} // namespace

QString isoDurationText(const QString &duration)
{
    static const QRegularExpression form(
        QStringLiteral("^P(?:(\\d{1,5})D)?(?:T(?:(\\d{1,5})H)?(?:(\\d{1,5})M)?(?:(\\d{1,5})S)?)?$"));
    const auto match = form.match(duration);
    if (!match.hasMatch())
        return duration;
    const quint64 seconds = match.captured(1).toULongLong() * 86400 + match.captured(2).toULongLong() * 3600 +
                            match.captured(3).toULongLong() * 60 + match.captured(4).toULongLong();
    return seconds > 0 && seconds < 60 ? Words::tr("%1 seconds").arg(seconds) : durationText(seconds);
}

QString triggerText(const TaskTrigger &trigger)
{
    QString text = occasion(trigger);
    if (!trigger.repetition.isEmpty())
        text = Words::tr("%1, repeated every %2").arg(text, isoDurationText(trigger.repetition));
    return trigger.enabled ? text : Words::tr("%1 (disabled)").arg(text);
}

QString taskStateText(int state)
{
    switch (state) {
    case 1:
        return Words::tr("Disabled");
    case 2:
        return Words::tr("Queued");
    case 3:
        return Words::tr("Ready");
    case 4:
        return Words::tr("Running");
    default:
        return {};
    }
}

// Common results of the scheduler and of programs, from winerror.h.
QString taskResultText(quint32 result)
{
    const std::map<quint32, QString> texts = {
        {0, Words::tr("Success")},
        {1, Words::tr("The program reported an error")},
        {0x00041300, Words::tr("The task is ready for its next run")},
        {0x00041301, Words::tr("The task is running")},
        {0x00041302, Words::tr("The task is disabled")},
        {0x00041303, Words::tr("The task has not run yet")},
        {0x00041304, Words::tr("There are no more runs")},
        {0x00041306, Words::tr("The user ended the last run")},
        {0x00041325, Words::tr("The task is queued")},
        {0x80070002, Words::tr("The file was not found")},
        {0x80070005, Words::tr("Access is denied")},
        {0x800704dd, Words::tr("No user was logged on")},
        {0x800710e0, Words::tr("Windows refused the run")},
        {0x8004131f, Words::tr("It was running already")},
        {0xc000013a, Words::tr("The program was interrupted")},
        {0xc0000005, Words::tr("The program crashed")},
    };
    const QString code = QStringLiteral("0x") + QString::number(result, 16);
    const auto found = texts.find(result);
    return found == texts.end() ? code : QStringLiteral("%1 (%2)").arg(found->second, code);
}

Page tasksPage(Machine &machine, const Publish &publish)
{
    Page page = emptyPage(PageId::TaskScheduler);
    publish(page);
    TaskList list = machine.tasks();
    std::map<QString, Row> folders;
    for (const ScheduledTask &task : list.tasks) {
        const auto [folder, isNew] = folders.try_emplace(task.folder);
        if (isNew) {
            folder->second = item("Folder", task.folder);
            folder->second.icon = QStringLiteral("SysInfoWindows16.png");
        }
        folder->second.add(taskRow(task));
    }
    for (auto &[path, row] : folders)
        page.sections.push_back(std::move(row));
    if (page.sections.empty()) {
        Row none = section(SYSTEMINFO_LABEL("Task Scheduler"), QStringLiteral("SysInfoWindows16.png"));
        page.sections = {list.read ? withNone(std::move(none)) : std::move(none)};
    }
    if (!list.read)
        page.notices << Words::tr("The task scheduler did not answer.");
    if (list.cutOff)
        page.notices << Words::tr("There are too many tasks; only the first are shown.");
    return page;
}

} // namespace systeminfo
