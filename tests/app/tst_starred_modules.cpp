// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/StarredModules.h"
#include "tests/app/LogCapture.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_StarredModules : public QObject
{
    Q_OBJECT

private slots:
    void starsAreReadAndWritten();
    void arrangesStarredFirst();
    void tracesTheSplit();
};

void tst_StarredModules::starsAreReadAndWritten()
{
    struct Case {
        QString text;
        QList<int> starred;
        QString written;
    };
    for (const Case &c : {Case{u""_s, {}, u""_s},
                          {u" 9, 2"_s, {2, 9}, u"9,2"_s},
                          {u"x,,3,1.5,0x4,"_s, {3}, u"3"_s},
                          {u"4294967298,4"_s, {4}, u"4"_s},
                          {u"99,-1,8"_s, {-1, 8, 99}, u"99,-1,8"_s}, // of another version
                          {u"2,2,5"_s, {2, 5}, u"2,2,5"_s}}) {
        const tests::LogCapture quiet;
        const StarredModules modules(c.text);
        QList<int> found;
        for (int id = -3; id < 120; ++id) {
            if (modules.contains(id))
                found.append(id);
        }
        QCOMPARE(found, c.starred);
        QCOMPARE(modules.text(), c.written);
    }
}

void tst_StarredModules::arrangesStarredFirst()
{
    const tests::LogCapture quiet;
    const auto arranged = [](const QString &text) { return StarredModules(text).arranged({1, 2, 4, 5}); };
    QCOMPARE(arranged(u""_s), (QList<int>{1, 2, 4, 5}));
    QCOMPARE(arranged(u"99,4,-1"_s), (QList<int>{4, 1, 2, 5})); // unknown ids have no card
    // An id that stands twice has one card, and is unstarred at once.
    StarredModules twice(u"5,2,5"_s);
    QCOMPARE(twice.arranged({1, 2, 4, 5}), (QList<int>{5, 2, 1, 4}));
    twice.toggle(5);
    QCOMPARE(twice.text(), u"2,5"_s);
    QCOMPARE(twice.arranged({1, 2, 4, 5}), (QList<int>{2, 1, 4, 5}));
}

void tst_StarredModules::tracesTheSplit()
{
    const tests::LogCapture log;
    StarredModules(u"10,2,5"_s);
    QCOMPARE(log.values(u"index:"_s), (tests::strings({"2", "1"})));
    QCOMPARE(log.values(u"moduleIndexStr:"_s), (tests::strings({"10", "2"})));
    QCOMPARE(log.values(u"dataStr:"_s), (tests::strings({"2,5", "5"})));
    // Of a damaged value only the beginning is read: each step logs all that is left.
    QVERIFY(StarredModules(u"10,2,"_s.repeated(7200)).text().size() < 1000);
    QVERIFY(log.values(u"dataStr:"_s).size() < 1000);
    QVERIFY(StarredModules(QString(30'000, u'1')).text().isEmpty());
}

QTEST_GUILESS_MAIN(tst_StarredModules)

#include "tst_starred_modules.moc"
