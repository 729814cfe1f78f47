// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/DarkMode.h"

#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace automation;
using enum EventKind;

namespace
{

const QTimeZone berlin("Europe/Berlin");

DarkSettings hours(QTime light, QTime dark)
{
    return {.enabled = true, .light = light, .dark = dark};
}

DarkSettings sun(double latitude, double longitude)
{
    return {.enabled = true, .bySun = true, .position = Position{latitude, longitude}};
}

// Recorded: at this local time, with the user having changed the theme before, perhaps.
struct Step {
    const char *time; // "10 20:00"
    EventKind kind;
    std::optional<bool> userDark = {};
    bool fullScreen = false;
};
using Steps = QList<Step>;

QDateTime at(int month, const char *time)
{
    const QString text = QString::fromLatin1(time);
    return QDateTime(QDate(2026, month, text.left(2).toInt()), QTime::fromString(text.mid(3), u"HH:mm"_s),
                     berlin);
}

} // namespace

class DarkModeTest : public QObject
{
    Q_OBJECT

private slots:
    void sunOfADay_data();
    void sunOfADay();
    void dayPlan_data();
    void dayPlan();
    void replay_data();
    void replay();
    void afterAKill();
};

// From PyEphem 4.1, an implementation of VSOP87, with the same height of the horizon and no refraction model.
void DarkModeTest::sunOfADay_data()
{
    QTest::addColumn<Position>("place");
    QTest::addColumn<QString>("day");
    QTest::addColumn<QString>("rise");
    QTest::addColumn<QString>("set");
    const auto row = [](const char *name, double latitude, double longitude, const QString &day,
                        const QString &rise, const QString &set) {
        QTest::newRow(name) << Position{latitude, longitude} << day << rise << set;
    };
    row("London", 51.5074, -0.1278, u"2026-06-21"_s, u"2026-06-21T03:43:06Z"_s, u"2026-06-21T20:21:33Z"_s);
    row("Berlin", 52.52, 13.405, u"2026-11-22"_s, u"2026-11-22T06:40:11Z"_s, u"2026-11-22T15:04:18Z"_s);
    row("New York", 40.7128, -74.006, u"2026-03-08"_s, u"2026-03-08T11:18:53Z"_s, u"2026-03-08T22:55:10Z"_s);
    row("Sydney", -33.8688, 151.2093, u"2026-12-21"_s, u"2026-12-20T18:40:39Z"_s, u"2026-12-21T09:05:24Z"_s);
    row("Suva", -18.14, 178.44, u"2026-01-15"_s, u"2026-01-14T17:42:22Z"_s, u"2026-01-15T06:48:24Z"_s);
    row("Quito", -0.18, -78.47, u"2030-09-23"_s, u"2030-09-23T11:02:54Z"_s, u"2030-09-23T23:09:23Z"_s);
    row("Reykjavik", 64.1466, -21.9426, u"2026-06-21"_s, u"2026-06-21T02:55:12Z"_s,
        u"2026-06-22T00:03:58Z"_s);
    row("the sun is back", 69.6492, 18.9553, u"2026-01-20"_s, u"2026-01-20T09:36:04Z"_s,
        u"2026-01-20T12:15:08Z"_s);
    row("polar day", 69.6492, 18.9553, u"2026-06-21"_s, u"up"_s, {});
    row("polar night", 69.6492, 18.9553, u"2026-12-21"_s, {}, {});
    row("south pole", -90, 0, u"2026-12-21"_s, u"up"_s, {});
}

void DarkModeTest::sunOfADay()
{
    QFETCH(const QString, rise);
    QFETCH(const QString, set);
    QFETCH(const QString, day);
    QFETCH(const Position, place);
    const SunDay sun = sunDay(QDate::fromString(day, Qt::ISODate), place);
    if (set.isEmpty()) {
        QVERIFY(!sun.rise && !sun.set);
        QCOMPARE(sun.up, rise == u"up"_s);
        return;
    }
    QVERIFY(sun.rise && sun.set);
    QVERIFY2(std::abs(sun.rise->secsTo(QDateTime::fromString(rise, Qt::ISODate))) < 30,
             qPrintable(sun.rise->toString(Qt::ISODate)));
    QVERIFY2(std::abs(sun.set->secsTo(QDateTime::fromString(set, Qt::ISODate))) < 30,
             qPrintable(sun.set->toString(Qt::ISODate)));
}

void DarkModeTest::dayPlan_data()
{
    QTest::addColumn<DarkSettings>("settings");
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QString>("plan");
    QTest::newRow("12 AM is midnight")
        << hours(fromTwelveHours(12, 30, 0), fromTwelveHours(12, 0, 1)) << QDate(2026, 3, 10)
        << u"Light at 00:30 (your hour), Dark at 12:00 (your hour)"_s;
    QTest::newRow("over midnight") << hours(QTime(21, 0), QTime(5, 0)) << QDate(2026, 3, 10)
                                   << u"Dark at 05:00 (your hour), Light at 21:00 (your hour)"_s;
    QTest::newRow("equal hours") << hours(QTime(5, 0), QTime(5, 0)) << QDate(2026, 3, 10) << QString();
    QTest::newRow("an hour that spring leaves out")
        << hours(QTime(2, 30), QTime(19, 0)) << QDate(2026, 3, 29)
        << u"Light at 03:30 (your hour), Dark at 19:00 (your hour)"_s;
    QTest::newRow("sun") << sun(52.52, 13.405) << QDate(2026, 11, 22)
                         << u"Light at 07:40 (sunrise), Dark at 16:04 (sunset)"_s;
    QTest::newRow("polar day") << sun(69.6492, 18.9553) << QDate(2026, 6, 21)
                               << u"Light all day: the sun does not set"_s;
    QTest::newRow("polar night") << sun(69.6492, 18.9553) << QDate(2026, 12, 21)
                                 << u"Dark all day: the sun does not rise"_s;
    QTest::newRow("pole") << sun(90, 0) << QDate(2026, 12, 21) << u"Dark all day: the sun does not rise"_s;
    QTest::newRow("no place") << DarkSettings{.enabled = true, .bySun = true} << QDate(2026, 3, 10)
                              << QString();
}

void DarkModeTest::dayPlan()
{
    QFETCH(const DarkSettings, settings);
    QFETCH(const QDate, day);
    const QDateTime now(day.addDays(-1), QTime(12, 0), berlin);
    QTEST(dryRun(settings, day, now), "plan");
}

void DarkModeTest::replay_data()
{
    QTest::addColumn<DarkSettings>("settings");
    QTest::addColumn<int>("month");
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<QStringList>("story");
    const DarkSettings day = hours(QTime(7, 0), QTime(19, 0));
    DarkSettings patient = day;
    patient.waitsForFullScreen = true;

    QTest::newRow("two days")
        << day << 3 << Steps{{"10 12:00", Reload}, {"10 19:00", Due}, {"10 19:01", Due}, {"11 07:00", Due}}
        << QStringList{u"10 19:00 dark: Your hour 19:00"_s, u"11 07:00 light: Your hour 07:00"_s};
    QTest::newRow("slept over the boundary, and over two")
        << day << 3
        << Steps{{"10 12:00", Reload}, {"10 23:15", Resume}, {"12 12:00", Resume}, {"14 13:00", Resume}}
        << QStringList{u"10 23:15 dark: Your hour 19:00"_s, u"12 12:00 light: Your hour 07:00"_s};
    QTest::newRow("the user's change is respected until the next")
        << day << 3 << Steps{{"10 19:00", Reload}, {"10 19:10", ThemeChanged, false},
                             {"10 23:00", Resume}, {"11 06:59", ClockChange},
                             {"11 07:00", Due},    {"11 19:00", Due}}
        << QStringList{u"10 19:00 dark: Your hour 19:00"_s,
                       u"10 19:10 -: You switched to light; respected until Wed 11 Mar 07:00"_s,
                       u"11 19:00 dark: Your hour 19:00"_s};
    QTest::newRow("switched at once")
        << day << 3
        << Steps{{"10 12:00", Reload},
                 {"10 12:01", Asked},
                 {"10 12:02", ThemeChanged},
                 {"10 13:00", Resume},
                 {"10 19:00", Due}}
        << QStringList{u"10 12:01 dark: You asked for it; respected until 19:00"_s};
    QTest::newRow("clock set back over the boundary, and put right by a second")
        << day << 3
        << Steps{{"10 19:00", Reload},
                 {"10 18:59", ClockChange},
                 {"10 15:00", ClockChange},
                 {"10 19:00", Due}}
        << QStringList{u"10 19:00 dark: Your hour 19:00"_s, u"10 15:00 light: Your hour 07:00"_s,
                       u"10 19:00 dark: Your hour 19:00"_s};
    QTest::newRow("full screen") << patient << 3
                                 << Steps{{"10 12:00", Reload},
                                          {"10 19:00", Due, {}, true},
                                          {"10 19:01", Due, {}, true},
                                          {"10 19:02", Due}}
                                 << QStringList{u"10 19:02 dark: Your hour 19:00"_s};
    QTest::newRow("an hour that autumn has twice")
        << hours(QTime(2, 30), QTime(19, 0)) << 10
        << Steps{{"24 20:00", Reload}, {"25 02:30", Due}, {"25 03:30", Due}, {"25 19:00", Due}}
        << QStringList{u"24 20:00 dark: Your hour 19:00"_s, u"25 02:30 light: Your hour 02:30"_s,
                       u"25 19:00 dark: Your hour 19:00"_s};
    // The sun of Tromso goes below the horizon for the last time before the polar day on 18 May.
    QTest::newRow("polar day") << sun(69.6492, 18.9553) << 5
                               << Steps{{"10 12:00", Reload}, {"11 00:00", Due}, {"21 00:30", Resume}}
                               << QStringList{u"11 00:00 dark: Sunset Sun 10 May 23:02"_s,
                                              u"21 00:30 light: Polar day"_s};
}

void DarkModeTest::replay()
{
    QFETCH(const DarkSettings, settings);
    QFETCH(const int, month);
    QFETCH(const Steps, steps);
    QStringList story;
    DarkMode rule;
    Desktop desktop{.dark = false};
    for (const Step &step : steps) {
        if (step.userDark)
            desktop.dark = step.userDark;
        desktop.fullScreen = step.fullScreen;
        const DarkDecision decision = rule.take({step.kind, at(month, step.time)}, settings, desktop);
        QVERIFY(decision.wakeAfter > 0);
        if (decision.switchTo)
            desktop.dark = decision.switchTo;
        if (!decision.why.isEmpty())
            story.append(u"%1 %2: %3"_s.arg(QString::fromLatin1(step.time),
                                            !decision.switchTo   ? u"-"_s
                                            : *decision.switchTo ? u"dark"_s
                                                                 : u"light"_s,
                                            decision.why));
    }
    QTEST(story, "story");
}

// A new agent does not fight what the user did before the old one was killed.
void DarkModeTest::afterAKill()
{
    const DarkSettings day = hours(QTime(7, 0), QTime(19, 0));
    DarkMode first;
    const DarkDecision before = first.take({Reload, at(3, "10 20:00")}, day, {.dark = false});
    QCOMPARE(before.switchTo, true);
    DarkMode second(before.handled.toUTC());
    QVERIFY(!second.take({Reload, at(3, "10 21:00")}, day, {.dark = false}).switchTo);
    DarkMode third(before.handled.toUTC());
    QCOMPARE(third.take({Reload, at(3, "11 21:00")}, day, {.dark = false}).switchTo, true);
}

QTEST_APPLESS_MAIN(DarkModeTest)
#include "tst_dark_mode.moc"
