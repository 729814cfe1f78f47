// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/StarredModules.h"
#include "tests/app/LogCapture.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_StarredModules : public QObject
{
    Q_OBJECT

private slots:
    void starsAreReadAndWritten_data();
    void starsAreReadAndWritten();
    void anIdThatStandsTwiceIsUnstarredAtOnce();
    void arrangesStarredFirst();
    void tracesTheSplit();
};

void tst_StarredModules::starsAreReadAndWritten_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("starred");
    QTest::addColumn<QString>("written");
    QTest::newRow("empty") << u""_s << QList<int>{} << u""_s;
    QTest::newRow("spaces") << u" 9, 2"_s << QList<int>{2, 9} << u"9,2"_s;
    QTest::newRow("not numbers") << u"x,,3,1.5,0x4,"_s << QList<int>{3} << u"3"_s;
    QTest::newRow("beyond 32 bits") << u"4294967298,4"_s << QList<int>{4} << u"4"_s;
    QTest::newRow("ids of another version") << u"99,-1,8"_s << QList<int>{-1, 8, 99} << u"99,-1,8"_s;
    QTest::newRow("twice") << u"2,2,5"_s << QList<int>{2, 5} << u"2,2,5"_s;
}

void tst_StarredModules::starsAreReadAndWritten()
{
    QFETCH(const QString, text);
    QFETCH(const QList<int>, starred);
    const tests::LogCapture quiet;
    const StarredModules modules(text);
    QList<int> found;
    for (int id = -3; id < 120; ++id) {
        if (modules.contains(id))
            found.append(id);
    }
    QCOMPARE(found, starred);
    QTEST(modules.text(), "written");
}

void tst_StarredModules::anIdThatStandsTwiceIsUnstarredAtOnce()
{
    const tests::LogCapture quiet;
    StarredModules twice(QStringLiteral("2,2,5"));
    twice.toggle(2);
    QVERIFY(!twice.contains(2));
    QCOMPARE(twice.text(), QStringLiteral("2,5"));
    QCOMPARE(twice.arranged({1, 2, 5}), (QList<int>{5, 1, 2}));
}

void tst_StarredModules::arrangesStarredFirst()
{
    const tests::LogCapture quiet;
    const auto arranged = [](const QString &text) { return StarredModules(text).arranged({1, 2, 4, 5}); };
    QCOMPARE(arranged(QString()), (QList<int>{1, 2, 4, 5}));
    QCOMPARE(arranged(QStringLiteral("99,4,-1")), (QList<int>{4, 1, 2, 5})); // unknown ids have no card
    QCOMPARE(arranged(QStringLiteral("5,2,5")), (QList<int>{5, 2, 1, 4}));
}

void tst_StarredModules::tracesTheSplit()
{
    const tests::LogCapture log;
    StarredModules(QStringLiteral("10,2,5"));
    QCOMPARE(log.values(QStringLiteral("index:")), (tests::strings({"2", "1"})));
    QCOMPARE(log.values(QStringLiteral("moduleIndexStr:")), (tests::strings({"10", "2"})));
    QCOMPARE(log.values(QStringLiteral("dataStr:")), (tests::strings({"2,5", "5"})));
}

QTEST_GUILESS_MAIN(tst_StarredModules)

#include "tst_starred_modules.moc"
