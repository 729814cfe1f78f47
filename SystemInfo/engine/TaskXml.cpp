// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/TaskXml.h"

#include <QLocale>
#include <QXmlStreamReader>

#include <algorithm>

namespace systeminfo
{

namespace
{

using Kind = TaskTrigger::Kind;

constexpr std::size_t maxTriggers = 100; // the scheduler itself allows 48
constexpr qsizetype maxActions = 100;

struct KindName {
    const char *element;
    Kind kind;
};
constexpr KindName triggerKinds[] = {
    {"EventTrigger", Kind::Event},
    {"TimeTrigger", Kind::Once},
    {"CalendarTrigger", Kind::Other}, // until its schedule has been read
    {"IdleTrigger", Kind::Idle},
    {"RegistrationTrigger", Kind::Registration},
    {"BootTrigger", Kind::Boot},
    {"LogonTrigger", Kind::Logon},
    {"SessionStateChangeTrigger", Kind::SessionChange},
};
constexpr KindName schedules[] = {
    {"ScheduleByDay", Kind::Daily},
    {"ScheduleByWeek", Kind::Weekly},
    {"ScheduleByMonth", Kind::Monthly},
    {"ScheduleByMonthDayOfWeek", Kind::MonthlyByWeekday},
};

Kind kindOf(QStringView element)
{
    for (const KindName &row : triggerKinds) {
        if (element == QLatin1String(row.element))
            return row.kind;
    }
    return Kind::Other;
}

// The bit of an element named after a month or weekday; 0 for another name.
int nameBit(QStringView element, int count, QString (QLocale::*name)(int, QLocale::FormatType) const,
            int first)
{
    for (int i = 0; i < count; ++i) {
        const int number = first + i == 0 ? 7 : first + i; // Sunday comes first here; it is Qt's day 7
        if (element == (QLocale::c().*name)(number, QLocale::LongFormat))
            return 1 << i;
    }
    return 0;
}

class Reader
{
public:
    Reader(const QString &xml, ScheduledTask &task) : m_xml(xml), m_task(task) {}

    void read()
    {
        m_xml.readNextStartElement(); // the root element, whatever its name
        while (m_xml.readNextStartElement()) {
            if (m_xml.name() == QLatin1String("Triggers"))
                readTriggers();
            else if (m_xml.name() == QLatin1String("Actions"))
                readActions();
            else if (m_xml.name() == QLatin1String("RegistrationInfo"))
                readTexts([this](QStringView name, const QString &text) {
                    if (name == QLatin1String("Author"))
                        m_task.author = text;
                });
            else if (m_xml.name() == QLatin1String("Settings"))
                readTexts([this](QStringView name, const QString &text) {
                    if (name == QLatin1String("Hidden"))
                        m_task.hidden = text == QLatin1String("true");
                });
            else
                m_xml.skipCurrentElement();
        }
    }

private:
    QString text() { return m_xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed(); }

    template <class Take>
    void readTexts(Take take)
    {
        while (m_xml.readNextStartElement()) {
            const QString name = m_xml.name().toString();
            take(name, text());
        }
    }

    void readTriggers()
    {
        while (m_xml.readNextStartElement()) {
            TaskTrigger trigger;
            trigger.kind = kindOf(m_xml.name());
            readTrigger(trigger);
            if (m_task.triggers.size() < maxTriggers)
                m_task.triggers.push_back(std::move(trigger));
        }
    }

    void readTrigger(TaskTrigger &trigger)
    {
        while (m_xml.readNextStartElement()) {
            const QString name = m_xml.name().toString();
            const auto *schedule = std::ranges::find_if(
                schedules, [&name](const KindName &row) { return name == QLatin1String(row.element); });
            if (schedule != std::end(schedules)) {
                trigger.kind = schedule->kind;
                readSchedule(trigger);
            } else if (name == QLatin1String("Repetition")) {
                readTexts([&trigger](QStringView part, const QString &value) {
                    if (part == QLatin1String("Interval"))
                        trigger.repetition = value;
                });
            } else if (name == QLatin1String("StartBoundary")) {
                trigger.start = text();
            } else if (name == QLatin1String("Enabled")) {
                trigger.enabled = text() != QLatin1String("false");
            } else if (name == QLatin1String("UserId")) {
                trigger.user = text();
            } else {
                m_xml.skipCurrentElement();
            }
        }
    }

    void readSchedule(TaskTrigger &trigger)
    {
        while (m_xml.readNextStartElement()) {
            const QString name = m_xml.name().toString();
            if (name.endsWith(QLatin1String("Interval")))
                trigger.interval = qBound(1, text().toInt(), 9999);
            else
                readTexts(
                    [&trigger](QStringView part, const QString &value) { takePart(trigger, part, value); });
        }
    }

    static void takePart(TaskTrigger &trigger, QStringView name, const QString &value)
    {
        trigger.weekdays |= nameBit(name, 7, &QLocale::dayName, 0);
        trigger.months |= nameBit(name, 12, &QLocale::monthName, 1);
        if (value == QLatin1String("Last"))
            trigger.last = true;
        const int number = value.toInt();
        if (name == QLatin1String("Day") && number >= 1 && number <= 31)
            trigger.days |= 1u << (number - 1);
        if (name == QLatin1String("Week") && number >= 1 && number <= 4)
            trigger.weeks |= 1 << (number - 1);
    }

    void readActions()
    {
        while (m_xml.readNextStartElement()) {
            QString action = m_xml.name() == QLatin1String("Exec") ? QString() : m_xml.name().toString();
            readTexts([&action](QStringView name, const QString &value) {
                if (name != QLatin1String("WorkingDirectory") && name != QLatin1String("Data"))
                    action += (action.isEmpty() ? QString() : QStringLiteral(" ")) + value;
            });
            if (m_task.actions.size() < maxActions)
                m_task.actions << action;
        }
    }

    QXmlStreamReader m_xml;
    ScheduledTask &m_task;
};

} // namespace

void readTaskDefinition(const QString &xml, ScheduledTask &task)
{
    Reader(xml, task).read();
}

} // namespace systeminfo
