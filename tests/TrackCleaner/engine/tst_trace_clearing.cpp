// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/Clear.h"
#include "TrackCleaner/engine/OrderLists.h"
#include "tests/TrackCleaner/engine/TraceWorld.h"

#include <QHash>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tests;
using namespace tracks;

namespace
{

const QString typedPaths = explorer + u"\\TypedPaths"_s;
const QString runMru = explorer + u"\\RunMRU"_s;

class Clearing : public ClearListener, public TraceRemover
{
public:
    TraceWorld world;
    ClearPlan plan;
    core::CancelFlag cancel;
    QHash<QString, Outcome> outcomes; // of files that are not removed
    QStringList log;                  // files and items in order
    int cancelAfter = -1;             // files

    void scan(const QList<Item> &items)
    {
        plan.found = std::make_shared<const ScanResult>(world.scan(items));
        plan.items = world.options.items;
    }
    void leaveOut(Item item, const QString &end)
    {
        const ItemTraces &traces = (*plan.found)[item];
        std::vector<bool> &rows = plan.leftOut[indexOf(item)];
        rows.resize(traces.count());
        for (std::size_t row = 0; row < traces.count(); ++row)
            rows[row] = rows[row] || traces.pathOf(row).endsWith(end);
    }
    ClearResult clear() { return clearTraces(plan, world.registry, *this, *this, cancel); }

    void itemBegins(Item) override {}
    void fileBegins(const QString &, int) override {}
    void itemCleared(Item item) override { log.append(QString::number(static_cast<int>(item))); }
    Outcome remove(const FileToRemove &file) override
    {
        log.append(file.path.sliced(file.path.lastIndexOf(u'\\') + 1));
        if (--cancelAfter == 0)
            cancel.set();
        return outcomes.value(file.path, Outcome::Removed);
    }
};

QStringList namesOf(const std::vector<RegistryValue> &values)
{
    QStringList names;
    for (const RegistryValue &value : values)
        names.append(value.name);
    return names;
}

} // namespace

class TraceClearingTest : public QObject
{
    Q_OBJECT

private slots:
    void onlyWhatIsChosenGoes();
    void keysAreMadeAnew();
    void keysWithSubkeysStay();
    void whatIsNewInAKeyStays();
    void entriesLeftOut();
    void orderLists();
    void newValuesComeFirst();
    void cancelled();
};

void TraceClearingTest::onlyWhatIsChosenGoes()
{
    Clearing clearing;
    MemoryEnumerator &disk = clearing.world.disk;
    for (const QString &name : {u"keep"_s, u"locked"_s, u"gone"_s, u"x"_s})
        disk.addFile(temp + u'\\' + name, 10);
    disk.addFile(temp + u"\\today"_s, 10, TraceWorld::now);
    disk.addFile(temp + u"\\edb.log"_s, 10);
    disk.addFile(recent + u"\\a.lnk"_s, 1);
    disk.addFile(recent + u"\\AutomaticDestinations\\b"_s, 1);
    clearing.scan({Item::RecentFiles, Item::TempFiles});
    clearing.leaveOut(Item::TempFiles, u"keep"_s);
    clearing.outcomes = {{temp + u"\\locked"_s, Outcome::InUse}, {temp + u"\\gone"_s, Outcome::Vanished}};
    const ClearTotals totals = totalsOf(clearing.plan);
    QCOMPARE(totals.files, 5);
    QCOMPARE(totals.bytes, 32);
    const ClearResult result = clearing.clear();
    QCOMPARE(clearing.log, QStringList({u"b"_s, u"a.lnk"_s, u"0"_s, u"locked"_s, u"gone"_s, u"x"_s, u"7"_s}));
    QCOMPARE(result.deletedFiles, 3);
    QCOMPARE(result.deletedBytes, 12);
    QCOMPARE(result.stayed.size(), 1U);
    QCOMPARE(result.stayed[0].why, Outcome::InUse);
    QCOMPARE((*clearing.plan.found)[Item::TempFiles].pathOf(result.stayed[0].row), temp + u"\\locked"_s);
}

void TraceClearingTest::keysAreMadeAnew()
{
    Clearing clearing;
    QMap<QString, std::vector<RegistryValue>> &keys = clearing.world.registry.keys;
    keys[typedPaths] = {textValue({}, u"default"_s), textValue(u"url1"_s, u"C:\\"_s)};
    keys[explorer + u"\\RecentDocs"_s] = {binaryValue(u"0"_s, utf16(u"a.txt"_s))};
    keys[explorer + u"\\RecentDocs\\.txt"_s] = {binaryValue(u"0"_s, utf16(u"a.txt"_s))};
    clearing.scan({Item::RecentFiles, Item::TypedPaths, Item::SearchHistory});
    const ClearResult result = clearing.clear();
    QCOMPARE(clearing.world.registry.log,
             QStringList({u"tree "_s + explorer + u"\\RecentDocs"_s, u"subkey RecentDocs"_s,
                          u"create "_s + explorer + u"\\RecentDocs"_s, u"subkey TypedPaths"_s,
                          u"create "_s + typedPaths, u"subkey WordWheelQuery"_s,
                          u"create "_s + explorer + u"\\WordWheelQuery"_s}));
    QCOMPARE(keys.size(), 3);
    for (const std::vector<RegistryValue> &values : std::as_const(keys))
        QVERIFY(values.empty());
    QCOMPARE(result.deletedFiles, 0);
    QCOMPARE(result.deletedValues, 4);
    QVERIFY(result.stayed.empty());
}

void TraceClearingTest::keysWithSubkeysStay()
{
    Clearing clearing;
    clearing.world.registry.keys[typedPaths] = {textValue(u"url1"_s, u"C:\\"_s)};
    clearing.world.registry.keys[typedPaths + u"\\sub"_s] = {textValue(u"x"_s, u"y"_s)};
    clearing.scan({Item::TypedPaths});
    const ClearResult result = clearing.clear();
    QCOMPARE(namesOf(clearing.world.registry.keys[typedPaths]), QStringList(u"url1"_s));
    QCOMPARE(result.deletedValues, 0);
    QCOMPARE(result.stayed.size(), 1U);
    QCOMPARE(result.stayed[0].why, Outcome::HasSubkeys);
}

// Between the look and the clearing the user ran another command, which took the place of an old one.
void TraceClearingTest::whatIsNewInAKeyStays()
{
    Clearing clearing;
    std::vector<RegistryValue> &values = clearing.world.registry.keys[runMru];
    values = {textValue(u"a"_s, u"cmd\\1"_s), textValue(u"b"_s, u"old\\1"_s),
              textValue(u"MRUList"_s, u"ab"_s)};
    clearing.scan({Item::RunDialog});
    values[1] = textValue(u"b"_s, u"new\\1"_s);
    values[2] = textValue(u"MRUList"_s, u"ba"_s);
    const ClearResult result = clearing.clear();
    QVERIFY(values ==
            std::vector<RegistryValue>({textValue(u"b"_s, u"new\\1"_s), textValue(u"MRUList"_s, u"b"_s)}));
    QCOMPARE(result.deletedValues, 1);
}

void TraceClearingTest::entriesLeftOut()
{
    Clearing clearing;
    std::vector<RegistryValue> &urls = clearing.world.registry.keys[typedPaths];
    urls = {textValue(u"url1"_s, u"1"_s), textValue(u"url2"_s, u"2"_s), textValue(u"url3"_s, u"3"_s)};
    std::vector<RegistryValue> &runs = clearing.world.registry.keys[runMru];
    runs = {textValue(u"a"_s, u"cmd\\1"_s), textValue(u"MRUList"_s, u"a"_s)};
    clearing.scan({Item::TypedPaths, Item::RunDialog});
    clearing.leaveOut(Item::TypedPaths, u"url2"_s);
    clearing.leaveOut(Item::RunDialog, u"\\a"_s);
    const ClearResult result = clearing.clear();
    // Explorer counts from 1 until a name is missing.
    QVERIFY(urls == std::vector<RegistryValue>({textValue(u"url1"_s, u"2"_s)}));
    // Nothing but the order of what was left out was chosen: it is still needed.
    QVERIFY(runs ==
            std::vector<RegistryValue>({textValue(u"a"_s, u"cmd\\1"_s), textValue(u"MRUList"_s, u"a"_s)}));
    QCOMPARE(result.deletedValues, 2);
    QVERIFY(result.stayed.empty());
}

void TraceClearingTest::orderLists()
{
    const auto numbers = [](std::initializer_list<qint32> list) {
        return QByteArray(reinterpret_cast<const char *>(list.begin()),
                          static_cast<qsizetype>(list.size()) * 4);
    };
    const std::vector<RegistryValue> words{binaryValue(u"0"_s, "x"), binaryValue(u"1"_s, "y"),
                                           binaryValue(u"11"_s, "z"),
                                           binaryValue(u"MRUListEx"_s, numbers({11, 0, 1, -1}) + "odd")};
    QVERIFY(
        withoutValues(words, {u"1"_s}) ==
        std::vector<RegistryValue>({words[0], words[2], binaryValue(u"MRUListEx"_s, numbers({11, 0, -1}))}));
    const std::vector<RegistryValue> runs{textValue(u"a"_s, u"x"_s), textValue(u"b"_s, u"y"_s),
                                          textValue(u"MRUList"_s, u"ba"_s)};
    QVERIFY(withoutValues(runs, {u"B"_s}) ==
            std::vector<RegistryValue>({runs[0], textValue(u"MRUList"_s, u"a"_s)}));
}

// What cannot be written must not have been deleted.
void TraceClearingTest::newValuesComeFirst()
{
    Clearing clearing;
    MemoryRegistry &registry = clearing.world.registry;
    registry.keys[typedPaths] = {textValue(u"url1"_s, u"1"_s), textValue(u"url2"_s, u"2"_s)};
    clearing.scan({Item::TypedPaths});
    clearing.leaveOut(Item::TypedPaths, u"url2"_s);
    registry.refusedValue = u"url1"_s;
    const ClearResult result = clearing.clear();
    QCOMPARE(registry.keys[typedPaths].size(), 2U);
    QCOMPARE(result.deletedValues, 0);
    QCOMPARE(result.stayed.size(), 1U);
    QCOMPARE(result.stayed[0].why, Outcome::Failed);
}

void TraceClearingTest::cancelled()
{
    Clearing clearing;
    for (int i = 0; i < 5; ++i)
        clearing.world.disk.addFile(u"C:\\Windows\\%1.log"_s.arg(i), 1);
    clearing.world.disk.addFile(temp + u"\\x"_s, 1);
    clearing.scan({Item::LogFiles, Item::TempFiles});
    clearing.cancelAfter = 2;
    const ClearResult result = clearing.clear();
    QCOMPARE(clearing.log, QStringList({u"0.log"_s, u"1.log"_s, u"4"_s}));
    QVERIFY(result.cancelled);
    QVERIFY(!result.done[indexOf(Item::TempFiles)]);
}

QTEST_GUILESS_MAIN(TraceClearingTest)
#include "tst_trace_clearing.moc"
