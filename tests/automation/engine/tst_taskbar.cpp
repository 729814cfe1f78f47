// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/Taskbar.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace automation;
using enum EventKind;

namespace
{

struct Step {
    int seconds;
    EventKind kind;
    bool obstacle = false;
    bool enabled = true;
};
using Steps = QList<Step>;

} // namespace

class TaskbarTest : public QObject
{
    Q_OBJECT

private slots:
    void replay_data();
    void replay();
    void staysReadable();
};

void TaskbarTest::replay_data()
{
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<QString>("acts"); // a letter each step: apply, restore, end, nothing
    QTest::newRow("on and off") << Steps{{0, Reload}, {1, Reload}, {2, Reload, false, false}} << u"a-r"_s;
    QTest::newRow("what makes it anew")
        << Steps{{0, Reload}, {1, Displays}, {2, ThemeChanged}, {3, Battery}, {4, TaskbarMade}} << u"aaa-a"_s;
    QTest::newRow("explorer restarts twice in a minute")
        << Steps{{0, Reload}, {100, TaskbarMade}, {159, TaskbarMade}} << u"aae"_s;
    QTest::newRow("and not in a minute")
        << Steps{{0, Reload}, {100, TaskbarMade}, {160, TaskbarMade}, {230, TaskbarMade}} << u"aaaa"_s;
    QTest::newRow("not taken here") << Steps{{0, Reload, true}, {1, TaskbarMade, true}, {2, Displays, true}}
                                    << u"---"_s;
    QTest::newRow("high contrast comes and goes")
        << Steps{{0, Reload}, {1, ThemeChanged, true}, {2, ThemeChanged}} << u"ara"_s;
    QTest::newRow("off all the time")
        << Steps{{0, Reload, false, false}, {1, TaskbarMade, false, false}} << u"--"_s;
}

void TaskbarTest::replay()
{
    QFETCH(const Steps, steps);
    QString acts;
    Taskbar rule;
    for (const Step &step : steps) {
        const TaskbarDecision decision =
            rule.take({step.kind, QDateTime(), step.seconds * qint64(1000)}, {.enabled = step.enabled},
                      step.obstacle ? u"This Windows does not take it"_s : QString());
        acts += decision.ended ? u'e' : decision.apply ? u'a' : decision.restore ? u'r' : u'-';
        QVERIFY(!decision.ended || decision.restore);
    }
    QTEST(acts, "acts");
}

void TaskbarTest::staysReadable()
{
    QCOMPARE(taskbarOpacity(0), 255);
    QVERIFY(taskbarOpacity(100) >= 25);
    QCOMPARE(taskbarOpacity(-5), 255);
}

QTEST_APPLESS_MAIN(TaskbarTest)
#include "tst_taskbar.moc"
