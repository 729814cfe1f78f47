// SPDX-License-Identifier: GPL-3.0-or-later

// The folders of a scan as rows, sorted and freed, and as the parts of the graph.

#include "DiskUsage/BiggestFilesModel.h"
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/DiskUsageClearRamThread.h"
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/FolderSortModel.h"
#include "DiskUsage/Treemap.h"
#include "DiskUsage/UsageGraph.h"
#include "tests/DiskUsage/Scans.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <numeric>

using namespace Qt::StringLiterals;
using namespace diskusage;
using tests::column;
using tests::MemoryEnumerator;
using tests::scanned;
using Kind = UsageNode::Kind;

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

const core::FileTypeMatcher &matcher()
{
    static const core::FileTypeMatcher builtIn(core::defaultFileTypes());
    return builtIn;
}

double area(const QRectF &rect)
{
    return rect.width() * rect.height();
}

const UsageGraph::Box &boxOf(const UsageGraph &graph, const QString &name)
{
    for (const UsageGraph::Box &box : graph.boxes())
        if (box.node->name == name)
            return box;
    qFatal("no box");
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
    void theModelsAreFreedInFiveSteps();
    void treemapFillsItsArea();
    void maxDataBecomesParts();
    void foldersAreFilledFromTheirRows();
    void mouseEntersFolders();
    void keyboardReachesEveryChild();
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

void FolderModelTest::theModelsAreFreedInFiveSteps()
{
    MemoryEnumerator disk;
    fill(disk);
    const auto result = scanned(u"C:\\r"_s, disk);
    FolderModel folders;
    BiggestFilesModel biggest;
    DataFilesModel data;
    folders.setResult(result);
    biggest.setFiles(result->biggestFiles);
    data.setResult(result);

    DiskUsageClearRamThread thread(folders, biggest, data);
    QStringList events;
    const auto note = [this, &events](auto *sender, auto signal, const char *what) {
        connect(
            sender, signal, this, [&events, what] { events.append(QLatin1String(what)); },
            Qt::DirectConnection);
    };
    note(&thread, &DiskUsageClearRamThread::clearRAMStart, "start");
    note(&thread, &DiskUsageClearRamThread::clearRAMStep, "step");
    note(&thread, &DiskUsageClearRamThread::clearRAMFinish, "finish");
    note(&folders, &QAbstractItemModel::rowsRemoved, "1 emptied");
    note(&folders, &QAbstractItemModel::modelReset, "1 cleared");
    note(&biggest, &QAbstractItemModel::columnsRemoved, "2 emptied");
    note(&biggest, &QAbstractItemModel::modelReset, "2 cleared");
    note(&data, &QAbstractItemModel::modelReset, "3 cleared");
    thread.start();
    QVERIFY(thread.wait(5000));
    QVERIFY(!events.contains(u"finish"_s)); // told on the thread of the form
    QTRY_VERIFY(events.contains(u"finish"_s));
    QCOMPARE(
        events.join(", "_L1),
        u"start, 1 emptied, step, 1 cleared, step, 2 emptied, step, 2 cleared, step, 3 cleared, step, finish"_s);
    QCOMPARE(folders.rowCount() + biggest.columnCount() + data.categoryTotal(), 0);
}

void FolderModelTest::treemapFillsItsArea()
{
    const QRectF wide(0, 0, 400, 300);
    for (const auto &[weights, frame] : {std::pair{std::vector<double>{8, 4, 2, 1, 1}, QRectF(0, 0, 50, 900)},
                                         {{1e15, 1, 1, 1}, wide},
                                         {{3, 1, 0, 0}, wide}}) {
        const std::vector<QRectF> rects = squarified(weights, frame);
        QCOMPARE(rects.size(), weights.size());
        const double total = std::accumulate(weights.begin(), weights.end(), 0.0);
        const double whole = area(frame);
        for (std::size_t i = 0; i < rects.size(); ++i) {
            QVERIFY(std::abs(area(rects[i]) - weights[i] / total * whole) < 1e-6 * whole);
            QVERIFY(area(rects[i]) < 1e-6 * whole ||
                    frame.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(rects[i]));
            for (std::size_t j = 0; j < i; ++j)
                QVERIFY(area(rects[i].intersected(rects[j])) < 1e-6 * whole);
        }
    }
    QVERIFY(squarified({}, wide).empty());
    QCOMPARE(squarified({0, 0}, wide), std::vector<QRectF>(2));
}

void FolderModelTest::maxDataBecomesParts()
{
    const UsageNode node =
        usageOf(u"r"_s, 1000, u"a.iso:700:0;x;y.txt:200:0;Photos:50:1;e:0:1;"_s, matcher());
    QCOMPARE(node.children.size(), std::size_t(4));
    QCOMPARE(node.children[0], (UsageNode{u"a.iso"_s, 700, Kind::File, 4, {}}));
    QCOMPARE(node.children[1], (UsageNode{u"x;y.txt"_s, 200, Kind::File, 5, {}}));
    QCOMPARE(node.children[2], (UsageNode{u"Photos"_s, 50, Kind::Folder, -1, {}}));
    QCOMPARE(node.children[3], (UsageNode{QString(), 50, Kind::Rest, -1, {}}));
    // The ten children are everything: there is no rest.
    QCOMPARE(usageOf({}, 700, u"a.iso:700:0;"_s, matcher()).children.size(), std::size_t(1));
    QVERIFY(usageOf({}, 0, u"not one of these"_s, matcher()).children.empty());
}

void FolderModelTest::foldersAreFilledFromTheirRows()
{
    MemoryEnumerator disk;
    disk.addFile(u"C:\\r\\a\\b\\c\\x.mp4"_s, 900);
    disk.addFile(u"C:\\r\\a\\y"_s, 90);
    FolderModel model;
    model.setResult(scanned(u"C:\\r"_s, disk));
    const UsageNode two = usageTree(*model.rootFolder(), matcher(), 2);
    QCOMPARE(two.children.front().children.size(), std::size_t(2));
    QCOMPARE(two.children.front().children.front().name, u"b"_s);
    QVERIFY(two.children.front().children.front().children.empty());
    const UsageNode four = usageTree(*model.rootFolder(), matcher(), 4);
    QCOMPARE(four.children[0].children[0].children[0].children[0].name, u"x.mp4"_s);
}

void FolderModelTest::mouseEntersFolders()
{
    UsageNode usage = usageOf(u"r"_s, 1000, u"big:600:1;half.txt:400:0;"_s, matcher());
    usage.children[0] = usageOf(u"big"_s, 600, u"inner:500:1;"_s, matcher());
    UsageGraph graph;
    graph.resize(640, 480);
    graph.setUsage(usage, {});
    graph.show();
    QSignalSpy folders(&graph, &UsageGraph::folderActivated);
    QSignalSpy files(&graph, &UsageGraph::fileActivated);
    const auto doubleClick = [&graph](const QString &name) {
        QTest::mouseDClick(&graph, Qt::LeftButton, {}, boxOf(graph, name).rect.center().toPoint());
    };
    doubleClick(u"inner"_s);
    QCOMPARE(folders.takeFirst().first().toStringList(), QStringList({u"big"_s, u"inner"_s}));
    doubleClick(u"half.txt"_s);
    QCOMPARE(files.takeFirst().first().toStringList(), QStringList({u"half.txt"_s}));
    QVERIFY(folders.isEmpty());
    QVERIFY2(graph.currentText().contains(u"40.0 %"_s), qPrintable(graph.currentText()));
    // The rest is nothing that could be entered.
    doubleClick(QString());
    QVERIFY(folders.isEmpty() && files.isEmpty());
    QVERIFY(graph.currentNames().isEmpty());
}

void FolderModelTest::keyboardReachesEveryChild()
{
    UsageGraph graph;
    graph.resize(640, 480);
    graph.setUsage(usageOf(u"r"_s, 100, u"a:40:1;b:30:1;c:20:1;d:10:1;"_s, matcher()), {});
    graph.show();
    QSignalSpy folders(&graph, &UsageGraph::folderActivated);
    QTest::keyClick(&graph, Qt::Key_Return); // nothing is current yet
    QVERIFY(folders.isEmpty());
    QSet<QString> reached;
    QTest::keyClick(&graph, Qt::Key_Down);
    QCOMPARE(graph.currentNames(), QStringList({u"a"_s}));
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Up, Qt::Key_Left, Qt::Key_Right,
                              Qt::Key_Down, Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Left}) {
        reached.insert(graph.currentNames().value(0));
        QTest::keyClick(&graph, key);
    }
    reached.insert(graph.currentNames().value(0));
    QCOMPARE(reached.size(), 4);
    const QStringList current = graph.currentNames();
    QTest::keyClick(&graph, Qt::Key_Return);
    QCOMPARE(folders.takeFirst().first().toStringList(), current);
    QVERIFY(graph.accessibleDescription().contains(current.first()));
}

QTEST_MAIN(FolderModelTest)
#include "tst_folder_model.moc"
