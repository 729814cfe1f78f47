// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/Treemap.h"
#include "DiskUsage/UsageGraph.h"
#include "tests/DiskUsage/Scans.h"

#include <QSignalSpy>
#include <QTest>

#include <numeric>

using namespace Qt::StringLiterals;
using namespace diskusage;
using tests::MemoryEnumerator;
using tests::scanned;
using Kind = UsageNode::Kind;

namespace
{

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

class UsageGraphTest : public QObject
{
    Q_OBJECT

private slots:
    void treemapFillsItsArea();
    void maxDataBecomesParts();
    void foldersAreFilledFromTheirRows();
    void mouseEntersFolders();
    void keyboardReachesEveryChild();
};

void UsageGraphTest::treemapFillsItsArea()
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

void UsageGraphTest::maxDataBecomesParts()
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

void UsageGraphTest::foldersAreFilledFromTheirRows()
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

void UsageGraphTest::mouseEntersFolders()
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

void UsageGraphTest::keyboardReachesEveryChild()
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

QTEST_MAIN(UsageGraphTest)
#include "tst_usage_graph.moc"
