// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/StayedDialog.h"
#include "TrackCleaner/TracesModel.h"
#include "TrackCleaner/TrackCleanerClearThread.h"
#include "TrackCleaner/TrackCleanerDetailDialog.h"
#include "TrackCleaner/TrackCleanerForm.h"
#include "TrackCleaner/WindowsMachine.h"
#include "platform/Handle.h"
#include "platform/Paths.h"
#include "tests/TrackCleaner/engine/MemoryRegistry.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"

#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tests;
using namespace tracks;

namespace
{

const QString explorer = u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer"_s;
const QString recent = u"home\\AppData\\Roaming\\Microsoft\\Windows\\recent"_s;

// A user's home, Windows folder and temporary folder below the test's own folder, and the keys of the
// catalogue in the registry of the test prefix.
class Scene
{
public:
    TestFolder folder;
    WindowsRegistry registry;
    FakeDialogs dialogs;
    std::unique_ptr<TrackCleanerForm> form;

    Scene()
    {
        requireTestPrefix();
        wipe();
        for (const QString &name :
             {recent + u"\\a.lnk"_s, recent + u"\\sub\\below.lnk"_s,
              recent + u"\\AutomaticDestinations\\f01b4d95cf55d32a.automaticDestinations-ms"_s,
              u"windows\\setup.log"_s, u"windows\\db\\000003.log"_s, u"windows\\db\\CURRENT"_s,
              u"windows\\db\\MANIFEST-1"_s, u"windows\\b.log1"_s, u"temp\\new.tmp"_s})
            folder.makeFile(name, "12345");
        folder.makeFile(u"temp\\old.tmp"_s, QByteArray(2048, 'x'));
        folder.setTimes(u"temp\\old.tmp"_s, 132'000'000'000'000'000, 132'000'000'000'000'000);
        registry.createKey(explorer + u"\\RunMRU"_s);
        registry.setValue(explorer + u"\\RunMRU"_s, textValue(u"a"_s, u"cmd\\1"_s));
        registry.setValue(explorer + u"\\RunMRU"_s, textValue(u"MRUList"_s, u"a"_s));
        form = std::make_unique<TrackCleanerForm>([this] { return locations(); }, nullptr);
        form->resize(1000, 760);
        form->show();
    }
    ~Scene()
    {
        form.reset();
        wipe();
    }

    Locations locations() const
    {
        return {folder.path(u"home"_s), folder.path(u"windows"_s), folder.path(u"data"_s),
                folder.path(u"temp"_s), folder.path(u"temp"_s)};
    }
    template <class Widget>
    Widget *find(const QString &name) const
    {
        return form->findChild<Widget *>(name);
    }
    QString label(const QString &stem) const
    {
        return find<QLabel>(u"TrackCleaner"_s + stem + u"Label"_s)->text();
    }
    void uncheckAllBut(const QStringList &stems) const
    {
        for (QCheckBox *box :
             form->findChildren<QCheckBox *>(QRegularExpression(u"^TrackCleaner.*CheckBox$"_s)))
            box->setChecked(stems.contains(box->objectName().sliced(12).chopped(8)));
    }
    void press(const QString &button) const
    {
        QSignalSpy analyzed(form.get(), &TrackCleanerForm::analyzed);
        QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
        QVERIFY(analyzed.count() > 0 || analyzed.wait(20'000));
    }
    TracesModel *open(const QString &stem) const
    {
        QTest::mouseClick(find<QPushButton>(u"TrackCleaner"_s + stem + u"Button"_s), Qt::LeftButton);
        auto *dialog = form->findChild<TrackCleanerDetailDialog *>();
        return dialog ? dialog->findChild<TracesModel *>() : nullptr;
    }
    bool exists(const QString &name) const { return platform::fileExists(folder.path(name)); }
    bool hasRun() const
    {
        const std::optional<RegistryKey> key =
            const_cast<Scene *>(this)->registry.read(explorer + u"\\RunMRU"_s);
        return key && !key->values.empty();
    }

private:
    void wipe()
    {
        for (const QString &name : {u"RunMRU"_s, u"TypedPaths"_s, u"WordWheelQuery"_s, u"RecentDocs"_s})
            registry.deleteTree(explorer + u'\\' + name);
    }
};

} // namespace

class TrackCleanerTest : public RegistryTest
{
    Q_OBJECT

private slots:
    void names();
    void looksAndCounts();
    void clearsTheFrozenList();
    void saysWhatStayed();
    void refusalsClearNothing();
    void putsEntriesBack();
    void leftOutStaysLeftOut();
    void longListsAreArrangedOnAThread();
    void signalsOfTheClearing();
    void linksLeadNowhere();
};

void TrackCleanerTest::names()
{
    Scene scene;
    for (const char *stem : {"FileExplorerRecentFiles", "FileExplorerTypedPaths", "FileExplorerSearchHistory",
                             "WindowsRunDialog", "WindowsLogFiles", "WindowsErrorReporting",
                             "WindowsNetworkData", "WindowsTempFiles"}) {
        const QString name = u"TrackCleaner"_s + QLatin1String(stem);
        QVERIFY2(scene.find<QCheckBox>(name + u"CheckBox"_s) && scene.find<QLabel>(name + u"Label"_s) &&
                     scene.find<QPushButton>(name + u"Button"_s),
                 stem);
    }
    for (const char *name :
         {"TrackCleanerAnalyzeButton", "TrackCleanerClearButton", "TrackCleanerCancelButton"})
        QVERIFY2(scene.find<QPushButton>(QLatin1String(name)), name);
    for (const char *name :
         {"TrackCleanerProgressBarLabel", "TrackCleanerFileExplorer", "TrackCleanerFileExplorerIcon",
          "TrackCleanerWindows", "TrackCleanerWindowsIcon"})
        QVERIFY2(scene.find<QLabel>(QLatin1String(name)), name);
    QVERIFY(scene.find<QProgressBar>(u"TrackCleanerProgressBar"_s));
    scene.form->onWindowsLogFilesScanFinish(12, 5120);
    QCOMPARE(scene.label(u"WindowsLogFiles"_s), u"12 item(s) found - 5.00 GB"_s);
    scene.form->onWindowsRunDialogClearFinish(0);
    QCOMPARE(scene.label(u"WindowsRunDialog"_s), u"0 item(s) found"_s);
}

void TrackCleanerTest::looksAndCounts()
{
    Scene scene;
    QVERIFY(!scene.find<QPushButton>(u"TrackCleanerClearButton"_s)->isEnabled());
    scene.press(u"TrackCleanerAnalyzeButton"_s);
    QCOMPARE(scene.label(u"FileExplorerRecentFiles"_s), u"2 item(s) found"_s);
    QCOMPARE(scene.label(u"FileExplorerTypedPaths"_s), u"0 item(s) found"_s);
    QCOMPARE(scene.label(u"WindowsRunDialog"_s), u"2 item(s) found"_s);
    QCOMPARE(scene.label(u"WindowsLogFiles"_s), u"2 item(s) found - 0.01 KB"_s);
    QCOMPARE(scene.label(u"WindowsTempFiles"_s), u"2 item(s) found - 2.00 KB"_s);
    QVERIFY(!scene.find<QPushButton>(u"TrackCleanerFileExplorerTypedPathsButton"_s)->isEnabled());
    TracesModel *logs = scene.open(u"WindowsLogFiles"_s);
    QVERIFY(logs);
    QCOMPARE(logs->rowCount(), 2);
    logs->search(u"000003 DB"_s);
    QCOMPARE(logs->rowCount(), 1);
    QCOMPARE(logs->index(0, TracesModel::State).data().toString(), u"kept: part of a database"_s);
    QVERIFY(!(logs->flags(logs->index(0, 0)) & Qt::ItemIsUserCheckable));
    QCOMPARE(logs->chosenCount(), 1);
}

void TrackCleanerTest::clearsTheFrozenList()
{
    Scene scene;
    scene.press(u"TrackCleanerAnalyzeButton"_s);
    scene.folder.makeFile(u"windows\\later.log"_s, "x");
    scene.folder.makeFile(recent + u"\\later.lnk"_s, "x");
    const QString saved = scene.folder.path(u"saved.reg"_s);
    scene.dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    scene.dialogs.nextFileToSave.enqueue(saved);
    scene.press(u"TrackCleanerClearButton"_s);
    // 2 recent files, one log, one old temporary file; 2 entries of the registry.
    QVERIFY2(scene.dialogs.questions[0].text.startsWith(
                 u"Clear 4 files (2.01 KB) and 2 entries of the registry?"_s),
             qPrintable(scene.dialogs.questions[0].text));
    for (const QString &gone :
         {recent + u"\\a.lnk"_s, u"windows\\setup.log"_s, u"temp\\old.tmp"_s,
          recent + u"\\AutomaticDestinations\\f01b4d95cf55d32a.automaticDestinations-ms"_s})
        QVERIFY2(!scene.exists(gone), qPrintable(gone));
    for (const QString &kept :
         {recent + u"\\sub\\below.lnk"_s, recent + u"\\later.lnk"_s, u"windows\\later.log"_s,
          u"windows\\b.log1"_s, u"windows\\db\\000003.log"_s, u"temp\\new.tmp"_s})
        QVERIFY2(scene.exists(kept), qPrintable(kept));
    QVERIFY(!scene.hasRun());
    QVERIFY(scene.registry.read(explorer + u"\\TypedPaths"_s)); // made, empty
    QVERIFY(platform::fileExists(saved));
    QCOMPARE(scene.label(u"WindowsTempFiles"_s), u"1 item(s) found - 0.00 KB"_s);
    QCOMPARE(scene.label(u"WindowsRunDialog"_s), u"0 item(s) found"_s);
    QCOMPARE(scene.form->findChild<NoticeBar *>()->text(),
             u"4 files (2.01 KB) and 2 entries of the registry were cleared."_s);
}

void TrackCleanerTest::saysWhatStayed()
{
    Scene scene;
    scene.uncheckAllBut({u"WindowsLogFiles"_s});
    scene.press(u"TrackCleanerAnalyzeButton"_s);
    const platform::FileHandle held(
        CreateFileW(platform::apiPath(scene.folder.path(u"windows\\setup.log"_s)).c_str(), GENERIC_READ,
                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
    scene.dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    scene.press(u"TrackCleanerClearButton"_s);
    QVERIFY(scene.exists(u"windows\\setup.log"_s));
    QCOMPARE(scene.label(u"WindowsLogFiles"_s), u"2 item(s) found - 0.01 KB"_s);
    QCOMPARE(scene.form->findChild<NoticeBar *>()->text(),
             u"0 files (0.00 KB) were cleared. 1 stayed (1: it is in use by another program)."_s);
    scene.form->showWhatStayed();
    const auto *stayed = scene.form->findChild<StayedModel *>();
    QVERIFY(stayed);
    QCOMPARE(stayed->index(0, StayedModel::Entry).data().toString(), u"setup.log"_s);
}

void TrackCleanerTest::refusalsClearNothing()
{
    Scene scene;
    scene.press(u"TrackCleanerAnalyzeButton"_s);
    QPushButton *clear = scene.find<QPushButton>(u"TrackCleanerClearButton"_s);
    scene.dialogs.nextAnswer.enqueue(QMessageBox::No);
    clear->click();
    // No file for the entries of the registry, and no clearing without one.
    scene.dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    scene.dialogs.nextAnswer.enqueue(QMessageBox::No);
    scene.dialogs.nextFileToSave.enqueue({});
    clear->click();
    QVERIFY(!scene.form->isBusy());
    QCOMPARE(scene.dialogs.questions.size(), 3);
    // A link is not followed: what it leads to is kept, and so is everything, as nothing was saved.
    const QString letter = scene.folder.makeFile(u"letter.reg"_s, "keep");
    requireBelow(scene.folder.path(), letter);
    scene.folder.makeLink(u"linked.reg"_s, u"letter.reg"_s);
    scene.dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    scene.dialogs.nextAnswer.enqueue(QMessageBox::No);
    scene.dialogs.nextFileToSave.enqueue(scene.folder.path(u"linked.reg"_s));
    clear->click();
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(scene.dialogs.questions.size(), 5);
    QCOMPARE(QFileInfo(letter).size(), 4);
    QVERIFY(scene.hasRun() && scene.exists(u"temp\\old.tmp"_s));
}

void TrackCleanerTest::putsEntriesBack()
{
    Scene scene;
    scene.uncheckAllBut({u"WindowsRunDialog"_s});
    scene.press(u"TrackCleanerAnalyzeButton"_s);
    const QString saved = scene.folder.path(u"saved.reg"_s);
    scene.dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    scene.dialogs.nextFileToSave.enqueue(saved);
    scene.press(u"TrackCleanerClearButton"_s);
    QVERIFY(!scene.hasRun());
    scene.dialogs.nextFilesToOpen.enqueue({scene.folder.makeFile(u"foreign.reg"_s, "no")});
    scene.form->putRegistryEntriesBack();
    QVERIFY(scene.form->isBusy()); // on a thread of its own
    QTRY_VERIFY(!scene.form->isBusy());
    QVERIFY(!scene.hasRun());
    scene.dialogs.nextFilesToOpen.enqueue({saved});
    scene.form->putRegistryEntriesBack();
    QTRY_VERIFY(!scene.form->isBusy());
    QCOMPARE(scene.registry.read(explorer + u"\\RunMRU"_s)->values.size(), 2U);
}

void TrackCleanerTest::leftOutStaysLeftOut()
{
    Scene scene;
    scene.uncheckAllBut({u"FileExplorerRecentFiles"_s});
    scene.press(u"TrackCleanerAnalyzeButton"_s);
    TracesModel *model = scene.open(u"FileExplorerRecentFiles"_s);
    QVERIFY(model);
    model->search(u"A.LNK"_s);
    QCOMPARE(model->rowCount(), 1);
    QVERIFY(model->setData(model->index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
    scene.dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    scene.press(u"TrackCleanerClearButton"_s);
    QVERIFY(scene.exists(recent + u"\\a.lnk"_s));
    // The counts were taken again, and what was left out is not chosen by that.
    QCOMPARE(scene.label(u"FileExplorerRecentFiles"_s), u"1 item(s) found"_s);
    QVERIFY(!scene.find<QPushButton>(u"TrackCleanerClearButton"_s)->isEnabled());
}

void TrackCleanerTest::longListsAreArrangedOnAThread()
{
    auto found = std::make_shared<ScanResult>();
    FileTraces &files = (*found)[Item::TempFiles].files;
    const quint32 folder = files.addFolder(u"C:\\t"_s, u"C:\\t"_s);
    const int count = static_cast<int>(TracesModel::maxArrangedAtOnce) + 1;
    for (int i = 0; i < count; ++i) {
        const QString name = QString::number(i);
        files.add(folder, {.name = name, .size = static_cast<quint64>(i)}, Keep::No);
    }
    TracesModel model(found, Item::TempFiles, {});
    QSignalSpy arranged(&model, &TracesModel::arranged);
    model.sort(TracesModel::Size, Qt::DescendingOrder);
    model.search(u"9"_s); // replaces the sorting that may still run, and keeps its order
    QVERIFY(arranged.wait());
    QTRY_VERIFY(!model.isArranging());
    QCOMPARE(model.index(0, TracesModel::Entry).data().toString(), u"1999"_s);
    model.setAllChosen(false);
    QCOMPARE(model.chosenCount(), count - model.rowCount());
}

void TrackCleanerTest::signalsOfTheClearing()
{
    Scene scene;
    scene.uncheckAllBut({u"FileExplorerTypedPaths"_s, u"WindowsTempFiles"_s});
    scene.press(u"TrackCleanerAnalyzeButton"_s);
    ClearPlan plan{scene.form->found(), {}, {}};
    plan.items[indexOf(Item::TypedPaths)] = plan.items[indexOf(Item::TempFiles)] = true;
    TrackCleanerClearThread thread(plan);
    QStringList told;
    using Thread = TrackCleanerClearThread;
    connect(&thread, &Thread::fileExplorerRecentFilesFinish, this, [&](int) { told += u"recent"_s; });
    connect(&thread, &Thread::fileExplorerTypedPathsFinish, this,
            [&](int n) { told += u"typed %1"_s.arg(n); });
    connect(&thread, &Thread::windowsTempFilesFinish, this,
            [&](int n, int size) { told += u"temp %1 %2"_s.arg(n).arg(size); });
    connect(&thread, &Thread::cannotDelete, this, [&] { told += u"cannot"_s; });
    connect(&thread, &Thread::processFinish, this, [&](int n) { told += u"end %1"_s.arg(n); });
    thread.start();
    QTRY_COMPARE(told, QStringList({u"typed 0"_s, u"temp 0 0"_s, u"end 1"_s}));
    thread.wait();
}

// Wine removes what a link leads to; the guard must not let it come so far.
void TrackCleanerTest::linksLeadNowhere()
{
    Scene scene;
    const QString canary = scene.folder.makeFile(u"outside\\letter.log"_s, "keep");
    requireBelow(scene.folder.path(), canary);
    scene.folder.makeLink(u"temp\\linked"_s, u"outside"_s);
    scene.folder.makeLink(u"windows\\linked.log"_s, u"outside\\letter.log"_s);
    scene.folder.setTimes(u"outside\\letter.log"_s, 132'000'000'000'000'000, 132'000'000'000'000'000);
    scene.uncheckAllBut({u"WindowsLogFiles"_s, u"WindowsTempFiles"_s});
    scene.press(u"TrackCleanerAnalyzeButton"_s);
    scene.dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    scene.press(u"TrackCleanerClearButton"_s);
    QVERIFY(scene.exists(u"outside\\letter.log"_s));
    QVERIFY(!scene.exists(u"temp\\old.tmp"_s));
}

QTEST_MAIN(TrackCleanerTest)
#include "tst_track_cleaner.moc"
