// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/DiskUsageForm.h"
#include "DiskUsage/DiskUsageStartForm.h"
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/Settings.h"
#include "DiskUsage/UsageGraph.h"
#include "tests/DiskUsage/Scans.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeShell.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"
#include "widgets/FLCardButton.h"
#include "widgets/NoticeBar.h"
#include "widgets/PathBar.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

using diskusage::loadRecentFolders;
using tests::column;
using tests::FakeDialogs;
using tests::FakeShell;
using tests::MemoryEnumerator;
using tests::TestFolder;

namespace
{

constexpr quint64 megabyte = 1 << 20;

void fill(MemoryEnumerator &disk)
{
    disk.addFile(QStringLiteral("C:\\r\\a\\one.txt"), 4 * megabyte);
    disk.addFile(QStringLiteral("C:\\r\\a\\b\\two.mp4"), 15 * megabyte);
    disk.addFile(QStringLiteral("C:\\r\\c\\three.zip"), 10 * megabyte);
    disk.addFile(QStringLiteral("C:\\r\\four.bin"), megabyte);
    disk.addFolder(QStringLiteral("C:\\r\\locked"));
    disk.setUnreadable(QStringLiteral("C:\\r\\locked"));
    disk.addLink(QStringLiteral("C:\\r\\loop"), QStringLiteral("C:\\r"));
}

struct Scene {
    explicit Scene(DiskUsageForm *made) : form(made) { open(); }
    Scene() : form(new DiskUsageForm(tests::lending(disk), tests::noDrive))
    {
        fill(disk);
        open();
    }

    bool scan(const QString &folder)
    {
        QSignalSpy results(form.get(), &DiskUsageForm::resultsShown);
        form->scan(folder);
        return results.count() > 0 || results.wait();
    }
    bool goBack()
    {
        QSignalSpy start(form.get(), &DiskUsageForm::startPageShown);
        tree()->setFocus();
        QTest::keyClick(tree(), Qt::Key_Left, Qt::AltModifier);
        return start.count() > 0 || start.wait();
    }
    template <class Widget>
    Widget *find(const char *name) const
    {
        auto *widget = form->findChild<Widget *>(QLatin1String(name));
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }
    QTreeView *tree() const { return find<QTreeView>("folderTreeView"); }
    // A row of the tree as it is shown.
    QModelIndex row(const QStringList &names) const
    {
        QModelIndex index = tree()->model()->index(0, 0);
        for (const QString &name : names) {
            const qsizetype position = column(*tree()->model(), 0, index).indexOf(name);
            index = position < 0 ? QModelIndex() : tree()->model()->index(int(position), 0, index);
        }
        return index;
    }
    void select(const QStringList &names) const
    {
        tree()->setFocus();
        tree()->setCurrentIndex(row(names));
    }
    QString notice() const { return find<NoticeBar>("noticeBar")->text(); }

    MemoryEnumerator disk;
    std::unique_ptr<DiskUsageForm> form;

private:
    // Keys reach an active window only.
    void open() const
    {
        form->resize(1000, 600);
        form->show();
        form->activateWindow();
        if (!QTest::qWaitForWindowActive(form.get()))
            qFatal("the window does not become active");
    }
};

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(unreadable)");
}

} // namespace

class DiskUsageFormTest : public QObject
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

    void aRealFolderIsMeasured();
    void theTreeOpensAsItShould();
    void whatIsNotCountedIsListed();
    void theBiggestFilesAndFileTypesAreShown();
    void theGraphLeadsThroughTheFolders();
    void aFolderScannedAgainLeavesTheFileTypesAlone();
    void everythingIsScannedAgain();
    void keysAndMenuActOnTheSelection();
    void aTableIsExported();
    void foldersAreChosenAndRemembered();
    void aFolderIsDropped();
    void theTabKeyFollowsThePage();
    void everyControlHasAName();
    void aMissingFolderIsNoError();
    void aDeepChainIsShownAndFreed();
    void aSleepingDriveBlocksNothing();

private:
    std::unique_ptr<tests::RegistryGuard> m_guard;
};

void DiskUsageFormTest::aRealFolderIsMeasured()
{
    TestFolder folder;
    folder.makeLargeFile(QStringLiteral("big\\huge.iso"), quint64(5) << 30);
    folder.makeFile(QStringLiteral("x;y.txt"), QByteArray(300, 'x'));
    folder.makeFile(QStringLiteral("big\\deep\\\U0001F600.pdf"), QByteArray(2000, 'x'));
    folder.makeFolder(QStringLiteral("empty"));
    folder.makeLink(QStringLiteral("big\\deep\\up"), QStringLiteral("big"));
    Scene scene(new DiskUsageForm);
    QVERIFY(scene.scan(folder.path() + QLatin1Char('\\')));
    const FolderModel &model = scene.form->folderModel();
    const QModelIndex root = model.index(0, 0);
    const auto raw = [&model, &root](int section) {
        return model.data(root.siblingAtColumn(section), Qt::EditRole);
    };
    QCOMPARE(raw(FolderModel::Name).toString(), QFileInfo(folder.path()).fileName());
    QCOMPARE(raw(FolderModel::Path).toString(), folder.path());
    QCOMPARE(raw(FolderModel::Size).toULongLong(), (quint64(5) << 30) + 2300);
    QCOMPARE(raw(FolderModel::SizeText).toString(), QStringLiteral("5.00 GB"));
    QCOMPARE(raw(FolderModel::FileCount).toInt(), 3);
    QCOMPARE(raw(FolderModel::FolderCount).toInt(), 4); // big, deep, up, empty
    QVERIFY(raw(FolderModel::MaxData).toString().endsWith(QStringLiteral("x;y.txt:300:0;empty:0:1;")));
    QCOMPARE(loadRecentFolders(), QStringList({folder.path()}));
}

void DiskUsageFormTest::theTreeOpensAsItShould()
{
    Scene scene;
    QVERIFY(scene.scan(QStringLiteral("C:/r")));
    QTreeView *tree = scene.tree();
    QVERIFY(tree->isVisible());
    QVERIFY(tree->isExpanded(scene.row({})));
    QCOMPARE(tree->currentIndex().siblingAtColumn(0), scene.row({}));
    QStringList shown;
    for (int position = 0; position < tree->header()->count(); ++position) {
        const int section = tree->header()->logicalIndex(position);
        if (!tree->isColumnHidden(section))
            shown.append(tree->model()->headerData(section, Qt::Horizontal).toString());
    }
    QCOMPARE(shown.join(QLatin1Char(',')), QStringLiteral("Name,Percentage,Size,File Count,Folder Count"));
    QVERIFY(tree->isColumnHidden(FolderModel::Size));
    // The largest first; a click on the header turns it round.
    QCOMPARE(column(*tree->model(), 0, scene.row({})).first(), QStringLiteral("a"));
    const int x = tree->header()->sectionViewportPosition(FolderModel::SizeText) + 10;
    QTest::mouseClick(tree->header()->viewport(), Qt::LeftButton, {}, QPoint(x, 5));
    QCOMPARE(column(*tree->model(), 0, scene.row({})).last(), QStringLiteral("a"));
    const QVariant alignment =
        scene.row({}).siblingAtColumn(FolderModel::SizeText).data(Qt::TextAlignmentRole);
    QVERIFY((alignment.toInt() & Qt::AlignRight) != 0);
}

void DiskUsageFormTest::whatIsNotCountedIsListed()
{
    diskusage::saveExcludedFolders({{true, QStringLiteral("C:\\r\\c")}});
    Scene scene;
    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    auto *tabs = scene.find<QTabWidget>("resultTabWidget");
    QVERIFY(tabs->isTabVisible(3));
    QCOMPARE(tabs->tabText(3), QStringLiteral("Not Counted (3)"));
    const QAbstractItemModel &model = *scene.find<QTableView>("notCountedTableView")->model();
    QCOMPARE(column(model, 0), QStringList({QStringLiteral("C:\\r\\c"), QStringLiteral("C:\\r\\locked"),
                                            QStringLiteral("C:\\r\\loop")}));
    const QStringList reasons = column(model, 1);
    QCOMPARE(QSet<QString>(reasons.begin(), reasons.end()).size(), 3);
    QCOMPARE(scene.form->folderModel().index(0, FolderModel::FolderCount).data(Qt::EditRole).toInt(), 4);
    // With nothing left out there is no such page.
    QVERIFY(scene.scan(QStringLiteral("C:\\r\\a")));
    QVERIFY(!tabs->isTabVisible(3));
}

void DiskUsageFormTest::theBiggestFilesAndFileTypesAreShown()
{
    Scene scene;
    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    auto *tabs = scene.find<QTabWidget>("resultTabWidget");
    tabs->setCurrentIndex(1);
    QCOMPARE(tabs->tabText(1), QStringLiteral("20 biggest Files"));
    auto *biggest = scene.find<QTableView>("biggestFilesTableView");
    QVERIFY(biggest->isVisible());
    QCOMPARE(column(*biggest->model(), diskusage::FileName),
             QStringList({QStringLiteral("two.mp4"), QStringLiteral("three.zip"), QStringLiteral("one.txt"),
                          QStringLiteral("four.bin")}));
    QVERIFY(biggest->isColumnHidden(diskusage::FileRawSize));

    tabs->setCurrentIndex(2);
    const QAbstractItemModel &types = *scene.find<QTreeView>("fileTypesTreeView")->model();
    QCOMPARE(types.rowCount(), 13);
    QCOMPARE(column(types, 0).mid(0, 4),
             QStringList({QStringLiteral("Video Files"), QStringLiteral("Compressed Files"),
                          QStringLiteral("Document Files"), QStringLiteral("Other file types")}));
    QCOMPARE(types.index(0, 1).data().toDouble(), 50.0);
    QCOMPARE(types.index(0, 2).data().toString(), QStringLiteral("15.00 MB"));
    QCOMPARE(types.index(0, 3).data().toInt(), 1);
    auto *files = scene.find<QTableView>("dataFilesTableView");
    QCOMPARE(column(*files->model(), diskusage::FileName), QStringList({QStringLiteral("two.mp4")}));
    scene.find<QTreeView>("fileTypesTreeView")->setCurrentIndex(types.index(3, 0));
    QCOMPARE(column(*files->model(), diskusage::FileName), QStringList({QStringLiteral("four.bin")}));
    // A type without files says so instead of an empty list.
    scene.find<QTreeView>("fileTypesTreeView")->setCurrentIndex(types.index(12, 0));
    QVERIFY(!files->isVisible());
}

void DiskUsageFormTest::theGraphLeadsThroughTheFolders()
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

void DiskUsageFormTest::aFolderScannedAgainLeavesTheFileTypesAlone()
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
    QCOMPARE(scene.row({QStringLiteral("a"), QStringLiteral("b")})
                 .siblingAtColumn(FolderModel::FileCount)
                 .data()
                 .toInt(),
             2);
    QVERIFY(scene.notice().contains(QStringLiteral("100.00 MB more")));
    QCOMPARE(column(types, 2) + column(types, 3), before);
    // Its own biggest files can be chosen beside those of the scan.
    auto *choice = scene.find<QComboBox>("biggestFilesComboBox");
    QCOMPARE(choice->count(), 2);
    QCOMPARE(choice->itemText(1), QStringLiteral("a (20 Biggest Files)"));
    choice->setCurrentIndex(1);
    QCOMPARE(column(*scene.find<QTableView>("biggestFilesTableView")->model(), 0).first(),
             QStringLiteral("new.mp4"));
}

void DiskUsageFormTest::everythingIsScannedAgain()
{
    Scene scene;
    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    scene.disk.addFile(QStringLiteral("C:\\r\\new.mp4"), 100 * megabyte);
    QSignalSpy results(scene.form.get(), &DiskUsageForm::resultsShown);
    QTest::mouseClick(scene.find<QPushButton>("scanAgainButton"), Qt::LeftButton);
    QVERIFY(results.wait());
    QCOMPARE(scene.row({}).siblingAtColumn(FolderModel::SizeText).data().toString(),
             QStringLiteral("130.00 MB"));
    // F5 on the root is the same thing.
    QTest::keyClick(scene.tree(), Qt::Key_F5);
    QVERIFY(results.wait());
    QCOMPARE(loadRecentFolders().size(), 1);
}

void DiskUsageFormTest::keysAndMenuActOnTheSelection()
{
    FakeShell shell;
    Scene scene;
    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    QTreeView *tree = scene.tree();
    scene.select({QStringLiteral("a")});
    QTest::keyClick(tree, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("C:\\r\\a"));
    QTest::keyClick(tree, Qt::Key_E, Qt::ControlModifier);
    QCOMPARE(shell.revealed, QStringList({QStringLiteral("C:\\r\\a")}));
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

void DiskUsageFormTest::aTableIsExported()
{
    const TestFolder folder;
    FakeDialogs dialogs;
    Scene scene;
    scene.disk.addFile(QStringLiteral("C:\\r\\c\\=1+1.zip"), 0);
    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    const QString file = folder.path(QStringLiteral("folders.csv"));
    dialogs.nextFileToSave.enqueue(file);
    QTest::keyClick(scene.tree(), Qt::Key_S, Qt::ControlModifier);
    QTRY_VERIFY(!scene.form->isBusy());
    const QList<QByteArray> lines = contents(file).split('\n');
    QCOMPARE(lines.at(0),
             QByteArray("\xEF\xBB\xBFPath,Name,Size,Raw Size,Percentage,File Count,Folder Count\r"));
    QCOMPARE(lines.at(1), QByteArray("C:\\r,r,30.00 MB,31457280,100.00,5,5\r"));
    // Folders that are not open in the tree are in the file as well, below their parents.
    QCOMPARE(lines.at(2), QByteArray("C:\\r\\a,a,19.00 MB,19922944,63.33,2,1\r"));
    QCOMPARE(lines.at(3), QByteArray("C:\\r\\a\\b,b,15.00 MB,15728640,78.95,1,0\r"));
    QVERIFY(scene.notice().contains(QStringLiteral("6 rows")));

    // A list of files, in the order in which it is shown.
    scene.find<QTabWidget>("resultTabWidget")->setCurrentIndex(2);
    const QAbstractItemModel &types = *scene.find<QTreeView>("fileTypesTreeView")->model();
    scene.find<QTreeView>("fileTypesTreeView")->setCurrentIndex(types.index(1, 0));
    dialogs.nextFileToSave.enqueue(file);
    QTest::mouseClick(scene.find<QPushButton>("exportButton"), Qt::LeftButton);
    QTRY_VERIFY(!scene.form->isBusy());
    const QByteArray text = contents(file);
    QVERIFY(text.contains("\r\nthree.zip,10.00 MB,"));
    QVERIFY(text.contains("\r\n'=1+1.zip,0.00 KB,"));
    QVERIFY(text.indexOf("three.zip") < text.indexOf("=1+1"));
    // Cancelled in the dialog: nothing happens.
    dialogs.nextFileToSave.enqueue(QString());
    QTest::mouseClick(scene.find<QPushButton>("exportButton"), Qt::LeftButton);
    QVERIFY(!scene.form->isBusy());
}

void DiskUsageFormTest::foldersAreChosenAndRemembered()
{
    FakeDialogs dialogs;
    Scene scene;
    QSignalSpy results(scene.form.get(), &DiskUsageForm::resultsShown);
    dialogs.nextFolder.enqueue(QStringLiteral("C:\\r\\a"));
    QTest::mouseClick(scene.find<QPushButton>("selectFolderButton"), Qt::LeftButton);
    QVERIFY(results.wait());
    QCOMPARE(dialogs.fileDialogs.first().title, QStringLiteral("Select folder to scan"));
    QVERIFY(scene.goBack());
    for (const char *folder : {"C:\\r\\c\\", "c:\\R\\A"}) {
        QVERIFY(scene.scan(QLatin1String(folder)));
        QVERIFY(scene.goBack());
    }
    QCOMPARE(loadRecentFolders(), QStringList({QStringLiteral("c:\\R\\A"), QStringLiteral("C:\\r\\c")}));
    // Also when the form is made anew, and a click scans.
    Scene next(new DiskUsageForm(tests::lending(scene.disk), tests::noDrive));
    const auto cards = next.form->findChildren<FLCardButton *>(QStringLiteral("recentFolderCard"));
    QCOMPARE(cards.size(), 2);
    QCOMPARE(cards.at(1)->caption(), QStringLiteral("C:\\r\\c"));
    QSignalSpy nextResults(next.form.get(), &DiskUsageForm::resultsShown);
    QTest::mouseClick(cards.at(1), Qt::LeftButton);
    QVERIFY(nextResults.wait());
    QCOMPARE(next.row({}).data().toString(), QStringLiteral("c"));
    QCOMPARE(loadRecentFolders().first(), QStringLiteral("C:\\r\\c"));
}

void DiskUsageFormTest::aFolderIsDropped()
{
    TestFolder folder;
    folder.makeFile(QStringLiteral("file.txt"), QByteArray(10, 'x'));
    Scene scene(new DiskUsageForm);
    auto *start = scene.form->findChild<DiskUsageStartForm *>();
    const auto drop = [start](const QString &path) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QApplication::sendEvent(start, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(start, &event);
        return true;
    };
    QVERIFY(!drop(folder.path(QStringLiteral("file.txt")))); // a file is no folder
    QVERIFY(!scene.form->isBusy());
    QSignalSpy results(scene.form.get(), &DiskUsageForm::resultsShown);
    QVERIFY(drop(folder.path() + QLatin1Char('/')));
    QVERIFY(results.wait());
    QCOMPARE(scene.row({}).data().toString(), QFileInfo(folder.path()).fileName());
}

void DiskUsageFormTest::theTabKeyFollowsThePage()
{
    diskusage::saveRecentFolders({QStringLiteral("C:\\r"), QStringLiteral("C:\\s")});
    const auto ready = [](const QString &root) {
        platform::Drive drive = tests::noDrive(root);
        drive.ready = true;
        return drive;
    };
    MemoryEnumerator disk;
    Scene scene(new DiskUsageForm(tests::lending(disk), ready));
    QTRY_VERIFY(scene.find<FLCardButton>("driveCardC")->text().contains(QStringLiteral("(C:)")));
    auto *first = scene.find<QPushButton>("selectFolderButton");
    first->setFocus();
    QStringList visited;
    int lastTop = 0;
    for (int i = 0; i < 30; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        const QWidget *now = QApplication::focusWidget();
        if (now == first)
            break;
        visited.append(now->objectName());
        const int top = now->mapTo(scene.form.get(), QPoint(0, now->height())).y();
        QVERIFY2(top >= lastTop, qPrintable(visited.join(QLatin1Char(' '))));
        lastTop = top;
    }
    QVERIFY(visited.contains(QStringLiteral("driveCardC")));
    QCOMPARE(visited.count(QStringLiteral("recentFolderCard")), 2);
}

void DiskUsageFormTest::everyControlHasAName()
{
    Scene scene;
    QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    for (const QWidget *widget : scene.form->findChildren<QWidget *>()) {
        if (widget->focusPolicy() == Qt::NoFocus || widget->focusProxy() ||
            widget->objectName().startsWith(QStringLiteral("qt_")))
            continue;
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        const bool named = !widget->accessibleName().isEmpty() || (button && !button->text().isEmpty());
        const bool container = qobject_cast<const QTabWidget *>(widget) || widget->inherits("QTabBar") ||
                               widget->inherits("ClickableLabel") || widget->inherits("QScrollBar") ||
                               widget->inherits("QHeaderView") || widget->inherits("QComboBoxListView") ||
                               widget->inherits("QComboBoxPrivateContainer");
        QVERIFY2(named || container, qPrintable(QLatin1String(widget->metaObject()->className()) +
                                                QLatin1Char(' ') + widget->objectName()));
    }
}

void DiskUsageFormTest::aMissingFolderIsNoError()
{
    FakeDialogs dialogs; // any box would fail the test
    Scene scene;
    QVERIFY(scene.scan(QStringLiteral("C:\\gone")));
    QCOMPARE(scene.row({}).siblingAtColumn(FolderModel::SizeText).data().toString(),
             QStringLiteral("0.00 KB"));
    QVERIFY(scene.find<UsageGraph>("usageGraph")->boxes().empty());
    QCOMPARE(scene.find<QTabWidget>("resultTabWidget")->tabText(3), QStringLiteral("Not Counted (1)"));
    QVERIFY(scene.goBack());
}

void DiskUsageFormTest::aDeepChainIsShownAndFreed()
{
    Scene scene;
    QString path = QStringLiteral("C:\\deep");
    for (int level = 0; level < 3000; ++level)
        path += QStringLiteral("\\n");
    scene.disk.addFile(path + QStringLiteral("\\x"), megabyte);
    QVERIFY(scene.scan(QStringLiteral("C:\\deep")));
    QCOMPARE(scene.row({}).siblingAtColumn(FolderModel::FolderCount).data().toInt(), 3000);
    // Twenty levels down, as a person would go.
    for (int level = 0; level < 20; ++level)
        QTest::keyClick(scene.tree(), Qt::Key_Right);
    QTRY_VERIFY(scene.find<PathBar>("pathBar")->path().size() > 5);
    QVERIFY(scene.goBack());
}

void DiskUsageFormTest::aSleepingDriveBlocksNothing()
{
    MemoryEnumerator disk;
    fill(disk);
    const auto slowDrive = [](const QString &root) {
        QThread::sleep(3);
        return tests::noDrive(root);
    };
    QElapsedTimer clock;
    clock.start();
    {
        Scene scene(new DiskUsageForm(tests::lending(disk), slowDrive));
        QVERIFY(QTest::qWaitForWindowExposed(scene.form.get()));
        QTRY_COMPARE(scene.find<FLCardButton>("driveCardC")->caption(), QStringLiteral("Reading ..."));
        QVERIFY(scene.scan(QStringLiteral("C:\\r")));
    }
    QVERIFY2(clock.elapsed() < 2500, qPrintable(QString::number(clock.elapsed())));
}

QTEST_MAIN(DiskUsageFormTest)
#include "tst_disk_usage_form.moc"
