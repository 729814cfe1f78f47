// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/FolderSortModel.h"
#include "tests/DiskUsage/Scans.h"

#include <QAbstractItemModelTester>
#include <QTest>

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
    disk.addFile(QStringLiteral("C:\\r\\a\\one.txt"), 4 * megabyte);
    disk.addFile(QStringLiteral("C:\\r\\a\\b\\two.txt"), 5 * megabyte);
    disk.addFile(QStringLiteral("C:\\r\\c\\three.zip"), 10 * megabyte);
    disk.addFolder(QStringLiteral("C:\\r\\e"));
    disk.addFile(QStringLiteral("C:\\r\\four.bin"), megabyte);
}

} // namespace

class FolderModelTest : public QObject
{
    Q_OBJECT

private slots:
    void columnsHaveTheirTitlesAndTypes();
    void aScanThatBeginsShowsItsRoot();
    void rowsFollowTheScan();
    void sortsByNumbers_data();
    void sortsByNumbers();
    void aRescannedFolderChangesTheFoldersAbove();
    void deepTreesComeAndGo();
    void removingTheColumnsEmptiesTheModel();
};

void FolderModelTest::columnsHaveTheirTitlesAndTypes()
{
    MemoryEnumerator disk;
    fill(disk);
    FolderModel model;
    model.setResult(scanned(QStringLiteral("C:\\r"), disk));
    QStringList titles;
    for (int section = 0; section < model.columnCount(); ++section)
        titles.append(model.headerData(section, Qt::Horizontal).toString());
    const QString expected =
        QStringLiteral("Name,Size,File Count,Folder Count,Size,Path,Percentage,MaxData,Index");
    QCOMPARE(titles.join(QLatin1Char(',')), expected);

    const QModelIndex root = model.index(0, 0);
    QCOMPARE(raw(model, root, FolderModel::Size).typeId(), int(QMetaType::ULongLong));
    QCOMPARE(raw(model, root, FolderModel::FileCount).typeId(), int(QMetaType::Int));
    QCOMPARE(raw(model, root, FolderModel::FolderCount).typeId(), int(QMetaType::Int));
    QCOMPARE(raw(model, root, FolderModel::Index).typeId(), int(QMetaType::Int));
    QCOMPARE(raw(model, root, FolderModel::Percentage), QVariant(100.0));
    QCOMPARE(raw(model, root, FolderModel::Percentage).typeId(), int(QMetaType::Double));
    QCOMPARE(raw(model, root, FolderModel::SizeText), QVariant(QStringLiteral("20.00 MB")));
}

void FolderModelTest::aScanThatBeginsShowsItsRoot()
{
    FolderModel model;
    model.beginScan(QStringLiteral("C:\\Users\\x"));
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(raw(model, model.index(0, 0), FolderModel::Name), QVariant(QStringLiteral("x")));
    QCOMPARE(raw(model, model.index(0, 0), FolderModel::SizeText), QVariant(QStringLiteral("Column 2 Text")));
    QCOMPARE(raw(model, model.index(0, 0), FolderModel::Percentage), QVariant(100.0));
    model.beginScan(QStringLiteral("C:\\"));
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(raw(model, model.index(0, 0), FolderModel::Name), QVariant(QStringLiteral("C:\\")));
}

void FolderModelTest::rowsFollowTheScan()
{
    MemoryEnumerator disk;
    fill(disk);
    FolderModel model;
    model.setResult(scanned(QStringLiteral("C:\\r"), disk));
    QCOMPARE(column(model, FolderModel::Name, model.index(0, 0)),
             QStringList({QStringLiteral("a"), QStringLiteral("c"), QStringLiteral("e")}));
    const QModelIndex a = named(model, {QStringLiteral("a")});
    const QModelIndex b = named(model, {QStringLiteral("a"), QStringLiteral("b")});
    QCOMPARE(raw(model, b, FolderModel::Path), QVariant(QStringLiteral("C:\\r\\a\\b")));
    QCOMPARE(raw(model, a, FolderModel::Index), QVariant(1));
    QCOMPARE(model.data(a.siblingAtColumn(FolderModel::Percentage)).toString(), QStringLiteral("45.0 %"));
    QCOMPARE(raw(model, a, FolderModel::MaxData), QVariant(QStringLiteral("b:5242880:1;one.txt:4194304:0;")));
    // A folder of nothing has no share of nothing.
    QCOMPARE(raw(model, named(model, {QStringLiteral("e")}), FolderModel::Percentage), QVariant(0.0));
    QVERIFY(!named(model, {QStringLiteral("a"), QStringLiteral("missing")}).isValid());
}

void FolderModelTest::sortsByNumbers_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<QString>("ascending");
    // As texts "10.00 MB" would stand before "9.00 MB" and "10" before "9".
    QTest::newRow("size text") << int(FolderModel::SizeText) << QStringLiteral("e,nine,ten");
    QTest::newRow("share") << int(FolderModel::Percentage) << QStringLiteral("e,nine,ten");
    QTest::newRow("files") << int(FolderModel::FileCount) << QStringLiteral("e,nine,ten");
    QTest::newRow("index") << int(FolderModel::Index) << QStringLiteral("ten,nine,e");
}

void FolderModelTest::sortsByNumbers()
{
    MemoryEnumerator disk;
    for (const auto &[name, count] : {std::pair{QStringLiteral("ten"), 10}, {QStringLiteral("nine"), 9}})
        for (int i = 0; i < count; ++i)
            disk.addFile(QStringLiteral("C:\\r\\%1\\%2\\f").arg(name).arg(i), 1 << 20);
    disk.addFolder(QStringLiteral("C:\\r\\e"));
    FolderModel model;
    model.setResult(scanned(QStringLiteral("C:\\r"), disk));
    FolderSortModel sorted;
    sorted.setFolderModel(&model);

    QFETCH(int, section);
    QFETCH(QString, ascending);
    sorted.sort(section, Qt::AscendingOrder);
    QStringList expected = ascending.split(QLatin1Char(','));
    QCOMPARE(column(sorted, FolderModel::Name, sorted.index(0, 0)), expected);
    sorted.sort(section, Qt::DescendingOrder);
    std::reverse(expected.begin(), expected.end());
    QCOMPARE(column(sorted, FolderModel::Name, sorted.index(0, 0)), expected);
}

void FolderModelTest::aRescannedFolderChangesTheFoldersAbove()
{
    MemoryEnumerator disk;
    fill(disk);
    disk.addFolder(QStringLiteral("C:\\r\\a\\b\\old"));
    const auto result = scanned(QStringLiteral("C:\\r"), disk);
    FolderModel model;
    QAbstractItemModelTester sourceTester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setResult(result);
    FolderSortModel sorted;
    QAbstractItemModelTester tester(&sorted, QAbstractItemModelTester::FailureReportingMode::QtTest);
    sorted.setFolderModel(&model);
    sorted.sort(FolderModel::SizeText, Qt::DescendingOrder);
    const QModelIndex root = sorted.index(0, 0);
    QCOMPARE(column(sorted, FolderModel::Name, root).join(QLatin1Char(',')), QStringLiteral("c,a,e"));
    const QPersistentModelIndex c = sorted.index(0, 0, root);
    const QPersistentModelIndex a = sorted.index(1, 0, root);
    const QPersistentModelIndex b = sorted.index(0, 0, a);
    const QPersistentModelIndex old = sorted.index(0, 0, b);

    disk.addFile(QStringLiteral("C:\\r\\a\\b\\z\\new.iso"), 100 << 20);
    auto again = scanned(QStringLiteral("C:\\r\\a\\b"), disk);
    auto tree = FolderModel::buildTree(*again);
    FolderModel::destroyTree(model.replaceFolder(sorted.mapToSource(b), again, std::move(tree)));
    // The rows move to their new places and stay the same rows, but for those below the folder.
    QCOMPARE(column(sorted, FolderModel::Name, sorted.index(0, 0)).join(QLatin1Char(',')),
             QStringLiteral("a,c,e"));
    QCOMPARE(a.row(), 0);
    QCOMPARE(c.row(), 1);
    QVERIFY(b.isValid() && !old.isValid());
    QCOMPARE(column(sorted, FolderModel::Name, b).join(QLatin1Char(',')), QStringLiteral("z,old"));
    const QModelIndex top = model.index(0, 0);
    QCOMPARE(raw(model, named(model, {QStringLiteral("a")}), FolderModel::Size),
             QVariant(quint64(109) << 20));
    QCOMPARE(raw(model, top, FolderModel::Size), QVariant(quint64(120) << 20));
    QCOMPARE(raw(model, top, FolderModel::FileCount), QVariant(5));
    QCOMPARE(raw(model, top, FolderModel::FolderCount), QVariant(6));
    QCOMPARE(raw(model, top, FolderModel::MaxData),
             QVariant(QStringLiteral("a:114294784:1;c:10485760:1;four.bin:1048576:0;e:0:1;")));
    QCOMPARE(raw(model, sorted.mapToSource(sorted.index(0, 0, b)), FolderModel::Path),
             QVariant(QStringLiteral("C:\\r\\a\\b\\z")));
    // What the main scan found about file types is not touched.
    QCOMPARE(result->fileTypes[4].total, quint64(0));

    // The root is no part of anything.
    again = scanned(QStringLiteral("C:\\r"), disk);
    tree = FolderModel::buildTree(*again);
    QVERIFY(model.replaceFolder(top, again, std::move(tree)) == nullptr);
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
        folder.name = QStringLiteral("n");
        folder.parent = i - 1;
        folder.depth = i;
        result->folders.push_back(folder);
    }
    {
        FolderModel model;
        model.setResult(result);
        QCOMPARE(model.rowCount(model.index(0, 0)), 1);
    }
    FolderModel model;
    model.setResult(result);
    QVERIFY(model.removeColumns(0, model.columnCount()));
    FolderModel::destroyTree(FolderModel::buildTree(*result));
}

void FolderModelTest::removingTheColumnsEmptiesTheModel()
{
    MemoryEnumerator disk;
    fill(disk);
    std::shared_ptr<ScanResult> result = scanned(QStringLiteral("C:\\r"), disk);
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
