// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateNoResultFoundForm.h"
#include "FindDuplicate/FindDuplicateStartForm.h"
#include "FindDuplicate/FindDuplicateThread.h"
#include "FindDuplicate/ScanInfoForm.h"
#include "platform/Win32Enumerator.h"
#include "settings/Settings.h"
#include "tests/FindDuplicate/Pages.h"
#include "tests/support/FakeDialogs.h"

#include <QDropEvent>
#include <QLabel>
#include <QMetaMethod>
#include <QMimeData>
#include <QPushButton>
#include <QSemaphore>
#include <QStackedLayout>

using namespace Qt::StringLiterals;
using namespace tests;

namespace
{

constexpr QStringView key = u"Software\\Fernlight\\Folder Size Analyzer\\Find Duplicate";

// Stops in the listing of every folder until it is let go.
class HeldEnumerator : public platform::Win32Enumerator
{
public:
    HeldEnumerator(QSemaphore &entered, QSemaphore &go) : m_entered(entered), m_go(go) {}
    void list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &cancel) override
    {
        m_entered.release();
        m_go.acquire();
        Win32Enumerator::list(folder, out, cancel);
    }

private:
    QSemaphore &m_entered;
    QSemaphore &m_go;
};

// A scan that has begun and waits.
struct HeldScan {
    HeldScan() : scene([this] { return std::make_unique<HeldEnumerator>(entered, go); })
    {
        makeDuplicates(folder, {u"a.txt"_s, u"b.txt"_s}, QByteArray(100, 'x'));
        scene.form->scan(folder.path());
        if (!entered.tryAcquire(1, 20'000))
            qFatal("the scan does not begin");
    }
    ~HeldScan() { go.release(1000); }

    TestFolder folder;
    QSemaphore entered;
    QSemaphore go;
    FinderScene scene;
};

QStringList names(const std::vector<duplicates::DuplicateGroup> &groups)
{
    QStringList result;
    for (const duplicates::DuplicateGroup &group : groups) {
        QStringList members;
        for (const duplicates::FileRecord &file : group.members)
            members.append(file.name);
        members.sort(); // a folder's order is the file system's
        result.append(members.join(QLatin1Char(' ')));
    }
    return result;
}

} // namespace

class FindDuplicateFormTest : public QObject
{
    Q_OBJECT

private slots:
    void namesAreTheAgreedOnes();
    void threadDeclaresItsSignalsInOrder();
    void threadTellsWhatItMeets();
    void findsFilesOfOneSizeAndTime();
    void takesTheFirstFolderOfWhatIsDropped();
    void saysWhenThereIsNothing();
    void cancelGoesBackToTheStartAndClosingCloses();
    void theFormMayGoDuringAScan();
};

void FindDuplicateFormTest::namesAreTheAgreedOnes()
{
    FinderScene scene;
    QCOMPARE(scene.find<QPushButton>("selectFolderButton")->text(), u"Select Folder"_s);
    QCOMPARE(scene.find<QLabel>("dropLabel")->text(), u"Drop folders here"_s);
    for (const char *slot :
         {"handleUpdatePath(QString)", "handleUpdateScanProgress()", "handleUpdateTotalSubFolder(int)",
          "handleUpdateTotalItemScan(int)", "onScanFinish()", "handleScanCancel()", "OnBackToMain()",
          "OnResultReady()", "OnNoResult_backToMain()"})
        QVERIFY2(scene.form->metaObject()->indexOfSlot(slot) >= 0, slot);
}

void FindDuplicateFormTest::threadDeclaresItsSignalsInOrder()
{
    QStringList declared;
    const QMetaObject &meta = FindDuplicateThread::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            declared.append(QString::fromLatin1(meta.method(i).methodSignature()));
    QCOMPARE(declared.join(QLatin1Char(' ')),
             u"scanFinish() updateScanProgress() updatePath(QString) updateTotalSubFolder(int) "
             "updateTotalItemScan(int)"_s);
}

void FindDuplicateFormTest::threadTellsWhatItMeets()
{
    TestFolder folder;
    makeDuplicates(folder, {u"a.txt"_s, u"x\\b.txt"_s, u"x\\y\\.c"_s}, QByteArray(100, 'x'));
    folder.makeFolder(u"z"_s);
    FindDuplicateThread thread({folder.path(),
                                {duplicates::categorySelection(core::defaultFileTypes(), {}), 20, 0},
                                std::make_unique<platform::Win32Enumerator>()});
    QSignalSpy total(&thread, &FindDuplicateThread::updateTotalSubFolder);
    QSignalSpy steps(&thread, &FindDuplicateThread::updateScanProgress);
    QSignalSpy paths(&thread, &FindDuplicateThread::updatePath);
    QSignalSpy items(&thread, &FindDuplicateThread::updateTotalItemScan);
    QSignalSpy finished(&thread, &FindDuplicateThread::scanFinish);
    thread.start();
    QVERIFY(finished.wait());
    QCOMPARE(total.first().first().toInt(), 3);
    QCOMPARE(steps.count(), 2);
    QCOMPARE(paths.count(), 3); // for the dot-file too
    QCOMPARE(items.count(), 6);
    QCOMPARE(names(thread.takeResult().groups), QStringList{u"a.txt b.txt"_s});
}

void FindDuplicateFormTest::findsFilesOfOneSizeAndTime()
{
    TestFolder folder;
    makeDuplicates(folder, {u"a.txt"_s, u"x\\b.TXT"_s, u".d\\c.pdf"_s}, QByteArray(100, 'x'));
    makeDuplicates(folder, {u"same.txt"_s}, QByteArray(100, 'x'), otherTime);
    makeDuplicates(folder, {u"other.mp3"_s, u".e.txt"_s}, QByteArray(100, 'x'));
    makeDuplicates(folder, {u"p.mp3"_s, u"q.mp3"_s}, QByteArray(5000, 'p'));
    FinderScene scene;
    QVERIFY(scene.scan(folder.path() + u'\\'));
    QCOMPARE(names(scene.form->groups()), (QStringList{u"p.mp3 q.mp3"_s, u"a.txt b.TXT c.pdf"_s}));
    QCOMPARE(scene.toolbar, (QList<bool>{false, true}));
    QVERIFY(!scene.form->isBusy());
    scene.click("backButton");
    QVERIFY(scene.find<QPushButton>("selectFolderButton")->isVisible());
    // Again, with what has changed on the disk and in the settings meanwhile.
    settings::writeDword(key, u"smallFileSize", 1000);
    FakeDialogs dialogs;
    dialogs.nextFolder.append({QString(), folder.path()});
    scene.click("selectFolderButton");
    QVERIFY(!scene.form->isBusy()); // cancelled
    QSignalSpy shown(scene.form.get(), &FindDuplicateForm::resultsShown);
    scene.click("selectFolderButton");
    QVERIFY(scene.form->isBusy());
    QCOMPARE(scene.find<QLabel>("scanTitleLabel")->text(), u"Searching in progress. Please wait ..."_s);
    QVERIFY(shown.wait());
    QCOMPARE(names(scene.form->groups()), QStringList{u"p.mp3 q.mp3"_s});
}

void FindDuplicateFormTest::takesTheFirstFolderOfWhatIsDropped()
{
    TestFolder folder;
    folder.makeFile(u"x.txt"_s, "text");
    const QString one = folder.makeFolder(u"one"_s);
    const QString two = folder.makeFolder(u"two"_s);
    FinderScene scene;
    auto *page = scene.form->findChild<FindDuplicateStartForm *>();
    QString told; // with the result
    // What is searched then.
    const auto drop = [&](const QStringList &names) {
        QList<QUrl> urls;
        for (const QString &name : names)
            urls.append(QUrl::fromLocalFile(folder.path(name)));
        QMimeData data;
        data.setUrls(urls);
        QSignalSpy chosen(page, &FindDuplicateStartForm::folderChosen);
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(page, &enter);
        QDropEvent letGo({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(page, &letGo);
        const bool agrees = enter.isAccepted() == scene.form->isScanning();
        const bool ended = QTest::qWaitFor([&] { return !scene.form->isBusy(); });
        told.clear();
        if (const auto *nothing = scene.form->findChild<FindDuplicateNoResultFoundForm *>())
            for (const QLabel *label : nothing->findChildren<QLabel *>())
                told += label->text();
        scene.form->OnBackToMain();
        return agrees && ended ? chosen.value(0).value(0).toString() : u"another thing than was announced"_s;
    };
    QCOMPARE(drop({u"x.txt"_s, u"missing"_s}), QString());
    QCOMPARE(drop({u"one"_s}), one);
    QVERIFY(!told.contains(u"Only"_s));
    // What is left out is told.
    QCOMPARE(drop({u"x.txt"_s, u"one"_s}), one);
    QVERIFY(told.contains(u"Only "_s + one));
    QCOMPARE(drop({u"two"_s, u"one"_s}), two);
    QVERIFY(told.contains(u"Only "_s + two));
}

void FindDuplicateFormTest::saysWhenThereIsNothing()
{
    TestFolder folder;
    makeDuplicates(folder, {u"a.txt"_s}, QByteArray(100, 'x'));
    FinderScene scene;
    QSignalSpy nothing(scene.form.get(), &FindDuplicateForm::noResultShown);
    for (const QString &root : {folder.path(), folder.path(u"missing"_s)}) {
        scene.form->scan(root);
        QVERIFY(nothing.wait());
        auto *page = scene.form->findChild<FindDuplicateNoResultFoundForm *>();
        QVERIFY(page->isVisible());
        QCOMPARE(page->findChild<QWidget *>(u"noResultLabel"_s)->accessibleName(),
                 u"No Duplicate Files Found"_s);
        QString texts;
        for (const QLabel *label : page->findChildren<QLabel *>())
            texts += label->text();
        QCOMPARE(texts.contains(u"1 folder could not be read"_s), root != folder.path());
        auto *back = page->findChild<QPushButton *>(u"backButton"_s);
        QCOMPARE(back->text(), u"Back"_s);
        back->click();
        QVERIFY(scene.find<QPushButton>("selectFolderButton")->isVisible());
        QTRY_VERIFY(!scene.form->findChild<FindDuplicateNoResultFoundForm *>());
    }
    QCOMPARE(scene.toolbar, (QList<bool>{false, true, false, true}));
}

void FindDuplicateFormTest::cancelGoesBackToTheStartAndClosingCloses()
{
    for (const bool closing : {false, true}) {
        HeldScan held;
        FindDuplicateForm &form = *held.scene.form;
        QSignalSpy start(&form, &FindDuplicateForm::startPageShown);
        QSignalSpy close(&form, &FLWidget::closeApp);
        QVERIFY(!form.busyText().isEmpty());
        for (int impatience = 0; impatience < 2; ++impatience) {
            if (closing)
                form.requestStop();
            else
                held.scene.click("cancelButton");
        }
        QVERIFY(form.isBusy());
        QCOMPARE(close.count(), 0);
        held.go.release(1000);
        QVERIFY(start.wait());
        QVERIFY(!form.isBusy() && form.busyText().isEmpty());
        QVERIFY(form.groups().empty());
        QTest::qWait(20);
        QCOMPARE(close.count(), closing ? 1 : 0);
        QCOMPARE(held.scene.toolbar, (QList<bool>{false, true}));
    }
}

void FindDuplicateFormTest::theFormMayGoDuringAScan()
{
    HeldScan held;
    held.go.release(1000);
    held.scene.form.reset();
}

QTEST_MAIN(FindDuplicateFormTest)

#include "tst_find_duplicate_form.moc"
