// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/PriorityStart.h"

#include <QTest>

using namespace automation;
using namespace Qt::StringLiterals;

class PriorityStartTest : public QObject
{
    Q_OBJECT

private slots:
    void roundTrip_data();
    void roundTrip();
    void strictness_data();
    void strictness();
    void argumentsOfACommandLine_data();
    void argumentsOfACommandLine();
    void names();
};

void PriorityStartTest::roundTrip_data()
{
    QTest::addColumn<PriorityStart>("start");
    QTest::addColumn<QString>("text");
    const QString tool = u"C:\\Program Files\\a & b\\%x%.exe"_s;
    QTest::newRow("plain") << PriorityStart{Priority::High, 0, tool, {}}
                           << u"/priority:high \"C:\\Program Files\\a & b\\%x%.exe\""_s;
    QTest::newRow("everything")
        << PriorityStart{Priority::Idle, 12, tool, u"-x \"a b\\\\\" ^ %PATH%"_s}
        << u"/priority:idle /processors:12 \"C:\\Program Files\\a & b\\%x%.exe\" -x \"a b\\\\\" ^ %PATH%"_s;
    QTest::newRow("arguments like options")
        << PriorityStart{Priority::Normal, 0, u"\\\\server\\share\\a.COM"_s, u" /processors:3 \"b.exe\""_s}
        << u"/priority:normal \"\\\\server\\share\\a.COM\"  /processors:3 \"b.exe\""_s;
}

void PriorityStartTest::roundTrip()
{
    QFETCH(const PriorityStart, start);
    QTEST(startText(start), "text");
    QCOMPARE(parseStart(startText(start)), start);
    QVERIFY(commandLineOf(start).startsWith(u'"' + start.program + u'"'));
    QVERIFY(commandLineOf(start).endsWith(start.arguments));
}

void PriorityStartTest::strictness_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"",
                             "/priority:high",
                             "\"C:\\a.exe\"",
                             "/priority:realtime \"C:\\a.exe\"",
                             "/priority:HIGH \"C:\\a.exe\"",
                             "/priority:high C:\\a.exe",
                             "/priority:high \"C:\\a.exe",
                             "/priority:high \"a.exe\"",
                             "/priority:high \"\\\\?\\C:\\a.exe\"",
                             "/priority:high \"C:\\a.bat\"",
                             "/priority:high \"C:\\a.exe\"-x",
                             "/priority:high \"C:\\a.exe\" ",
                             "/priority:high  \"C:\\a.exe\"",
                             "/priority:high \"C:\\a.txt:b.exe\"",
                             "/priority:high /processors:0 \"C:\\a.exe\"",
                             "/priority:high /processors:65 \"C:\\a.exe\"",
                             "/priority:high /processors:+4 \"C:\\a.exe\"",
                             "/priority:high /processors:4",
                             "/priority:high \"C:/a.exe\"",
                             "/processors:4 /priority:high \"C:\\a.exe\"",
                             "/priority:high \"C:\\a.exe\" a\nb"})
        QTest::newRow(text) << QString::fromLatin1(text);
    QTest::newRow("long") << u"/priority:high \"C:\\a.exe\" "_s + QString(maxStartText, u'x');
}

void PriorityStartTest::strictness()
{
    QFETCH(const QString, text);
    QVERIFY(!parseStart(text));
}

void PriorityStartTest::argumentsOfACommandLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("arguments");
    QTest::newRow("quoted") << u"\"C:\\a b\\s.exe\" /x \"y\""_s << u"/x \"y\""_s;
    QTest::newRow("bare") << u"s.exe \t/x "_s << u"/x "_s;
    QTest::newRow("nothing") << u"\"C:\\a b\\s.exe\""_s << QString();
    QTest::newRow("unclosed") << u"\"C:\\a b /x"_s << QString();
}

void PriorityStartTest::argumentsOfACommandLine()
{
    QFETCH(const QString, line);
    QTEST(argumentsOf(line).toString(), "arguments");
}

void PriorityStartTest::names()
{
    QCOMPARE(proposedName({}, u"C:\\x\\tool.v2.exe"_s, Priority::High), u"tool.v2 (high priority)"_s);
    QCOMPARE(proposedName(u" A:  \"B\" "_s, u"C:\\t.exe"_s, Priority::BelowNormal),
             u"A B (below normal priority)"_s);
    QVERIFY(nameProblem(u"a (high).v2").isEmpty() && nameProblem(u"Constant").isEmpty());
    for (const char *name : {"", "  ", "a/b", "a ", " a", "a.", "con", "NUL.txt", "lpt1", "a\tb"})
        QVERIFY2(!nameProblem(QString::fromLatin1(name)).isEmpty(), name);
}

QTEST_APPLESS_MAIN(PriorityStartTest)
#include "tst_priority_start.moc"
