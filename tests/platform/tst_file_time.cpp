// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileTime.h"

#include <QTest>
#include <QTimeZone>

using namespace Qt::StringLiterals;
using namespace platform;

namespace
{

// FILETIME counts 100 ns from 1601-01-01 UTC; 1970-01-01 is this many seconds later.
constexpr qint64 secondsTo1970 = 11'644'473'600;

quint64 fileTime(const QDateTime &utc)
{
    return static_cast<quint64>(utc.toMSecsSinceEpoch() + secondsTo1970 * 1000) * 10'000;
}

QDateTime utc(int year, int month, int day, int hour, int minute, int second, int millisecond = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second, millisecond), QTimeZone::utc());
}

} // namespace

class TestFileTime : public QObject
{
    Q_OBJECT

private slots:
    void converts();
    void whatWindowsCannotConvert();
};

void TestFileTime::converts()
{
    for (const QDateTime &time : {utc(2026, 11, 5, 3, 4, 5, 678), utc(1969, 12, 31, 23, 59, 59, 999),
                                  utc(1601, 1, 1, 0, 0, 0), utc(9999, 12, 31, 23, 59, 59)}) {
        const QDateTime local = localFileTime(fileTime(time));
        QCOMPARE(local, time);
        QCOMPARE(local.timeSpec(), Qt::LocalTime);
        // 100-ns ticks below a millisecond are dropped, not rounded up.
        QCOMPARE(localFileTime(fileTime(time) + 9'999), time);
    }
    // The zone of the machine decides the hour, never the form.
    const QDateTime time = utc(2026, 11, 5, 3, 4, 5);
    QCOMPARE(fileTimeText(fileTime(time)), time.toLocalTime().toString());
    QVERIFY(!fileTimeText(fileTime(time)).contains(u"GMT"));
    QVERIFY(fileTimeText(fileTime(time)).contains(u"Nov"));
}

void TestFileTime::whatWindowsCannotConvert()
{
    QCOMPARE(fileTimeText(0), QString()); // not known
    for (const quint64 fileTime : {quint64{1} << 63, ~quint64{0}}) {
        QTest::ignoreMessage(QtDebugMsg, "Error\n");
        QVERIFY(!localFileTime(fileTime).isValid());
        QTest::ignoreMessage(QtDebugMsg, "Error\n");
        QCOMPARE(fileTimeText(fileTime), QString());
    }
}

QTEST_GUILESS_MAIN(TestFileTime)

#include "tst_file_time.moc"
