// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/StayAwake.h"

#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace automation;
using enum EventKind;
using Until = AwakeSettings::Until;

namespace
{

// Recorded: after so many minutes, with the clock put forward or back by `clockMinutes`.
struct Step {
    int minutes;
    EventKind kind;
    int value = 0;
    int clockMinutes = 0;
    bool switchOff = false;
};
using Steps = QList<Step>;

const QDateTime begin(QDate(2026, 3, 10), QTime(20, 0), QTimeZone("Europe/Berlin"));

} // namespace

class StayAwakeTest : public QObject
{
    Q_OBJECT

private slots:
    void replay_data();
    void replay();
    void goesOnAfterAKill_data();
    void goesOnAfterAKill();
    void nudges();
};

void StayAwakeTest::replay_data()
{
    QTest::addColumn<AwakeSettings>("settings");
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<QStringList>("story"); // "minute: why", "+" while awake, "!" with a shutdown
    const AwakeSettings forEver{.active = true};
    const AwakeSettings hour{.active = true, .until = Until::Time, .seconds = 3600, .shutDown = true};
    const AwakeSettings setup{.active = true, .until = Until::ProgramEnds, .program = u"setup.exe"_s};
    AwakeSettings stubborn = hour;
    stubborn.staysWithLidClosed = stubborn.staysOnLowBattery = true;
    const QString on = u"0: You switched it on"_s, onHour = u"0: You switched it on, until 21:00 +"_s;

    QTest::newRow("off by the user, no shutdown") << hour << Steps{{0, Reload}, {5, Reload, 0, 0, true}}
                                                  << QStringList{onHour, u"5: You switched it off"_s};
    QTest::newRow("time over") << hour << Steps{{0, Reload}, {59, Due}, {60, Due}, {61, Due}}
                               << QStringList{onHour, u"60: The time is over !"_s};
    QTest::newRow("slept over the end")
        << hour << Steps{{0, Reload}, {500, Resume}} << QStringList{onHour, u"500: The time is over !"_s};
    QTest::newRow("clock set back and forth makes it no longer")
        << hour << Steps{{0, Reload}, {30, ClockChange, 0, -600}, {40, ClockChange, 0, 900}, {60, Due}}
        << QStringList{onHour, u"60: The time is over !"_s};
    QTest::newRow("lid closed before, then opened and closed")
        << forEver << Steps{{0, Reload}, {0, Lid, 0}, {1, Lid, 1}, {2, Lid, 0}}
        << QStringList{on + u" +"_s, u"2: The lid was closed"_s};
    QTest::newRow("lid closed ends without shutdown") << hour << Steps{{0, Reload}, {0, Lid, 1}, {1, Lid, 0}}
                                                      << QStringList{onHour, u"1: The lid was closed"_s};
    QTest::newRow("battery") << hour
                             << Steps{{0, Reload}, {1, Battery, 11}, {2, Battery, -1}, {3, Battery, 10}}
                             << QStringList{onHour, u"3: The battery is low (10 %)"_s};
    QTest::newRow("told to stay") << stubborn << Steps{{0, Reload}, {0, Lid, 1}, {1, Lid, 0}, {2, Battery, 3}}
                                  << QStringList{onHour};
    QTest::newRow("program") << setup << Steps{{0, Reload}, {900, Due}, {2000, ProgramEnded}}
                             << QStringList{on + u", until setup.exe has ended +"_s,
                                            u"2000: setup.exe has ended"_s};
    QTest::newRow("another's program")
        << forEver << Steps{{0, Reload}, {1, ProgramEnded}} << QStringList{on + u" +"_s};
}

void StayAwakeTest::replay()
{
    QFETCH(AwakeSettings, settings);
    QFETCH(const Steps, steps);
    QStringList story;
    StayAwake rule;
    int clock = 0;
    for (const Step &step : steps) {
        if (step.switchOff)
            settings.active = false;
        clock += step.clockMinutes;
        const AwakeDecision decision = rule.take({step.kind, begin.addSecs((step.minutes + clock) * 60),
                                                  9 + step.minutes * qint64(60'000), step.value},
                                                 settings);
        if (decision.ended)
            settings.active = false; // as the agent does
        if (!decision.why.isEmpty())
            story.append(u"%1: %2%3%4"_s.arg(step.minutes)
                             .arg(decision.why, decision.awake ? u" +"_s : u""_s,
                                  decision.shutDown ? u" !"_s : u""_s));
    }
    QTEST(story, "story");
}

void StayAwakeTest::goesOnAfterAKill_data()
{
    QTest::addColumn<int>("left"); // minutes to the stored end
    QTest::addColumn<bool>("awake");
    QTest::addColumn<int>("wakes"); // minutes
    QTest::newRow("in time") << 20 << true << 20;
    QTest::newRow("over") << -1 << false << 0;
    QTest::newRow("clock set back meanwhile") << 5000 << true << 60;
}

void StayAwakeTest::goesOnAfterAKill()
{
    QFETCH(const int, left);
    QFETCH(const int, wakes);
    const AwakeSettings hour{.active = true, .until = Until::Time, .seconds = 3600};
    StayAwake rule(begin.addSecs(left * 60));
    const AwakeDecision decision = rule.take({Reload, begin, 777}, hour);
    QTEST(decision.awake, "awake");
    QCOMPARE(decision.ended, !decision.awake);
    if (decision.awake) {
        QCOMPARE(decision.wakeAfter, wakes * qint64(60'000));
        QCOMPARE(decision.ends, begin.addSecs(wakes * 60));
    }
}

void StayAwakeTest::nudges()
{
    const AwakeSettings settings{.active = true, .until = Until::Time, .seconds = 100, .nudgeSeconds = 60};
    StayAwake rule;
    QList<int> at;
    AwakeDecision decision = rule.take({Reload, begin, 0}, settings);
    for (qint64 ticks = decision.wakeAfter; decision.awake; ticks += decision.wakeAfter) {
        QVERIFY(decision.wakeAfter > 0);
        decision = rule.take({Due, begin.addMSecs(ticks), ticks}, settings);
        if (decision.nudge)
            at.append(int(ticks / 1000));
    }
    QCOMPARE(at, QList<int>{60});
}

QTEST_APPLESS_MAIN(StayAwakeTest)
#include "tst_stay_awake.moc"
