// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/Treemap.h"
#include "DiskUsage/UsageGraph.h"
#include "tests/DiskUsage/Scans.h"

#include <QSignalSpy>
#include <QTest>

#include <numeric>

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
    void treemapFillsItsArea_data();
    void treemapFillsItsArea();
    void maxDataBecomesParts();
    void foldersAreFilledFromTheirRows();
    void mouseEntersFolders();
    void keyboardReachesEveryChild();
};

void UsageGraphTest::treemapFillsItsArea_data()
{
    QTest::addColumn<QList<double>>("weights");
    QTest::addColumn<QRectF>("area");
    QTest::newRow("upright") << QList<double>{8, 4, 2, 1, 1} << QRectF(0, 0, 50, 900);
    QTest::newRow("one giant") << QList<double>{1e15, 1, 1, 1} << QRectF(0, 0, 400, 300);
    QTest::newRow("with nothing") << QList<double>{3, 1, 0, 0} << QRectF(0, 0, 400, 300);
}

void UsageGraphTest::treemapFillsItsArea()
{
    QFETCH(QList<double>, weights);
    QFETCH(QRectF, area);
    const std::vector<QRectF> rects = squarified({weights.begin(), weights.end()}, area);
    QCOMPARE(rects.size(), std::size_t(weights.size()));
    const double total = std::accumulate(weights.begin(), weights.end(), 0.0);
    const double whole = ::area(area);
    for (std::size_t i = 0; i < rects.size(); ++i) {
        const double expected = weights[qsizetype(i)] / total * whole;
        QVERIFY(std::abs(::area(rects[i]) - expected) < 1e-6 * whole);
        QVERIFY(::area(rects[i]) < 1e-6 * whole ||
                area.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(rects[i]));
        for (std::size_t j = 0; j < i; ++j)
            QVERIFY(::area(rects[i].intersected(rects[j])) < 1e-6 * whole);
    }
    QVERIFY(squarified({}, area).empty());
    QCOMPARE(squarified({0, 0}, area), std::vector<QRectF>(2));
}

void UsageGraphTest::maxDataBecomesParts()
{
    const UsageNode node = usageOf(QStringLiteral("r"), 1000,
                                   QStringLiteral("a.iso:700:0;x;y.txt:200:0;Photos:50:1;e:0:1;"), matcher());
    QCOMPARE(node.children.size(), std::size_t(4));
    QCOMPARE(node.children[0], (UsageNode{QStringLiteral("a.iso"), 700, Kind::File, 4, {}}));
    QCOMPARE(node.children[1], (UsageNode{QStringLiteral("x;y.txt"), 200, Kind::File, 5, {}}));
    QCOMPARE(node.children[2], (UsageNode{QStringLiteral("Photos"), 50, Kind::Folder, -1, {}}));
    QCOMPARE(node.children[3], (UsageNode{QString(), 50, Kind::Rest, -1, {}}));
    // The ten children are everything: there is no rest.
    QCOMPARE(usageOf({}, 700, QStringLiteral("a.iso:700:0;"), matcher()).children.size(), std::size_t(1));
    QVERIFY(usageOf({}, 0, QStringLiteral("not one of these"), matcher()).children.empty());
}

void UsageGraphTest::foldersAreFilledFromTheirRows()
{
    MemoryEnumerator disk;
    disk.addFile(QStringLiteral("C:\\r\\a\\b\\c\\x.mp4"), 900);
    disk.addFile(QStringLiteral("C:\\r\\a\\y"), 90);
    FolderModel model;
    model.setResult(scanned(QStringLiteral("C:\\r"), disk));
    const UsageNode two = usageTree(*model.rootFolder(), matcher(), 2);
    QCOMPARE(two.children.front().children.size(), std::size_t(2));
    QCOMPARE(two.children.front().children.front().name, QStringLiteral("b"));
    QVERIFY(two.children.front().children.front().children.empty());
    const UsageNode four = usageTree(*model.rootFolder(), matcher(), 4);
    QCOMPARE(four.children[0].children[0].children[0].children[0].name, QStringLiteral("x.mp4"));
}

void UsageGraphTest::mouseEntersFolders()
{
    UsageNode usage =
        usageOf(QStringLiteral("r"), 1000, QStringLiteral("big:600:1;half.txt:400:0;"), matcher());
    usage.children[0] = usageOf(QStringLiteral("big"), 600, QStringLiteral("inner:500:1;"), matcher());
    UsageGraph graph;
    graph.resize(640, 480);
    graph.setUsage(usage, {});
    graph.show();
    QSignalSpy folders(&graph, &UsageGraph::folderActivated);
    QSignalSpy files(&graph, &UsageGraph::fileActivated);
    const auto doubleClick = [&graph](const QString &name) {
        QTest::mouseDClick(&graph, Qt::LeftButton, {}, boxOf(graph, name).rect.center().toPoint());
    };
    doubleClick(QStringLiteral("inner"));
    QCOMPARE(folders.takeFirst().first().toStringList(),
             QStringList({QStringLiteral("big"), QStringLiteral("inner")}));
    doubleClick(QStringLiteral("half.txt"));
    QCOMPARE(files.takeFirst().first().toStringList(), QStringList({QStringLiteral("half.txt")}));
    QVERIFY(folders.isEmpty());
    QVERIFY2(graph.currentText().contains(QStringLiteral("40.0 %")), qPrintable(graph.currentText()));
    // The rest is nothing that could be entered.
    doubleClick(QString());
    QVERIFY(folders.isEmpty() && files.isEmpty());
    QVERIFY(graph.currentNames().isEmpty());
}

void UsageGraphTest::keyboardReachesEveryChild()
{
    UsageGraph graph;
    graph.resize(640, 480);
    graph.setUsage(
        usageOf(QStringLiteral("r"), 100, QStringLiteral("a:40:1;b:30:1;c:20:1;d:10:1;"), matcher()), {});
    graph.show();
    QSignalSpy folders(&graph, &UsageGraph::folderActivated);
    QTest::keyClick(&graph, Qt::Key_Return); // nothing is current yet
    QVERIFY(folders.isEmpty());
    QSet<QString> reached;
    QTest::keyClick(&graph, Qt::Key_Down);
    QCOMPARE(graph.currentNames(), QStringList({QStringLiteral("a")}));
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
