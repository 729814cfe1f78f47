// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/DiskUsageResultsForm.h"
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/Settings.h"
#include "DiskUsage/UsageGraph.h"
#include "tests/DiskUsage/Scene.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeShell.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"
#include "widgets/PathBar.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QMenu>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <QTreeView>

#include <functional>

using namespace Qt::StringLiterals;
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
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "(unreadable)"_ba;
}

} // namespace

class DiskUsageResultsTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(u"Fusion"_s); }

    void theTreeOpensAsItShould();
    void whatIsNotCountedIsListed();
    void theBiggestFilesAndFileTypesAreShown();
    void theGraphLeadsThroughTheFolders();
    void aFolderScannedAgainCorrectsTheFileTypes();
    void aFolderScannedAgainCorrectsWhatIsNotCounted();
    void longPathsDoNotWidenTheWindow();
    void keysAndMenuActOnTheSelection();
    void tablesKeepTheirColumns();
    void tablesAreExported();
    void aFolderScanEntersNoLinkToAFolderAbove();
    void namesKeepTheirRoomInDeepFolders();
};

void DiskUsageResultsTest::theTreeOpensAsItShould()
{
    Scene scene;
    QVERIFY(scene.scan(u"C:/r"_s));
    QTreeView *tree = scene.tree();
    QVERIFY(tree->isExpanded(scene.row({})));
    QCOMPARE(tree->currentIndex().siblingAtColumn(0), scene.row({}));
    QStringList shown;
    for (int position = 0; position < tree->header()->count(); ++position) {
        const int section = tree->header()->logicalIndex(position);
        if (!tree->isColumnHidden(section))
            shown.append(tree->model()->headerData(section, Qt::Horizontal).toString());
    }
    QCOMPARE(shown.join(QLatin1Char(',')), u"Name,Percentage,Size,File Count,Folder Count"_s);
    // The largest first; a click on the header turns it round.
    QCOMPARE(column(*tree->model(), 0, scene.row({})).first(), u"a"_s);
    const int x = tree->header()->sectionViewportPosition(FolderModel::SizeText) + 10;
    QTest::mouseClick(tree->header()->viewport(), Qt::LeftButton, {}, QPoint(x, 5));
    QCOMPARE(column(*tree->model(), 0, scene.row({})).last(), u"a"_s);
    // Enter and a double click open and close folders.
    scene.select({u"a"_s});
    const auto doubleClick = [tree] {
        const QPoint name = tree->visualRect(tree->currentIndex()).center();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, name);
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, name);
    };
    const auto enter = [tree] { QTest::keyClick(tree, Qt::Key_Return); };
    for (const std::function<void()> &act : {std::function<void()>(enter), {doubleClick}}) {
        act();
        QVERIFY(tree->isExpanded(scene.row({u"a"_s})));
        act();
        QVERIFY(!tree->isExpanded(scene.row({u"a"_s})));
    }
}

void DiskUsageResultsTest::whatIsNotCountedIsListed()
{
    diskusage::saveExcludedFolders({{true, u"C:\\r\\c"_s}});
    Scene scene;
    scene.disk.setBrokenOff(u"C:\\r\\a\\b"_s);
    QVERIFY(scene.scan(u"C:\\r"_s));
    auto *tabs = scene.find<QTabWidget>("resultTabWidget");
    QVERIFY(tabs->isTabVisible(3));
    QCOMPARE(tabs->tabText(3), u"Not Counted (4)"_s);
    const QAbstractItemModel &model = *scene.find<QTableView>("notCountedTableView")->model();
    QCOMPARE(column(model, 0),
             QStringList({u"C:\\r\\a\\b"_s, u"C:\\r\\c"_s, u"C:\\r\\locked"_s, u"C:\\r\\loop"_s}));
    const QStringList reasons = column(model, 1);
    QCOMPARE(QSet<QString>(reasons.begin(), reasons.end()).size(), 4);
    // Sorting keeps what is selected.
    auto *table = scene.find<QTableView>("notCountedTableView");
    table->selectRow(1);
    table->sortByColumn(0, Qt::DescendingOrder);
    QCOMPARE(table->currentIndex(), model.index(2, 0));
    QCOMPARE(table->selectionModel()->selectedRows(), QModelIndexList{model.index(2, 0)});
    // With nothing left out there is no such page.
    QVERIFY(scene.scan(u"C:\\r\\c"_s));
    QVERIFY(!tabs->isTabVisible(3));
}

void DiskUsageResultsTest::theBiggestFilesAndFileTypesAreShown()
{
    Scene scene;
    QVERIFY(scene.scan(u"C:\\r"_s));
    auto *tabs = scene.find<QTabWidget>("resultTabWidget");
    tabs->setCurrentIndex(1);
    QCOMPARE(tabs->tabText(1), u"20 biggest Files"_s);
    auto *biggest = scene.find<QTableView>("biggestFilesTableView");
    QCOMPARE(column(*biggest->model(), diskusage::FileName).first(), u"two.mp4"_s);
    QVERIFY(biggest->isColumnHidden(diskusage::FileRawSize));

    tabs->setCurrentIndex(2);
    const QAbstractItemModel &types = *scene.find<QTreeView>("fileTypesTreeView")->model();
    QCOMPARE(types.rowCount(), 13);
    QCOMPARE(column(types, 0).mid(0, 4), QStringList({u"Video Files"_s, u"Compressed Files"_s,
                                                      u"Document Files"_s, u"Other file types"_s}));
    auto *files = scene.find<QTableView>("dataFilesTableView");
    QCOMPARE(column(*files->model(), diskusage::FileName), QStringList({u"two.mp4"_s}));
    scene.find<QTreeView>("fileTypesTreeView")->setCurrentIndex(types.index(3, 0));
    QCOMPARE(column(*files->model(), diskusage::FileName), QStringList({u"four.bin"_s}));
    // A type without files says so instead of an empty list.
    scene.find<QTreeView>("fileTypesTreeView")->setCurrentIndex(types.index(12, 0));
    QVERIFY(!files->isVisible());
}

void DiskUsageResultsTest::theGraphLeadsThroughTheFolders()
{
    Scene scene;
    QVERIFY(scene.scan(u"C:\\r"_s));
    auto *graph = scene.find<UsageGraph>("usageGraph");
    auto *path = scene.find<PathBar>("pathBar");
    QTRY_COMPARE(path->path(), QStringList({u"r"_s}));
    graph->setFocus();
    QTest::keyClick(graph, Qt::Key_Down); // the largest: a
    QCOMPARE(graph->currentNames(), QStringList({u"a"_s}));
    QTest::keyClick(graph, Qt::Key_Return);
    QTRY_COMPARE(path->path(), QStringList({u"r"_s, u"a"_s}));
    QCOMPARE(scene.tree()->currentIndex().siblingAtColumn(0), scene.row({u"a"_s}));
    // A folder two levels down is entered in one step.
    emit graph->folderActivated({u"b"_s});
    QTRY_COMPARE(path->path().size(), 3);
    QTest::keyClick(scene.tree(), Qt::Key_Backspace);
    QTRY_COMPARE(path->path(), QStringList({u"r"_s, u"a"_s}));
    QTest::mouseClick(path->findChildren<QToolButton *>().at(1), Qt::LeftButton);
    QTRY_COMPARE(path->path(), QStringList({u"r"_s}));
    QTest::keyClick(scene.tree(), Qt::Key_Backspace); // above the root there is nothing
    QCOMPARE(path->path(), QStringList({u"r"_s}));
}

void DiskUsageResultsTest::aFolderScannedAgainCorrectsTheFileTypes()
{
    Scene scene;
    QVERIFY(scene.scan(u"C:\\r"_s));
    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(2);
    const QAbstractItemModel &types = *scene.find<QTreeView>("fileTypesTreeView")->model();
    QCOMPARE(types.index(0, 2).data().toString(), u"15.00 MB"_s);
    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(0);

    scene.disk.addFile(u"C:\\r\\a\\b\\new.mp4"_s, 100 * megabyte);
    scene.select({u"a"_s});
    QTest::keyClick(scene.tree(), Qt::Key_F5);
    QVERIFY(scene.form->isScanning());
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(scene.row({}).siblingAtColumn(FolderModel::SizeText).data().toString(), u"130.00 MB"_s);
    QVERIFY(scene.notice().contains(u"100.00 MB more"_s));
    QCOMPARE(scene.tree()->currentIndex().siblingAtColumn(0), scene.row({u"a"_s}));
    // In the categories as well, the shown one in the order that was chosen.
    QCOMPARE(types.index(0, 2).data().toString(), u"115.00 MB"_s);
    QVERIFY(column(scene.form->dataFilesModel(), 0).contains(u"new.mp4"_s));
    // Once more, and below it: the result of the first time is not kept.
    scene.disk.addFile(u"C:\\r\\a\\b\\more.mp4"_s, 10 * megabyte);
    scene.select({u"a"_s});
    QTest::keyClick(scene.tree(), Qt::Key_F5);
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(types.index(0, 2).data().toString(), u"125.00 MB"_s);
    // Its own biggest files can be chosen beside those of the scan.
    auto *choice = scene.find<QComboBox>("biggestFilesComboBox");
    QCOMPARE(choice->count(), 2);
    QCOMPARE(choice->itemText(1), u"a (20 Biggest Files)"_s);
    choice->setCurrentIndex(1);
    QCOMPARE(column(*scene.find<QTableView>("biggestFilesTableView")->model(), 0).first(), u"new.mp4"_s);
    // Everything scanned again brings them too.
    QSignalSpy results(scene.form.get(), &DiskUsageForm::resultsShown);
    tests::click(*scene.form, "scanAgainButton");
    QVERIFY(results.wait());
    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(2);
    QCOMPARE(types.index(0, 2).data().toString(), u"125.00 MB"_s);
    QCOMPARE(loadRecentFolders().size(), 1);
}

void DiskUsageResultsTest::aFolderScannedAgainCorrectsWhatIsNotCounted()
{
    diskusage::saveExcludedFolders({{true, u"C:\\r\\a\\one\\x"_s}});
    Scene scene;
    scene.disk.addFolder(u"C:\\r\\a\\one\\x"_s);
    scene.disk.addFolder(u"C:\\r\\a\\one more"_s); // a name that begins the same
    scene.disk.setUnreadable(u"C:\\r\\a\\one more"_s);
    QVERIFY(scene.scan(u"C:\\r"_s));
    auto *table = scene.find<QTableView>("notCountedTableView");
    QCOMPARE(column(*table->model(), 0), QStringList({u"C:\\r\\a\\one more"_s, u"C:\\r\\a\\one\\x"_s,
                                                      u"C:\\r\\locked"_s, u"C:\\r\\loop"_s}));
    table->model()->sort(0, Qt::DescendingOrder);

    diskusage::saveExcludedFolders({});
    for (const char *name : {"new", "newer"}) {
        const QString path = u"C:\\r\\a\\one\\%1"_s.arg(QLatin1String(name));
        scene.disk.addFolder(path);
        scene.disk.setUnreadable(path);
    }
    scene.select({u"a"_s, u"one"_s});
    QTest::keyClick(scene.tree(), Qt::Key_F5);
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(column(*table->model(), 0),
             QStringList({u"C:\\r\\loop"_s, u"C:\\r\\locked"_s, u"C:\\r\\a\\one\\newer"_s,
                          u"C:\\r\\a\\one\\new"_s, u"C:\\r\\a\\one more"_s}));
    QCOMPARE(scene.find<QTabWidget>("resultTabWidget")->tabText(3), u"Not Counted (5)"_s);
}

void DiskUsageResultsTest::longPathsDoNotWidenTheWindow()
{
    Scene scene;
    const QString name(250, QLatin1Char('w'));
    QString path = u"C:"_s;
    for (int i = 0; i < 12; ++i)
        path += QLatin1Char('\\') + name;
    scene.disk.addFile(path + u"\\f.txt"_s, 1);
    QVERIFY(scene.scan(path.section(QLatin1Char('\\'), 0, -2)));
    scene.select({name});
    QTest::keyClick(scene.tree(), Qt::Key_F5); // and its name is one of the choices of the biggest files
    QTRY_VERIFY(!scene.form->isBusy());
    auto *choice = scene.find<QComboBox>("biggestFilesComboBox");
    QCOMPARE(choice->count(), 2);
    QEvent change(QEvent::StyleChange); // until one comes, the list keeps the width that it had when empty
    QCoreApplication::sendEvent(choice, &change);
    auto *page = scene.form->findChild<DiskUsageResultsForm *>();
    page->setBusy(true, u"Scanning %1 again ..."_s.arg(path));
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
    folder.makeFolder(u"there"_s);
    for (const char *name : {"there", "gone"})
        scene.disk.addFolder(folder.path(QLatin1String(name)));
    QVERIFY(scene.scan(folder.path()));
    const auto reveal = [&scene](const QString &name) {
        scene.select({name});
        QTest::keyClick(scene.tree(), Qt::Key_E, Qt::ControlModifier);
    };
    reveal(u"there"_s);
    QTRY_COMPARE(shell.revealed, QStringList({folder.path(u"there"_s)}));
    reveal(u"gone"_s);
    QTRY_VERIFY(scene.notice().contains(folder.path(u"gone"_s)));
    QCOMPARE(shell.revealed.size(), 1);
    for (int i = 0; i < 4; ++i) // an impatient user, whose disk wakes up: the last wish counts
        reveal(u"there"_s);
    QTRY_VERIFY(shell.revealed.size() > 1);
    core::waitForRetiredWorkers();
    QTest::qWait(100);
    QCOMPARE(shell.revealed.size(), 2);

    QVERIFY(scene.scan(u"C:\\r"_s));
    QTreeView *tree = scene.tree();
    scene.select({u"a"_s});
    QTest::keyClick(tree, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"C:\\r\\a"_s);
    emit tree->customContextMenuRequested(tree->visualRect(tree->currentIndex()).center());
    auto *menu = tree->findChild<QMenu *>(u"pathMenu"_s);
    QVERIFY(menu && menu->isVisible());
    QStringList entries;
    for (const QAction *action : menu->actions())
        if (!action->isSeparator())
            entries.append(action->text());
    QCOMPARE(entries.join(QLatin1Char(',')),
             u"Open,Show in Explorer,Copy Path,Scan This Folder Again,Export as CSV..."_s);
    menu->close();

    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(1);
    auto *biggest = scene.find<QTableView>("biggestFilesTableView");
    biggest->setCurrentIndex(biggest->model()->index(1, 0));
    QTest::keyClick(biggest, Qt::Key_Return);
    QCOMPARE(shell.opened, QStringList({u"C:\\r\\c\\three.zip"_s}));
    shell.succeeds = false;
    QTest::keyClick(biggest, Qt::Key_O, Qt::ControlModifier);
    QVERIFY(scene.notice().contains(u"C:\\r\\c\\three.zip"_s));
    QTest::keyClick(biggest, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"C:\\r\\c\\three.zip"_s);
    QTest::keyClick(biggest, Qt::Key_C, Qt::ControlModifier);
    QVERIFY(QGuiApplication::clipboard()->text().startsWith(u"three.zip\t10.00 MB\t"_s));
}

void DiskUsageResultsTest::tablesKeepTheirColumns()
{
    const settings::Text stored = diskusage::biggestFilesColumns;
    {
        Scene scene;
        QVERIFY(scene.scan(u"C:\\r"_s));
        scene.find<QTableView>("biggestFilesTableView")->setColumnWidth(diskusage::FileName, 123);
        QTRY_VERIFY(stored.read().startsWith(u"0:123 "_s));
    }
    Scene scene;
    QVERIFY(scene.scan(u"C:\\r"_s));
    auto *table = scene.find<QTableView>("biggestFilesTableView");
    QCOMPARE(table->columnWidth(diskusage::FileName), 123);
    QVERIFY(scene.scan(u"C:\\r\\a"_s)); // another model
    QCOMPARE(table->columnWidth(diskusage::FileName), 123);
}

void DiskUsageResultsTest::tablesAreExported()
{
    const TestFolder folder;
    const QString file = folder.path(u"table.csv"_s);
    FakeDialogs dialogs;
    Scene scene;
    scene.disk.addFile(u"C:\\r\\c\\=1+1.zip"_s, 0);
    QVERIFY(scene.scan(u"C:\\r"_s));
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
    QVERIFY(scene.notice().contains(u"6 rows"_s));

    // A list of files, in the order in which it is shown.
    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(2);
    auto *types = scene.find<QTreeView>("fileTypesTreeView");
    types->setCurrentIndex(types->model()->index(1, 0));
    dialogs.nextFileToSave.enqueue(file);
    tests::click(*scene.form, "exportButton");
    QTRY_VERIFY(!scene.form->isBusy());
    lines = contents(file).split('\n');
    QVERIFY(lines.at(1).startsWith("three.zip,10.00 MB,"));
    QVERIFY(lines.at(2).startsWith("'=1+1.zip,0.00 KB,"));

    // With the numbers of which the table shows the texts.
    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(1);
    dialogs.nextFileToSave.enqueue(file);
    tests::click(*scene.form, "exportButton");
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(dialogs.fileDialogs.last().text, u"20 biggest Files.csv"_s);
    lines = contents(file).split('\n');
    QVERIFY(lines.at(0).endsWith(",Path,Raw Size\r"));
    QVERIFY(lines.at(1).startsWith("two.mp4,15.00 MB,") && lines.at(1).endsWith(",15728640\r"));
    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(2);

    // The file types.
    types->setFocus();
    dialogs.nextFileToSave.enqueue(file);
    QTest::keyClick(types, Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(dialogs.fileDialogs.last().text, u"File Types.csv"_s);
    lines = contents(file).split('\n');
    QCOMPARE(lines.size(), 15); // the titles, thirteen types, and what follows the last line's end
    QCOMPARE(lines.at(0), QByteArray("\xEF\xBB\xBF"
                                     "File Type,Percentage,Size,Raw Size,File Count\r"));
    QCOMPARE(lines.at(1), QByteArray("Video Files,50.00,15.00 MB,15728640,1\r"));

    // Cancelled in the dialog: nothing happens.
    dialogs.nextFileToSave.enqueue(QString());
    tests::click(*scene.form, "exportButton");
    QVERIFY(!scene.form->isBusy());
}

void DiskUsageResultsTest::aFolderScanEntersNoLinkToAFolderAbove()
{
    Scene scene;
    scene.disk.addLink(u"C:\\r\\a\\b\\up"_s, u"C:\\r"_s);
    QVERIFY(scene.scan(u"C:\\r"_s));
    const auto total = [&scene] {
        return scene.row({}).siblingAtColumn(FolderModel::SizeText).data().toString();
    };
    const QString before = total();
    scene.select({u"loop"_s}); // itself such a link
    QTest::keyClick(scene.tree(), Qt::Key_F5);
    QVERIFY(!scene.form->isBusy());
    QVERIFY(scene.notice().contains(u"C:\\r\\loop"_s));
    scene.select({u"a"_s}); // has one somewhere below
    QTest::keyClick(scene.tree(), Qt::Key_F5);
    QVERIFY(scene.form->isBusy());
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(total(), before);
    QCOMPARE(scene.find<QTabWidget>("resultTabWidget")->tabText(3), u"Not Counted (3)"_s);
}

// In the window as it first opens, and where the indentation alone is wider than the tree.
void DiskUsageResultsTest::namesKeepTheirRoomInDeepFolders()
{
    constexpr int levels = 60;
    Scene scene;
    scene.form->resize(886, 513);
    QString path = u"C:\\deep"_s;
    for (int level = 0; level < levels; ++level)
        path += u"\\node_modules"_s;
    scene.disk.addFile(path + u"\\f"_s, megabyte);
    QVERIFY(scene.scan(u"C:\\deep"_s));
    QTreeView *tree = scene.tree();
    const int icon = tree->style()->pixelMetric(QStyle::PM_SmallIconSize);
    const int name = icon + tree->fontMetrics().horizontalAdvance(u"node_modules"_s);
    const auto nameIsSeen = [tree, name] {
        const QRect cell = tree->visualRect(tree->currentIndex().siblingAtColumn(0));
        const QRect seen = cell & tree->viewport()->rect();
        return seen.left() == cell.left() && seen.width() >= name;
    };
    for (int level = 0; level < levels; ++level) {
        QTest::keyClick(tree, Qt::Key_Right); // opens
        QTest::keyClick(tree, Qt::Key_Down);
        QVERIFY2(nameIsSeen(), qPrintable(QString::number(level)));
    }
    QTest::keyClick(tree, Qt::Key_Backspace);
    QVERIFY(nameIsSeen());
}

QTEST_MAIN(DiskUsageResultsTest)
#include "tst_disk_usage_results.moc"
