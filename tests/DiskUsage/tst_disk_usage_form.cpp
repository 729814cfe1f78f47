// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageStartForm.h"
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/Settings.h"
#include "DiskUsage/UsageGraph.h"
#include "tests/DiskUsage/Scene.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"
#include "widgets/FLCardButton.h"
#include "widgets/PathBar.h"

#include <QApplication>
#include <QCheckBox>
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QSemaphore>
#include <QTabWidget>
#include <QToolButton>

#include <memory>

using namespace Qt::StringLiterals;
using diskusage::loadRecentFolders;
using tests::FakeDialogs;
using tests::megabyte;
using tests::MemoryEnumerator;
using tests::Scene;
using tests::TestFolder;

class DiskUsageFormTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(u"Fusion"_s); }

    void aRealFolderIsMeasured();
    void foldersAreChosenAndRemembered();
    void aFolderIsDropped();
    void unsavedOptionsAskBeforeTheFormIsLeft();
    void theTabKeyFollowsThePage();
    void everyControlHasAName();
    void aMissingFolderIsNoError();
    void aDeepChainIsShownAndFreed();
    void aSleepingDriveBlocksNothing();
    void noticesAreSeenWhereTheyBelong();
    void aRestoredWindowKeepsTheFocus();
};

void DiskUsageFormTest::aRealFolderIsMeasured()
{
    TestFolder folder;
    folder.makeLargeFile(u"big\\huge.iso"_s, quint64(5) << 30);
    folder.makeFile(u"x;y.txt"_s, QByteArray(300, 'x'));
    folder.makeFile(u"big\\deep\\\U0001F600.pdf"_s, QByteArray(2000, 'x'));
    folder.makeFolder(u"empty"_s);
    folder.makeLink(u"big\\deep\\up"_s, u"big"_s);
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
    QCOMPARE(raw(FolderModel::SizeText).toString(), u"5.00 GB"_s);
    QCOMPARE(raw(FolderModel::FileCount).toInt(), 3);
    QCOMPARE(raw(FolderModel::FolderCount).toInt(), 4); // big, deep, up, empty
    QVERIFY(raw(FolderModel::MaxData).toString().endsWith(u"x;y.txt:300:0;empty:0:1;"_s));
    QCOMPARE(loadRecentFolders(), QStringList({folder.path()}));
}

void DiskUsageFormTest::foldersAreChosenAndRemembered()
{
    FakeDialogs dialogs;
    Scene scene;
    QSignalSpy results(scene.form.get(), &DiskUsageForm::resultsShown);
    dialogs.nextFolder.enqueue(u"C:\\r\\a"_s);
    tests::click(*scene.form, "selectFolderButton");
    QVERIFY(results.wait());
    QCOMPARE(dialogs.fileDialogs.first().title, u"Select folder to scan"_s);
    QVERIFY(scene.goBack());
    QVERIFY(scene.scan(u"C:\\r\\c\\"_s));
    QCOMPARE(loadRecentFolders(), QStringList({u"C:\\r\\c"_s, u"C:\\r\\a"_s}));
    // Also when the form is made anew, and a click scans.
    Scene next(new DiskUsageForm(tests::lending(scene.disk), tests::noDrive));
    const auto cards = next.form->findChildren<FLCardButton *>(u"recentCard"_s);
    QCOMPARE(cards.size(), 2);
    QSignalSpy nextResults(next.form.get(), &DiskUsageForm::resultsShown);
    QTest::mouseClick(cards.at(1), Qt::LeftButton);
    QVERIFY(nextResults.wait());
    QCOMPARE(next.row({}).data().toString(), u"a"_s);
}

void DiskUsageFormTest::aFolderIsDropped()
{
    TestFolder folder;
    folder.makeFile(u"file.txt"_s, QByteArray(10, 'x'));
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
    QVERIFY(!drop(folder.path(u"file.txt"_s))); // a file is no folder
    QVERIFY(!scene.form->isBusy());
    QSignalSpy results(scene.form.get(), &DiskUsageForm::resultsShown);
    QVERIFY(drop(folder.path() + QLatin1Char('/')));
    QVERIFY(results.wait());
    QCOMPARE(scene.row({}).data().toString(), QFileInfo(folder.path()).fileName());
}

void DiskUsageFormTest::unsavedOptionsAskBeforeTheFormIsLeft()
{
    FakeDialogs dialogs;
    Scene scene;
    QVERIFY(scene.form->mayLeave());
    tests::click(*scene.form, "optionsButton");
    auto *oneDrive = scene.find<QCheckBox>("excludeOneDrivecheckBox");
    QVERIFY(scene.form->mayLeave()); // nothing was edited
    oneDrive->setChecked(true);
    dialogs.nextAnswer.enqueue(QMessageBox::Cancel);
    QVERIFY(!scene.form->mayLeave());
    QVERIFY(!diskusage::excludeOneDriveFolder.read());
    dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    QVERIFY(scene.form->mayLeave());
    QVERIFY(diskusage::excludeOneDriveFolder.read());
    QVERIFY(scene.form->mayLeave());
    QCOMPARE(dialogs.questions.size(), 2);
}

void DiskUsageFormTest::theTabKeyFollowsThePage()
{
    diskusage::saveRecentFolders({u"C:\\r"_s, u"C:\\s"_s});
    const auto ready = [](const QString &root) {
        platform::Drive drive = tests::noDrive(root);
        drive.ready = true;
        return drive;
    };
    MemoryEnumerator disk;
    Scene scene(new DiskUsageForm(tests::lending(disk), ready));
    QTRY_VERIFY(scene.find<FLCardButton>("driveCardC")->text().contains(u"(C:)"_s));
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
    QVERIFY(visited.contains(u"driveCardC"_s));
    QCOMPARE(visited.count(u"recentCard"_s), 2);
}

void DiskUsageFormTest::everyControlHasAName()
{
    Scene scene;
    QVERIFY(scene.scan(u"C:\\r"_s));
    for (const QWidget *widget : scene.form->findChildren<QWidget *>()) {
        // What is hidden itself gets its text when it is shown.
        if (widget->focusPolicy() == Qt::NoFocus || widget->focusProxy() || widget->isHidden() ||
            widget->objectName().startsWith(u"qt_"_s))
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
    QVERIFY(scene.scan(u"C:\\gone"_s));
    QCOMPARE(scene.row({}).siblingAtColumn(FolderModel::SizeText).data().toString(), u"0.00 KB"_s);
    QVERIFY(scene.find<UsageGraph>("usageGraph")->boxes().empty());
    QCOMPARE(scene.find<QTabWidget>("resultTabWidget")->tabText(3), u"Not Counted (1)"_s);
    QVERIFY(scene.goBack());
}

void DiskUsageFormTest::aDeepChainIsShownAndFreed()
{
    Scene scene;
    QString path = u"C:\\deep"_s;
    for (int level = 0; level < 3000; ++level)
        path += u"\\n"_s;
    scene.disk.addFile(path + u"\\x"_s, megabyte);
    QVERIFY(scene.scan(u"C:\\deep"_s));
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
    const auto awake = std::make_shared<QSemaphore>();
    const auto slowDrive = [awake](const QString &root) {
        awake->acquire();
        return tests::noDrive(root);
    };
    {
        Scene scene(new DiskUsageForm(tests::lending(disk), slowDrive));
        QVERIFY(QTest::qWaitForWindowExposed(scene.form.get()));
        QTRY_COMPARE(scene.find<FLCardButton>("driveCardC")->caption(), u"Reading ..."_s);
        QVERIFY(scene.scan(u"C:\\r"_s));
    }
    awake->release(1000); // every drive
}

void DiskUsageFormTest::noticesAreSeenWhereTheyBelong()
{
    Scene scene;
    auto *start = scene.form->findChild<DiskUsageStartForm *>();
    const auto *old = start->findChild<NoticeBar *>();
    start->notice()->showNotice(NoticeBar::Kind::Warning, u"The scan ran out of memory."_s);
    QVERIFY(old->isVisible());
    // What is said of a drop comes after the folder; the scan has begun then.
    QSignalSpy results(scene.form.get(), &DiskUsageForm::resultsShown);
    emit start->folderDropped(u"C:\\r\\a"_s);
    emit start->othersLeftOut(u"Only a"_s);
    QVERIFY(results.wait());
    QVERIFY(scene.find<NoticeBar>("noticeBar")->isVisible());
    QCOMPARE(scene.notice(), u"Only a"_s);
    QVERIFY(scene.goBack());
    QVERIFY(!old->isVisible());
    QVERIFY(scene.scan(u"C:\\r\\c"_s)); // it was about that one result
    QVERIFY(!scene.find<NoticeBar>("noticeBar")->isVisible());
}

void DiskUsageFormTest::aRestoredWindowKeepsTheFocus()
{
    Scene scene;
    auto *options = scene.find<QToolButton>("optionsButton");
    options->setFocus();
    scene.form->showMinimized();
    QTRY_VERIFY(scene.form->isMinimized());
    scene.form->showNormal();
    scene.form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(scene.form.get()));
    QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(options));
}

QTEST_MAIN(DiskUsageFormTest)
#include "tst_disk_usage_form.moc"
