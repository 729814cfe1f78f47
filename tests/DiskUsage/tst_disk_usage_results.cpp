// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/DiskUsageResultsForm.h"
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/Settings.h"
#include "DiskUsage/UsageGraph.h"
#include "tests/DiskUsage/Scene.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeShell.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"
#include "widgets/PathBar.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <QTreeView>

using diskusage::loadRecentFolders;
using tests::column;
using tests::FakeDialogs;
using tests::FakeShell;
using tests::megabyte;
using tests::Scene;
using tests::TestFolder;

namespace
{

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(unreadable)");
}

} // namespace

class DiskUsageResultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        tests::requireTestPrefix();
        QApplication::setStyle(QStringLiteral("Fusion"));
    }
    void init() { m_guard = std::make_unique<tests::RegistryGuard>(); }
    void cleanup() { m_guard.reset(); }

    void theTreeOpensAsItShould();
    void whatIsNotCountedIsListed();
    void theBiggestFilesAndFileTypesAreShown();
    void theGraphLeadsThroughTheFolders();
    void aFolderScannedAgainLeavesTheFileTypesAlone();
    void aFolderScannedAgainCorrectsWhatIsNotCounted();
    void longPathsDoNotWidenTheWindow();
    void keysAndMenuActOnTheSelection();
    void tablesAreExported();

private:
    std::unique_ptr<tests::RegistryGuard> m_guard;
};

void DiskUsageResultsTest::theTreeOpensAsItShould()
{
    Scene scene;
    QVERIFY(scene.scan(QStringLiteral("C:/r")));
    QTreeView *tree = scene.tree();
    QVERIFY(tree->isExpanded(scene.row({})));
    QCOMPARE(tree->currentIndex().siblingAtColumn(0), scene.row({}));
    QStringList shown;
    for (int position = 0; position < tree->header()->count(); ++position) {
        const int section = tree->header()->logicalIndex(position);
        if (!tree->isColumnHidden(section))
            shown.append(tree->model()->headerData(section, Qt::Horizontal).toString());
    }
    QCOMPARE(shown.join(QLatin1Char(',')), QStringLiteral("Name,Percentage,Size,File Count,Folder Count"));
    // The largest first; a click on the header turns it round.
    QCOMPARE(column(*tree->model(), 0, scene.row({})).first(), QStringLiteral("a"));
    const int x = tree->header()->sectionViewportPosition(FolderModel::SizeText) + 10;
    QTest::mouseClick(tree->header()->viewport(), Qt::LeftButton, {}, QPoint(x, 5));
    QCOMPARE(column(*tree->model(), 0, scene.row({})).last(), QStringLiteral("a"));
    const QVariant alignment =
        scene.row({}).siblingAtColumn(FolderModel::SizeText).data(Qt::TextAlignmentRole);
    QVERIFY((alignment.toInt() & Qt::AlignRight) != 0);
}

void DiskUsageResultsTest::whatIsNotCountedIsListed()
{
    diskusage::saveExcludedFolders({{true, QStringLiteral("C:\\r\\c")}});
    Scene scene;
    scene.disk.setBrokenOff(QStringLiteral("C:\\r\\a\\b"));
    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    auto *tabs = scene.find<QTabWidget>("resultTabWidget");
    QVERIFY(tabs->isTabVisible(3));
    QCOMPARE(tabs->tabText(3), QStringLiteral("Not Counted (4)"));
    const QAbstractItemModel &model = *scene.find<QTableView>("notCountedTableView")->model();
    QCOMPARE(column(model, 0), QStringList({QStringLiteral("C:\\r\\a\\b"), QStringLiteral("C:\\r\\c"),
                                            QStringLiteral("C:\\r\\locked"), QStringLiteral("C:\\r\\loop")}));
    const QStringList reasons = column(model, 1);
    QCOMPARE(QSet<QString>(reasons.begin(), reasons.end()).size(), 4);
    // With nothing left out there is no such page.
    QVERIFY(scene.scan(QStringLiteral("C:\\r\\c")));
    QVERIFY(!tabs->isTabVisible(3));
}

void DiskUsageResultsTest::theBiggestFilesAndFileTypesAreShown()
{
    Scene scene;
    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    auto *tabs = scene.find<QTabWidget>("resultTabWidget");
    tabs->setCurrentIndex(1);
    QCOMPARE(tabs->tabText(1), QStringLiteral("20 biggest Files"));
    auto *biggest = scene.find<QTableView>("biggestFilesTableView");
    QCOMPARE(column(*biggest->model(), diskusage::FileName).first(), QStringLiteral("two.mp4"));
    QVERIFY(biggest->isColumnHidden(diskusage::FileRawSize));

    tabs->setCurrentIndex(2);
    const QAbstractItemModel &types = *scene.find<QTreeView>("fileTypesTreeView")->model();
    QCOMPARE(types.rowCount(), 13);
    QCOMPARE(column(types, 0).mid(0, 4),
             QStringList({QStringLiteral("Video Files"), QStringLiteral("Compressed Files"),
                          QStringLiteral("Document Files"), QStringLiteral("Other file types")}));
    auto *files = scene.find<QTableView>("dataFilesTableView");
    QCOMPARE(column(*files->model(), diskusage::FileName), QStringList({QStringLiteral("two.mp4")}));
    scene.find<QTreeView>("fileTypesTreeView")->setCurrentIndex(types.index(3, 0));
    QCOMPARE(column(*files->model(), diskusage::FileName), QStringList({QStringLiteral("four.bin")}));
    // A type without files says so instead of an empty list.
    scene.find<QTreeView>("fileTypesTreeView")->setCurrentIndex(types.index(12, 0));
    QVERIFY(!files->isVisible());
}

void DiskUsageResultsTest::theGraphLeadsThroughTheFolders()
{
    Scene scene;
    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    auto *graph = scene.find<UsageGraph>("usageGraph");
    auto *path = scene.find<PathBar>("pathBar");
    QTRY_COMPARE(path->path(), QStringList({QStringLiteral("r")}));
    graph->setFocus();
    QTest::keyClick(graph, Qt::Key_Down); // the largest: a
    QCOMPARE(graph->currentNames(), QStringList({QStringLiteral("a")}));
    QTest::keyClick(graph, Qt::Key_Return);
    QTRY_COMPARE(path->path(), QStringList({QStringLiteral("r"), QStringLiteral("a")}));
    QCOMPARE(scene.tree()->currentIndex().siblingAtColumn(0), scene.row({QStringLiteral("a")}));
    // A folder two levels down is entered in one step.
    emit graph->folderActivated({QStringLiteral("b")});
    QTRY_COMPARE(path->path().size(), 3);
    QTest::keyClick(scene.tree(), Qt::Key_Backspace);
    QTRY_COMPARE(path->path(), QStringList({QStringLiteral("r"), QStringLiteral("a")}));
    QTest::mouseClick(path->findChildren<QToolButton *>().at(1), Qt::LeftButton);
    QTRY_COMPARE(path->path(), QStringList({QStringLiteral("r")}));
    QTest::keyClick(scene.tree(), Qt::Key_Backspace); // above the root there is nothing
    QCOMPARE(path->path(), QStringList({QStringLiteral("r")}));
}

void DiskUsageResultsTest::aFolderScannedAgainLeavesTheFileTypesAlone()
{
    Scene scene;
    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(2);
    const QAbstractItemModel &types = *scene.find<QTreeView>("fileTypesTreeView")->model();
    const QStringList before = column(types, 2) + column(types, 3);
    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(0);

    scene.disk.addFile(QStringLiteral("C:\\r\\a\\b\\new.mp4"), 100 * megabyte);
    scene.select({QStringLiteral("a")});
    QTest::keyClick(scene.tree(), Qt::Key_F5);
    QVERIFY(scene.form->isScanning());
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(scene.row({}).siblingAtColumn(FolderModel::SizeText).data().toString(),
             QStringLiteral("130.00 MB"));
    QVERIFY(scene.notice().contains(QStringLiteral("100.00 MB more")));
    QCOMPARE(scene.tree()->currentIndex().siblingAtColumn(0), scene.row({QStringLiteral("a")}));
    QCOMPARE(column(types, 2) + column(types, 3), before);
    // Its own biggest files can be chosen beside those of the scan.
    auto *choice = scene.find<QComboBox>("biggestFilesComboBox");
    QCOMPARE(choice->count(), 2);
    QCOMPARE(choice->itemText(1), QStringLiteral("a (20 Biggest Files)"));
    choice->setCurrentIndex(1);
    QCOMPARE(column(*scene.find<QTableView>("biggestFilesTableView")->model(), 0).first(),
             QStringLiteral("new.mp4"));
    // Everything scanned again brings them too.
    QSignalSpy results(scene.form.get(), &DiskUsageForm::resultsShown);
    QTest::mouseClick(scene.find<QPushButton>("scanAgainButton"), Qt::LeftButton);
    QVERIFY(results.wait());
    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(2);
    QCOMPARE(types.index(0, 2).data().toString(), QStringLiteral("115.00 MB"));
    QCOMPARE(loadRecentFolders().size(), 1);
}

void DiskUsageResultsTest::aFolderScannedAgainCorrectsWhatIsNotCounted()
{
    diskusage::saveExcludedFolders({{true, QStringLiteral("C:\\r\\a\\one\\x")}});
    Scene scene;
    scene.disk.addFolder(QStringLiteral("C:\\r\\a\\one\\x"));
    scene.disk.addFolder(QStringLiteral("C:\\r\\a\\one more")); // a name that begins the same
    scene.disk.setUnreadable(QStringLiteral("C:\\r\\a\\one more"));
    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    auto *table = scene.find<QTableView>("notCountedTableView");
    QCOMPARE(column(*table->model(), 0),
             QStringList({QStringLiteral("C:\\r\\a\\one more"), QStringLiteral("C:\\r\\a\\one\\x"),
                          QStringLiteral("C:\\r\\locked"), QStringLiteral("C:\\r\\loop")}));
    table->model()->sort(0, Qt::DescendingOrder);

    diskusage::saveExcludedFolders({});
    for (const char *name : {"new", "newer"}) {
        const QString path = QStringLiteral("C:\\r\\a\\one\\%1").arg(QLatin1String(name));
        scene.disk.addFolder(path);
        scene.disk.setUnreadable(path);
    }
    scene.select({QStringLiteral("a"), QStringLiteral("one")});
    QTest::keyClick(scene.tree(), Qt::Key_F5);
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(column(*table->model(), 0),
             QStringList({QStringLiteral("C:\\r\\loop"), QStringLiteral("C:\\r\\locked"),
                          QStringLiteral("C:\\r\\a\\one\\newer"), QStringLiteral("C:\\r\\a\\one\\new"),
                          QStringLiteral("C:\\r\\a\\one more")}));
    QCOMPARE(scene.find<QTabWidget>("resultTabWidget")->tabText(3), QStringLiteral("Not Counted (5)"));
}

void DiskUsageResultsTest::longPathsDoNotWidenTheWindow()
{
    Scene scene;
    const QString name(250, QLatin1Char('w'));
    QString path = QStringLiteral("C:");
    for (int i = 0; i < 12; ++i)
        path += QLatin1Char('\\') + name;
    scene.disk.addFile(path + QStringLiteral("\\f.txt"), 1);
    QVERIFY(scene.scan(path.section(QLatin1Char('\\'), 0, -2)));
    scene.select({name});
    QTest::keyClick(scene.tree(), Qt::Key_F5); // and its name is one of the choices of the biggest files
    QTRY_VERIFY(!scene.form->isBusy());
    auto *choice = scene.find<QComboBox>("biggestFilesComboBox");
    QCOMPARE(choice->count(), 2);
    QEvent change(QEvent::StyleChange); // until one comes, the list keeps the width that it had when empty
    QCoreApplication::sendEvent(choice, &change);
    auto *page = scene.form->findChild<DiskUsageResultsForm *>();
    page->setBusy(true, QStringLiteral("Scanning %1 again ...").arg(path));
    auto *tabs = scene.find<QTabWidget>("resultTabWidget");
    for (int tab = 0; tab < 3; ++tab) {
        tabs->setCurrentIndex(tab);
        QCoreApplication::processEvents(); // the layouts around hear of the page
        const int width = qMax(page->minimumSizeHint().width(), tabs->widget(tab)->minimumSizeHint().width());
        QVERIFY2(width < 800, qPrintable(QString::number(width)));
    }
}

void DiskUsageResultsTest::keysAndMenuActOnTheSelection()
{
    FakeShell shell;
    TestFolder folder;
    Scene scene;
    // "gone" was deleted since the scan.
    folder.makeFolder(QStringLiteral("there"));
    for (const char *name : {"there", "gone"})
        scene.disk.addFolder(folder.path(QLatin1String(name)));
    QVERIFY(scene.scan(folder.path()));
    const auto reveal = [&scene](const QString &name) {
        scene.select({name});
        QTest::keyClick(scene.tree(), Qt::Key_E, Qt::ControlModifier);
    };
    reveal(QStringLiteral("there"));
    QTRY_COMPARE(shell.revealed, QStringList({folder.path(QStringLiteral("there"))}));
    reveal(QStringLiteral("gone"));
    QTRY_VERIFY(scene.notice().contains(folder.path(QStringLiteral("gone"))));
    QCOMPARE(shell.revealed.size(), 1);

    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    QTreeView *tree = scene.tree();
    scene.select({QStringLiteral("a")});
    QTest::keyClick(tree, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("C:\\r\\a"));
    emit tree->customContextMenuRequested(tree->visualRect(tree->currentIndex()).center());
    auto *menu = tree->findChild<QMenu *>(QStringLiteral("pathMenu"));
    QVERIFY(menu && menu->isVisible());
    QStringList entries;
    for (const QAction *action : menu->actions())
        if (!action->isSeparator())
            entries.append(action->text());
    QCOMPARE(entries.join(QLatin1Char(',')),
             QStringLiteral("Open,Show in Explorer,Copy Path,Scan This Folder Again,Export as CSV..."));
    menu->close();

    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(1);
    auto *biggest = scene.find<QTableView>("biggestFilesTableView");
    biggest->setCurrentIndex(biggest->model()->index(1, 0));
    QTest::keyClick(biggest, Qt::Key_Return);
    QCOMPARE(shell.opened, QStringList({QStringLiteral("C:\\r\\c\\three.zip")}));
    shell.succeeds = false;
    QTest::keyClick(biggest, Qt::Key_O, Qt::ControlModifier);
    QVERIFY(scene.notice().contains(QStringLiteral("C:\\r\\c\\three.zip")));
}

void DiskUsageResultsTest::tablesAreExported()
{
    const TestFolder folder;
    const QString file = folder.path(QStringLiteral("table.csv"));
    FakeDialogs dialogs;
    Scene scene;
    scene.disk.addFile(QStringLiteral("C:\\r\\c\\=1+1.zip"), 0);
    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    dialogs.nextFileToSave.enqueue(file);
    QTest::keyClick(scene.tree(), Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(!scene.form->isBusy());
    QList<QByteArray> lines = contents(file).split('\n');
    QCOMPARE(lines.at(0),
             QByteArray("\xEF\xBB\xBFPath,Name,Size,Raw Size,Percentage,File Count,Folder Count\r"));
    QCOMPARE(lines.at(1), QByteArray("C:\\r,r,30.00 MB,31457280,100.00,5,5\r"));
    // Folders that are not open in the tree are in the file as well, below their parents.
    QCOMPARE(lines.at(2), QByteArray("C:\\r\\a,a,19.00 MB,19922944,63.33,2,1\r"));
    QCOMPARE(lines.at(3), QByteArray("C:\\r\\a\\b,b,15.00 MB,15728640,78.95,1,0\r"));
    QVERIFY(scene.notice().contains(QStringLiteral("6 rows")));

    // A list of files, in the order in which it is shown.
    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(2);
    auto *types = scene.find<QTreeView>("fileTypesTreeView");
    types->setCurrentIndex(types->model()->index(1, 0));
    dialogs.nextFileToSave.enqueue(file);
    QTest::mouseClick(scene.find<QPushButton>("exportButton"), Qt::LeftButton);
    QTRY_VERIFY(!scene.form->isBusy());
    lines = contents(file).split('\n');
    QVERIFY(lines.at(1).startsWith("three.zip,10.00 MB,"));
    QVERIFY(lines.at(2).startsWith("'=1+1.zip,0.00 KB,"));

    // The file types.
    types->setFocus();
    emit types->customContextMenuRequested(QPoint(5, 5));
    auto *menu = types->findChild<QMenu *>(QStringLiteral("typesMenu"));
    QVERIFY(menu && menu->isVisible());
    QCOMPARE(menu->actions().first()->text(), QStringLiteral("Export as CSV..."));
    menu->close();
    dialogs.nextFileToSave.enqueue(file);
    QTest::keyClick(types, Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(dialogs.fileDialogs.last().text, QStringLiteral("File Types.csv"));
    lines = contents(file).split('\n');
    QCOMPARE(lines.size(), 15); // the titles, thirteen types, and what follows the last line's end
    QCOMPARE(lines.at(0), QByteArray("\xEF\xBB\xBF"
                                     "File Type,Percentage,Size,Raw Size,File Count\r"));
    QCOMPARE(lines.at(1), QByteArray("Video Files,50.00,15.00 MB,15728640,1\r"));

    // Cancelled in the dialog: nothing happens.
    dialogs.nextFileToSave.enqueue(QString());
    QTest::mouseClick(scene.find<QPushButton>("exportButton"), Qt::LeftButton);
    QVERIFY(!scene.form->isBusy());
}

QTEST_MAIN(DiskUsageResultsTest)
#include "tst_disk_usage_results.moc"
