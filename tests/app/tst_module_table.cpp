// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ModuleTable.h"
#include "app/Resources.h"
#include "app/StarredModules.h"
#include "tests/app/LogCapture.h"
#include "tests/app/Names.h"

#include <QFile>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

class tst_ModuleTable : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }
    void hasEveryModule();
    void listsTheCatalogueInOrder();
    void walksPagesInTheOrderOfTheCloseCheck();
    void starsAreReadAndWritten_data();
    void starsAreReadAndWritten();
    void togglingKeepsTheUsersOrder();
    void arrangesStarredFirst_data();
    void arrangesStarredFirst();
    void tracesTheSplit();
};

void tst_ModuleTable::hasEveryModule()
{
    QCOMPARE(moduleTable().rows().size(), qsizetype(std::size(names::modules)));
    for (const names::Module &expected : names::modules) {
        const Module *module = moduleTable().find(expected.id);
        QVERIFY(module);
        QCOMPARE(module->panelText, expected.panelText);
        QCOMPARE(module->buttonName, expected.button);
        QCOMPARE(module->executable, expected.executable);
        QCOMPARE(module->kind == Module::Kind::Launcher, expected.executable != nullptr);
        QCOMPARE(module->displayName, expected.executable ? expected.panelText : nullptr);
        QVERIFY2(QFile::exists(module->iconPath()), module->icon);
    }
    for (const int unknown : {-2, -1, 21, 99})
        QVERIFY(!moduleTable().find(unknown));
}

void tst_ModuleTable::listsTheCatalogueInOrder()
{
    const QList<Module> &rows = moduleTable().rows();
    QCOMPARE(rows.size(), qsizetype(std::size(names::cards)));
    for (qsizetype i = 0; i < rows.size(); ++i) {
        QCOMPARE(rows[i].id, names::cards[i].id);
        QCOMPARE(rows[i].title(), QLatin1StringView(names::cards[i].title));
        QCOMPARE(rows[i].descriptionText(), QLatin1StringView(names::cards[i].description));
    }
}

void tst_ModuleTable::walksPagesInTheOrderOfTheCloseCheck()
{
    QList<int> ids;
    for (const Module *module : moduleTable().inCloseOrder())
        ids.append(module->id);
    QCOMPARE(ids, (QList<int>{2, 4, 3, 20, 1, 6, 15}));
}

void tst_ModuleTable::starsAreReadAndWritten_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("starred");
    QTest::addColumn<QString>("written");
    QTest::newRow("default") << u"9,2,5"_s << QList<int>{2, 5, 9} << u"9,2,5"_s;
    QTest::newRow("one") << u"9"_s << QList<int>{9} << u"9"_s;
    QTest::newRow("empty") << u""_s << QList<int>{} << u""_s;
    QTest::newRow("spaces") << u" 9, 2"_s << QList<int>{2, 9} << u"9,2"_s;
    QTest::newRow("not numbers") << u"x,,3,1.5,0x4"_s << QList<int>{3} << u"3"_s;
    QTest::newRow("trailing comma") << u"7,"_s << QList<int>{7} << u"7"_s;
    QTest::newRow("beyond 32 bits") << u"4294967298,4"_s << QList<int>{4} << u"4"_s;
    QTest::newRow("ids of another version") << u"99,-1,8"_s << QList<int>{-1, 8, 99} << u"99,-1,8"_s;
    QTest::newRow("twice") << u"2,2,5"_s << QList<int>{2, 5} << u"2,2,5"_s;
}

void tst_ModuleTable::starsAreReadAndWritten()
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

void tst_ModuleTable::togglingKeepsTheUsersOrder()
{
    const tests::LogCapture quiet;
    StarredModules modules(QStringLiteral("9,2,5"));
    modules.toggle(6);
    modules.toggle(0);
    QCOMPARE(modules.text(), QStringLiteral("9,2,5,6,0"));
    modules.toggle(2);
    QCOMPARE(modules.text(), QStringLiteral("9,5,6,0"));
    modules.toggle(2);
    QCOMPARE(modules.text(), QStringLiteral("9,5,6,0,2"));

    StarredModules twice(QStringLiteral("2,2,5"));
    twice.toggle(2);
    QVERIFY(!twice.contains(2));
    QCOMPARE(twice.text(), QStringLiteral("2,5"));
}

void tst_ModuleTable::arrangesStarredFirst_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("first"); // the rest follows as the catalogue has it
    QTest::newRow("default") << u"9,2,5"_s << QList<int>{9, 2, 5};
    QTest::newRow("none") << u""_s << QList<int>{};
    QTest::newRow("unknown ids have no card") << u"99,4,-1"_s << QList<int>{4};
    QTest::newRow("twice has one card") << u"5,2,5"_s << QList<int>{5, 2};
}

void tst_ModuleTable::arrangesStarredFirst()
{
    QFETCH(const QString, text);
    QFETCH(const QList<int>, first);
    const tests::LogCapture quiet;
    const QList<int> catalogue = moduleTable().catalogue();
    QList<int> expected = first;
    std::ranges::copy_if(catalogue, std::back_inserter(expected),
                         [&first](int id) { return !first.contains(id); });
    QCOMPARE(StarredModules(text).arranged(catalogue), expected);

    StarredModules unstarred(QStringLiteral("2,2,5"));
    unstarred.toggle(2); // still in the list once, and not starred
    QCOMPARE(unstarred.arranged({1, 2, 5}), (QList<int>{5, 1, 2}));
}

void tst_ModuleTable::tracesTheSplit()
{
    const tests::LogCapture log;
    StarredModules(QStringLiteral("10,2,5"));
    QCOMPARE(log.values(QStringLiteral("index:")), (tests::strings({"2", "1"})));
    QCOMPARE(log.values(QStringLiteral("moduleIndexStr:")), (tests::strings({"10", "2"})));
    QCOMPARE(log.values(QStringLiteral("dataStr:")), (tests::strings({"2,5", "5"})));
}

QTEST_GUILESS_MAIN(tst_ModuleTable)

#include "tst_module_table.moc"
