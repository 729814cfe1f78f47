// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/SecureDeleteBinPage.h"
#include "SecureDelete/SecureDeleteForm.h"
#include "SecureDelete/SecureDeleteListPage.h"
#include "SecureDelete/SecureDeleteOptionsDialog.h"
#include "SecureDelete/SecureDeleteReportPage.h"
#include "SecureDelete/Settings.h"
#include "SecureDelete/Win32Disk.h"
#include "SecureDelete/Win32FreeSpace.h"
#include "platform/Paths.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>
#include <QtEndian>

using namespace Qt::StringLiterals;
using namespace securedelete;
using tests::TestFolder;

namespace
{

constexpr int patience = 30'000;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "unreadable";
}

// A form that reaches nothing but the folders of its test.
struct Scene {
    Scene()
        : form({[](const QString &) { return platform::Medium::DoesNotSeek; },
                [this] { return QStringList{bin}; }, [this](const QString &) { return folder.path(); }})
    {
        bin = folder.makeFolder(u"bin"_s);
        form.show();
    }

    template <class Widget>
    Widget *find(const char *name)
    {
        return form.findChild<Widget *>(QLatin1String(name));
    }
    void click(const char *name) { find<QPushButton>(name)->click(); }

    void add(const QStringList &paths)
    {
        form.addPaths(paths);
        QTRY_VERIFY_WITH_TIMEOUT(!list().isReading(), patience);
    }
    SecureDeleteListPage &list() { return *form.findChild<SecureDeleteListPage *>(); }
    const std::vector<ShredRecord> &run(const char *button)
    {
        for (const ListRow &row : list().model().rows())
            tests::requireBelow(folder.path(), row.row.item.path());
        QSignalSpy shown(&form, &SecureDeleteForm::reportShown);
        dialogs.nextAnswer.enqueue(QMessageBox::Yes);
        click(button);
        if (shown.isEmpty() && !shown.wait(patience))
            qFatal("no report");
        return *form.findChild<SecureDeleteReportPage *>()->records();
    }

    TestFolder folder;
    QString bin;
    tests::FakeDialogs dialogs;
    SecureDeleteForm form;
};

// As Windows 10 writes it.
QByteArray indexOf(const QString &path, quint64 size)
{
    QByteArray bytes(28, '\0');
    bytes[0] = 2;
    qToLittleEndian(size, bytes.data() + 8);
    qToLittleEndian(quint64{133'000'000'000'000'000}, bytes.data() + 16);
    qToLittleEndian(static_cast<quint32>(path.size() + 1), bytes.data() + 24);
    return bytes + QByteArray(reinterpret_cast<const char *>(path.utf16()), (path.size() + 1) * 2);
}

} // namespace

class TestSecureDelete : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void destroysWhatIsOnTheList();
    void leavesWhatItMustNotTouch();
    void aHeldFileShowsTheLastPass();
    void nothingStartsWithoutAYes();
    void theRecycleBin();
    void savesTheReportWithoutNames();
    void settingsAreCheckedAndStored();
    void whatAnEarlierRunLeftOfFreeSpaceGoes();
    void slotsFireOnceAClick();
};

void TestSecureDelete::destroysWhatIsOnTheList()
{
    Scene scene;
    deleteModeValue.write(3);
    const QString file = scene.folder.makeFile(u"one.txt"_s, QByteArray(70'000, 'x'));
    const QString tree = scene.folder.makeFolder(u"tree"_s);
    scene.folder.makeFile(u"tree\\sub\\a.txt"_s, "secret");
    scene.folder.makeFile(u"tree\\b"_s);
    scene.add({scene.folder.path(u"tree\\sub"_s), file});
    scene.add({tree, file, scene.folder.path(u"tree\\b"_s)});
    const auto &rows = scene.list().model().rows();
    QCOMPARE(rows.size(), 2U); // each once, and nothing that lies in a folder of the list
    QCOMPARE(rows[1].files, quint64{2});
    QCOMPARE(rows[1].bytes, quint64{6});
    QCOMPARE(scene.list().model().index(0, ItemModel::Kind).data().toString(), u"0"_s);
    QVERIFY(scene.find<QWidget>("mediumLabel")->isVisible());

    const auto &records = scene.run("deleteButton");
    QCOMPARE(scene.dialogs.questions.size(), 1);
    const QString question = scene.dialogs.questions[0].text;
    for (const QString &part : {u"3 files"_s, u"68.37 KB"_s, u"using Random"_s, u"1 pass"_s})
        QVERIFY2(question.contains(part), qPrintable(question));
    QCOMPARE(records.size(), 5U);
    for (const ShredRecord &record : records)
        QVERIFY2(record.destroyed, qPrintable(record.path));
    QVERIFY(!platform::fileExists(file));
    QVERIFY(!platform::fileExists(tree));
    QVERIFY(rows.empty());
    QVERIFY(!scene.form.isBusy());
}

void TestSecureDelete::leavesWhatItMustNotTouch()
{
    Scene scene;
    deleteModeValue.write(2);
    const QString canary = scene.folder.makeFile(u"out\\canary"_s, "sings");
    scene.folder.makeFolder(u"t"_s);
    scene.folder.makeLink(u"t\\link"_s, u"out"_s);
    scene.folder.makeLink(u"t\\file"_s, u"out\\canary"_s);
    scene.folder.makeHardLink(u"t\\hard"_s, u"out\\canary"_s);
    const QString changed = scene.folder.makeFile(u"changed"_s, "before");
    const QString readOnly = scene.folder.makeFile(u"readonly"_s, "kept");
    const QString exchanged = scene.folder.makeFolder(u"exchanged"_s);
    QVERIFY(QFile::setPermissions(readOnly, QFile::ReadOwner));
    scene.form.addPaths({u"C:\\"_s, u"C:\\windows\\temp"_s});
    scene.add({scene.folder.path(u"t"_s), changed, readOnly, exchanged, scene.folder.path(u"none"_s)});
    QVERIFY(scene.list().model().totals().remarks.testFlag(Remark::Protected));
    scene.list().model().removeIds({scene.list().model().rows()[0].id});
    QCOMPARE(scene.list().model().rows().size(), 4U);
    QVERIFY(scene.list().model().totals().remarks.testFlag(Remark::ReadOnly));
    scene.folder.makeFile(u"changed"_s, "after it was shown");
    tests::requireBelow(scene.folder.path(), exchanged);
    QVERIFY(QDir().rename(exchanged, scene.folder.path(u"moved"_s)));
    const QString inAnother = scene.folder.makeFile(u"exchanged\\mine"_s, "never shown");

    const auto &records = scene.run("deleteButton");
    QCOMPARE(scene.list().model().rows().size(), 4U);
    QCOMPARE(contentOf(inAnother), "never shown"_ba);
    QCOMPARE(contentOf(canary), "sings"_ba);
    QCOMPARE(contentOf(readOnly), "kept"_ba);
    QCOMPARE(contentOf(changed), "after it was shown"_ba);
    QVERIFY(platform::fileExists(scene.folder.path(u"t\\hard"_s)));
    QVERIFY(QFile::setPermissions(readOnly, QFile::ReadOwner | QFile::WriteOwner));
    QMap<QString, Fault> faults;
    for (const ShredRecord &record : records)
        faults.insert(record.path.mid(scene.folder.path().size() + 1), record.fault);
    const auto *report = scene.form.findChild<QAbstractItemView *>(u"reportTableView"_s)->model();
    QCOMPARE(report->index(0, 0).data().toString(), u"Left"_s); // comes first
    QCOMPARE(faults.value(u"readonly"_s), Fault::ReadOnly);
    QCOMPARE(faults.value(u"changed"_s), Fault::Changed);
    QCOMPARE(faults.value(u"exchanged"_s), Fault::Changed);
    QCOMPARE(faults.value(u"t\\hard"_s), Fault::OtherNames);
    QCOMPARE(faults.value(u"t"_s), Fault::NotEmpty);
    if (tests::isWine()) // elsewhere the link itself goes
        QCOMPARE(faults.value(u"t\\link"_s), Fault::ThroughLink);
}

// Another program that shares reading and writing, and not removing: overwritten, and its name kept.
void TestSecureDelete::aHeldFileShowsTheLastPass()
{
    Scene scene;
    deleteModeValue.write(2);
    const QString path = scene.folder.makeFile(u"held.doc"_s, QByteArray(1000, 'x'));
    scene.add({path});
    {
        QFile holder(path);
        QVERIFY(holder.open(QIODevice::ReadOnly));
        QCOMPARE(scene.run("deleteButton").at(0).fault, Fault::InUse);
    }
    const QByteArray lastPass(processBuffers().data(Method::Dod3, 3), 1000);
    QCOMPARE(contentOf(path), lastPass.first(999) + lastPass.first(1));
    QCOMPARE(scene.list().model().rows().size(), 1U);
    // It is still the file of the list, and can be tried again.
    QVERIFY(scene.run("deleteButton").at(0).destroyed);
    QVERIFY(!platform::fileExists(path));
}

void TestSecureDelete::nothingStartsWithoutAYes()
{
    Scene scene;
    const QString path = scene.folder.makeFile(u"a"_s, "content");
    scene.add({path});
    scene.dialogs.nextAnswer.enqueue(QMessageBox::No);
    scene.click("deleteButton");
    QVERIFY(!scene.form.isBusy());
    QCOMPARE(contentOf(path), "content"_ba);
    scene.click("clearButton");
    QVERIFY(!scene.find<QPushButton>("deleteButton")->isEnabled());
    QCOMPARE(contentOf(path), "content"_ba);
}

void TestSecureDelete::theRecycleBin()
{
    Scene scene;
    deleteModeValue.write(3);
    scene.folder.makeFile(u"bin\\desktop.ini"_s, "keep");
    scene.folder.makeFile(u"bin\\$R1.txt"_s, "removed");
    scene.folder.makeFile(u"bin\\$I1.txt"_s, indexOf(u"C:\\Users\\me\\letter.txt"_s, 7));
    scene.folder.makeFile(u"bin\\$R2\\deep\\b"_s, "removed");
    scene.folder.makeFile(u"bin\\$I2"_s, indexOf(u"C:\\folder"_s, 7));
    scene.folder.makeFile(u"bin\\$I3"_s, "damaged");
    auto *page = scene.form.findChild<SecureDeleteBinPage *>();
    page->refresh();
    QTRY_VERIFY_WITH_TIMEOUT(!page->isReading(), patience);
    auto *view = scene.form.findChild<QAbstractItemView *>(u"binTableView"_s);
    QStringList names;
    for (int row = 0; row < view->model()->rowCount(); ++row)
        names.append(view->model()->index(row, BinModel::Name).data().toString());
    names.sort();
    QCOMPARE(names, (QStringList{u"$I3"_s, u"folder"_s, u"letter.txt"_s}));

    for (int row = 0; row < view->model()->rowCount(); ++row) {
        if (view->model()->index(row, 0).data().toString() == u"letter.txt")
            view->selectionModel()->select(view->model()->index(row, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    const auto &records = scene.run("deleteSelectedButton");
    QCOMPARE(records.size(), 1U);
    QCOMPARE(records[0].path, u"C:\\Users\\me\\letter.txt"_s);
    QVERIFY(!platform::fileExists(scene.bin + u"\\$R1.txt"_s) &&
            !platform::fileExists(scene.bin + u"\\$I1.txt"_s));
    QVERIFY(platform::fileExists(scene.bin + u"\\$R2\\deep\\b"_s) &&
            platform::fileExists(scene.bin + u"\\$I2"_s));

    QSignalSpy back(&scene.form, &SecureDeleteForm::startPageShown);
    scene.form.findChild<QToolButton *>(u"backButton"_s)->click();
    QCOMPARE(back.size(), 1);
    page->refresh();
    QTRY_VERIFY_WITH_TIMEOUT(!page->isReading(), patience);
    scene.run("emptyRecycleBinButton");
    QCOMPARE(QDir(scene.bin).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System),
             QStringList{u"desktop.ini"_s});
}

void TestSecureDelete::savesTheReportWithoutNames()
{
    Scene scene;
    deleteModeValue.write(3);
    scene.add({scene.folder.makeFile(u"private name.txt"_s, "x")});
    scene.run("deleteButton");
    for (const bool names : {true, false}) {
        scene.find<QAbstractButton>("withNamesCheckBox")->setChecked(names);
        const QString file = scene.folder.path(names ? u"report.txt"_s : u"report.csv"_s);
        scene.dialogs.nextFileToSave.enqueue(file);
        scene.click("saveReportButton");
        QTRY_VERIFY_WITH_TIMEOUT(!scene.form.isBusy(), patience);
        const QByteArray saved = contentOf(file);
        QCOMPARE(saved.contains("private"), names);
        QVERIFY(saved.contains("Destroyed"));
        QCOMPARE(saved.contains("File 1"), !names);
    }
}

void TestSecureDelete::settingsAreCheckedAndStored()
{
    for (const auto &[mode, passes] : {std::pair(4U, 0U), std::pair(0x80000000U, 0xFFFFFFFFU)}) {
        settings::writeDword(settings::keys::secureDelete, u"DeleteMode", mode);
        settings::writeDword(settings::keys::secureDelete, u"NumPasses", passes);
        QCOMPARE(Settings::load().method, Method::Gutmann);
        QCOMPARE(Settings::load().randomPasses, 1);
    }
    settings::writeDword(settings::keys::secureDelete, u"DeleteMode", 1);
    SecureDeleteOptionsDialog dialog;
    QVERIFY(dialog.findChild<QRadioButton *>(u"dod7RadioButton"_s)->isChecked());
    dialog.findChild<QRadioButton *>(u"randomRadioButton"_s)->click();
    dialog.findChild<QSpinBox *>(u"numPassesSpinBox"_s)->setValue(5);
    QCOMPARE(deleteModeValue.read(), 3);
    QCOMPARE(numPassesValue.read(), 5);
}

void TestSecureDelete::whatAnEarlierRunLeftOfFreeSpaceGoes()
{
    TestFolder folder;
    Win32FreeSpace space(folder.path());
    tests::requireBelow(folder.path(), space.path());
    QVERIFY(space.make());
    Target *file = space.newFile(1);
    QVERIFY(file && file->write("random", 6) == 6);
    space.newFile(2);
    QFile::rename(space.path() + u"\\free space 000001.tmp"_s, space.path() + u"\\free space 000009.tmp"_s);
    const QString foreign =
        folder.makeFile(space.path().mid(folder.path().size() + 1) + u"\\mine.txt"_s, "mine");
    QVERIFY(!space.removeAll());
    QCOMPARE(QDir(space.path()).entryList(QDir::Files), QStringList{u"mine.txt"_s});
    tests::requireBelow(folder.path(), foreign);
    QVERIFY(QFile::remove(foreign));
    QVERIFY(space.removeAll());
    QVERIFY(!platform::fileExists(space.path()));
    // What the registry names is not taken for ours by its word.
    folder.makeFile(u"other\\free space 000001.tmp"_s);
    QVERIFY(!Win32FreeSpace::removeLeftOver(folder.path(u"other"_s)));
    QVERIFY(platform::fileExists(folder.path(u"other\\free space 000001.tmp"_s)));
}

void TestSecureDelete::slotsFireOnceAClick()
{
    Scene scene;
    for (int count = 1; count <= 2; ++count) {
        scene.dialogs.nextFilesToOpen.enqueue({});
        scene.click("addFilesButton");
        QCOMPARE(scene.dialogs.fileDialogs.size(), count);
    }
}

QTEST_MAIN(TestSecureDelete)

#include "tst_secure_delete.moc"
