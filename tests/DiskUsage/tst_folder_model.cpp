// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/FolderSortModel.h"
#include "tests/DiskUsage/Scans.h"

#include <QAbstractItemModelTester>
#include <QTest>

using namespace Qt::StringLiterals;
using diskusage::Folder;
using diskusage::ScanResult;
using tests::column;
using tests::MemoryEnumerator;
using tests::scanned;

namespace
{

QVariant raw(const FolderModel &model, const QModelIndex &row, int section)
{
    return model.data(row.siblingAtColumn(section), Qt::EditRole);
}

QModelIndex named(const FolderModel &model, const QStringList &names)
{
    return model.find(model.index(0, 0), names);
}

// C:\r: a (9 MB: 1 file, and b with 1 file), c (10 MB), e (empty), and a file of 1 MB.
void fill(MemoryEnumerator &disk)
{
    constexpr quint64 megabyte = 1 << 20;
    disk.addFile(u"C:\\r\\a\\one.txt"_s, 4 * megabyte);
    disk.addFile(u"C:\\r\\a\\b\\two.txt"_s, 5 * megabyte);
    disk.addFile(u"C:\\r\\c\\three.zip"_s, 10 * megabyte);
    disk.addFolder(u"C:\\r\\e"_s);
    disk.addFile(u"C:\\r\\four.bin"_s, megabyte);
}

} // namespace

class FolderModelTest : public QObject
{
    Q_OBJECT

private slots:
    void rowsFollowTheScan();
    void sortsByNumbers();
    void aRescannedFolderChangesTheFoldersAbove();
    void deepTreesComeAndGo();
};

void FolderModelTest::rowsFollowTheScan()
{
    MemoryEnumerator disk;
    fill(disk);
    FolderModel model;
    model.beginScan(u"C:\\r"_s); // shows the root alone
    QCOMPARE(column(model, FolderModel::Name), QStringList({u"r"_s}));
    QCOMPARE(column(model, FolderModel::SizeText), QStringList({u"Column 2 Text"_s}));
    model.beginScan(u"C:\\"_s);
    QCOMPARE(column(model, FolderModel::Name), QStringList({u"C:\\"_s}));

    model.setResult(scanned(u"C:\\r"_s, disk));
    QStringList titles;
    for (int section = 0; section < model.columnCount(); ++section)
        titles.append(model.headerData(section, Qt::Horizontal).toString());
    QCOMPARE(titles.join(u','), u"Name,Size,File Count,Folder Count,Size,Path,Percentage,MaxData,Index"_s);
    const QModelIndex root = model.index(0, 0);
    QCOMPARE(raw(model, root, FolderModel::Size), QVariant(quint64(20) << 20));
    QCOMPARE(raw(model, root, FolderModel::SizeText), QVariant(u"20.00 MB"_s));
    QCOMPARE(raw(model, root, FolderModel::Percentage), QVariant(100.0));
    QCOMPARE(column(model, FolderModel::Name, root), QStringList({u"a"_s, u"c"_s, u"e"_s}));
    const QModelIndex a = named(model, {u"a"_s});
    QCOMPARE(raw(model, named(model, {u"a"_s, u"b"_s}), FolderModel::Path), QVariant(u"C:\\r\\a\\b"_s));
    QCOMPARE(raw(model, a, FolderModel::FileCount), QVariant(2));
    QCOMPARE(raw(model, a, FolderModel::FolderCount), QVariant(1));
    QCOMPARE(raw(model, a, FolderModel::Index), QVariant(1));
    QCOMPARE(model.data(a.siblingAtColumn(FolderModel::Percentage)).toString(), u"45.0 %"_s);
    QCOMPARE(raw(model, a, FolderModel::MaxData), QVariant(u"b:5242880:1;one.txt:4194304:0;"_s));
    // A folder of nothing has no share of nothing.
    QCOMPARE(raw(model, named(model, {u"e"_s}), FolderModel::Percentage), QVariant(0.0));
    QVERIFY(!named(model, {u"a"_s, u"missing"_s}).isValid());
}

void FolderModelTest::sortsByNumbers()
{
    MemoryEnumerator disk;
    for (const auto &[name, count] : {std::pair{u"ten"_s, 10}, {u"nine"_s, 9}})
        for (int i = 0; i < count; ++i)
            disk.addFile(u"C:\\r\\%1\\%2\\f"_s.arg(name).arg(i), 1 << 20);
    disk.addFolder(u"C:\\r\\e"_s);
    FolderModel model;
    model.setResult(scanned(u"C:\\r"_s, disk));
    FolderSortModel sorted;
    sorted.setFolderModel(&model);

    // As texts "10.00 MB" would stand before "9.00 MB" and "10" before "9".
    const QStringList bySize{u"e"_s, u"nine"_s, u"ten"_s}; // by the order of the scan it is the other way
    for (const int section : {FolderModel::SizeText, FolderModel::Percentage, FolderModel::FileCount}) {
        sorted.sort(section, Qt::AscendingOrder);
        QCOMPARE(column(sorted, FolderModel::Name, sorted.index(0, 0)), bySize);
        sorted.sort(FolderModel::Index, Qt::DescendingOrder);
        QCOMPARE(column(sorted, FolderModel::Name, sorted.index(0, 0)), bySize);
        sorted.sort(section, Qt::DescendingOrder);
        QCOMPARE(column(sorted, FolderModel::Name, sorted.index(0, 0)).first(), u"ten"_s);
    }
}

void FolderModelTest::aRescannedFolderChangesTheFoldersAbove()
{
    MemoryEnumerator disk;
    fill(disk);
    disk.addFolder(u"C:\\r\\a\\b\\old"_s);
    const auto result = scanned(u"C:\\r"_s, disk);
    FolderModel model;
    QAbstractItemModelTester sourceTester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setResult(result);
    FolderSortModel sorted;
    QAbstractItemModelTester tester(&sorted, QAbstractItemModelTester::FailureReportingMode::QtTest);
    sorted.setFolderModel(&model);
    sorted.sort(FolderModel::SizeText, Qt::DescendingOrder);
    const QModelIndex root = sorted.index(0, 0);
    QCOMPARE(column(sorted, FolderModel::Name, root).join(QLatin1Char(',')), u"c,a,e"_s);
    const QPersistentModelIndex c = sorted.index(0, 0, root);
    const QPersistentModelIndex a = sorted.index(1, 0, root);
    const QPersistentModelIndex b = sorted.index(0, 0, a);
    const QPersistentModelIndex old = sorted.index(0, 0, b);

    disk.addFile(u"C:\\r\\a\\b\\z\\new.iso"_s, 100 << 20);
    auto again = scanned(u"C:\\r\\a\\b"_s, disk);
    auto tree = FolderModel::buildTree(*again);
    FolderModel::destroyTree(model.replaceFolder(sorted.mapToSource(b), again, std::move(tree)));
    // The rows move to their new places and stay the same rows, but for those below the folder.
    QCOMPARE(column(sorted, FolderModel::Name, sorted.index(0, 0)).join(QLatin1Char(',')), u"a,c,e"_s);
    QCOMPARE(a.row(), 0);
    QCOMPARE(c.row(), 1);
    QVERIFY(b.isValid() && !old.isValid());
    QCOMPARE(column(sorted, FolderModel::Name, b).join(QLatin1Char(',')), u"z,old"_s);
    const QModelIndex top = model.index(0, 0);
    QCOMPARE(raw(model, named(model, {u"a"_s}), FolderModel::Size), QVariant(quint64(109) << 20));
    QCOMPARE(raw(model, top, FolderModel::Size), QVariant(quint64(120) << 20));
    QCOMPARE(raw(model, top, FolderModel::FileCount), QVariant(5));
    QCOMPARE(raw(model, top, FolderModel::FolderCount), QVariant(6));
    QCOMPARE(raw(model, top, FolderModel::MaxData),
             QVariant(u"a:114294784:1;c:10485760:1;four.bin:1048576:0;e:0:1;"_s));
    QCOMPARE(raw(model, sorted.mapToSource(sorted.index(0, 0, b)), FolderModel::Path),
             QVariant(u"C:\\r\\a\\b\\z"_s));
    // One that was empty, seen while its rows come.
    const QModelIndex e = sorted.index(2, 0, sorted.index(0, 0));
    disk.addFolder(u"C:\\r\\e\\first"_s);
    auto filled = scanned(u"C:\\r\\e"_s, disk);
    tree = FolderModel::buildTree(*filled);
    QVERIFY(!sorted.hasChildren(e));
    bool seen = false;
    connect(&sorted, &QAbstractItemModel::rowsInserted, this, [&] { seen = sorted.hasChildren(e); });
    FolderModel::destroyTree(model.replaceFolder(sorted.mapToSource(e), filled, std::move(tree)));
    QVERIFY(seen);
    // What the main scan found about file types is not touched.
    QCOMPARE(result->fileTypes[4].total, quint64(0));

    // The result of a folder's earlier scan is not kept once the folder is scanned again.
    QVERIFY(model.takeUnused().empty());
    std::weak_ptr<ScanResult> first = again;
    again = scanned(u"C:\\r\\a"_s, disk);
    tree = FolderModel::buildTree(*again);
    FolderModel::destroyTree(model.replaceFolder(named(model, {u"a"_s}), again, std::move(tree)));
    QVERIFY(!first.expired());
    QCOMPARE(model.takeUnused().size(), 1);
    QVERIFY(first.expired());

    // Order is the sorting model's: positions stay true.
    model.sort(FolderModel::Name, Qt::DescendingOrder);
    QCOMPARE(column(model, FolderModel::Name, model.index(0, 0)).join(QLatin1Char(',')), u"a,c,e"_s);

    // The root is no part of anything.
    again = scanned(u"C:\\r"_s, disk);
    tree = FolderModel::buildTree(*again);
    QVERIFY(model.replaceFolder(model.index(0, 0), again, std::move(tree)) == nullptr);
    sorted.setFolderModel(nullptr);
    QVERIFY(model.removeColumns(0, model.columnCount()));
}

void FolderModelTest::deepTreesComeAndGo()
{
    // A destructor that calls itself for every level would be ten times too deep for the stack.
    auto result = std::make_shared<ScanResult>();
    constexpr int levels = 100'000;
    for (int i = 0; i < levels; ++i) {
        Folder folder;
        folder.name = u"n"_s;
        folder.parent = i - 1;
        folder.depth = i;
        result->folders.push_back(folder);
    }
    {
        FolderModel model;
        model.setResult(result);
        QCOMPARE(model.rowCount(model.index(0, 0)), 1);
    }
    FolderModel::destroyTree(FolderModel::buildTree(*result));
    // Without its columns a model is empty and holds nothing any more.
    const std::weak_ptr<ScanResult> watched = result;
    FolderModel model;
    model.setResult(std::move(result));
    QVERIFY(!model.removeColumns(0, 1)); // a part of the columns is no tree
    QCOMPARE(model.rowCount(), 1);
    QVERIFY(model.removeColumns(0, model.columnCount()));
    QCOMPARE(model.rowCount(), 0);
    QVERIFY(watched.expired());
}

QTEST_MAIN(FolderModelTest)
#include "tst_folder_model.moc"
