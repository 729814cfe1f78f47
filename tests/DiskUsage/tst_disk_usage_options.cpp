// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageAddFileTypesDialog.h"
#include "DiskUsage/DiskUsageEditFileTypesDialog.h"
#include "DiskUsage/DiskUsageOptionsForm.h"
#include "DiskUsage/Settings.h"
#include "DiskUsage/engine/Siblings.h"
#include "platform/Handle.h"
#include "settings/FileTypeStore.h"
#include "settings/Settings.h"
#include "tests/DiskUsage/Find.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeShell.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NoticeBar.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include <atomic>
#include <memory>
#include <string_view>

using namespace Qt::StringLiterals;
using namespace diskusage;
using core::ExcludedFolder;
using core::FileTypeTable;
using tests::click;
using tests::FakeDialogs;
using tests::find;

namespace
{

template <class Dialog>
Dialog *openDialog(const QWidget &below)
{
    for (auto *dialog : below.findChildren<Dialog *>())
        if (dialog->isVisible())
            return dialog;
    qFatal("no such dialog is open");
}

QTreeWidgetItem *category(const DiskUsageOptionsForm &form, int row)
{
    return find<QTreeWidget>(form, "fileTypesTreeWidget")->topLevelItem(row);
}

void showExclusions(DiskUsageOptionsForm &form)
{
    form.show();
    find<QTabWidget>(form, "optionsTabWidget")->setCurrentIndex(1);
}

const QString key = u"Software\\Folder Size Analyzer"_s;

void store(const QString &name, const QString &text)
{
    settings::writeString(key, name, text);
}

QString stored(const QString &name)
{
    QString text;
    return settings::readString(key, name, text) ? text : u"(absent)"_s;
}

} // namespace

class DiskUsageOptionsTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void withoutStoredCategoriesTheBuiltInOnesCount();
    void aMissingCategoryIsSkippedAndLaterOnesAreRead();
    void exclusionsAreReadFromTenValues();
    void aRemovedExclusionDoesNotComeBack();
    void recentFoldersAreNewestFirst();
    void editsCountWhenSaved();
    void leavingAsksAboutUnsavedEdits();
    void restoreBringsTheBuiltInTypesBack();
    void extensionsAreEdited();
    void deletingAnExtensionAsks();
    void aRefusedSaveIsNoSuccess();
    void atMostTenFoldersAreExcluded();
    void aRemovedFolderStaysRemoved();
    void siblingsThatGoTooAreNamed();
    void theOneDriveFolderIsOpened();
};

void DiskUsageOptionsTest::withoutStoredCategoriesTheBuiltInOnesCount()
{
    FileTypeTable table{{u"left over"_s, {}, true}};
    QVERIFY(!settings::loadFileTypes(table));
    QVERIFY(table.empty());
    QCOMPARE(settings::loadFileTypesOrDefaults(), core::defaultFileTypes());
    settings::writeDword(key, u"FileTypeDataCount"_s, 0);
    QCOMPARE(settings::loadFileTypesOrDefaults().size(), 12U);
    // What is stored is no category at all.
    settings::writeDword(key, u"FileTypeDataCount"_s, 1);
    store(u"FileTypeData0"_s, u";Font Files (.fnt)"_s);
    QCOMPARE(settings::loadFileTypesOrDefaults().size(), 12U);
}

void DiskUsageOptionsTest::aMissingCategoryIsSkippedAndLaterOnesAreRead()
{
    settings::writeDword(key, u"FileTypeDataCount"_s, 3);
    store(u"FileTypeData0"_s, u"1;One (.a)"_s);
    store(u"FileTypeData2"_s, u"1;Three (.c)"_s);
    store(u"FileTypeData3"_s, u"1;Beyond the count (.d)"_s);
    const FileTypeTable read = settings::loadFileTypesOrDefaults();
    QCOMPARE(read.size(), 2U);
    QCOMPARE(read[1].name, u"Three"_s);
    settings::writeDword(key, u"FileTypeDataCount"_s, 0xFFFFFFFF); // would take hours
    QCOMPARE(settings::loadFileTypesOrDefaults().size(), 3U);
}

void DiskUsageOptionsTest::exclusionsAreReadFromTenValues()
{
    store(u"ExludeFolder0"_s, u"1;C:\\a;b"_s);
    store(u"ExludeFolder1"_s, u"1;"_s);
    store(u"ExludeFolder4"_s, u"2;C:\\two"_s);
    store(u"ExludeFolder9"_s, u"0;C:\\nine"_s);
    store(u"ExludeFolder10"_s, u"1;C:\\ten"_s);
    store(u"ExcludeFolder2"_s, u"1;C:\\spelled right"_s);
    const std::vector<ExcludedFolder> expected{
        {true, u"C:\\a;b"_s}, {false, u"C:\\two"_s}, {false, u"C:\\nine"_s}};
    QCOMPARE(loadExcludedFolders(), expected);
}

void DiskUsageOptionsTest::aRemovedExclusionDoesNotComeBack()
{
    std::vector<ExcludedFolder> folders;
    for (int i = 0; i < 12; ++i)
        folders.push_back({i % 2 == 0, u"C:\\%1"_s.arg(i)});
    saveExcludedFolders(folders);
    QCOMPARE(stored(u"ExludeFolder9"_s), u"0;C:\\9"_s);
    QCOMPARE(stored(u"ExludeFolder10"_s), u"(absent)"_s);
    folders.resize(1);
    saveExcludedFolders(folders);
    QCOMPARE(loadExcludedFolders(), folders);
}

void DiskUsageOptionsTest::recentFoldersAreNewestFirst()
{
    QStringList recent;
    for (const char *folder : {"C:\\1", "C:\\2", "C:\\3", "C:\\4", "C:\\5", "C:\\6", "c:\\5", "C:\\7"}) {
        recent = withRecentFolder(recent, QLatin1String(folder));
        saveRecentFolders(recent);
    }
    const QStringList expected{u"C:\\7"_s, u"c:\\5"_s, u"C:\\6"_s, u"C:\\4"_s, u"C:\\3"_s, u"C:\\2"_s};
    QCOMPARE(loadRecentFolders(), expected);
    QCOMPARE(stored(u"RecentFile0"_s), u"C:\\7"_s);
    QCOMPARE(stored(u"RecentFile6"_s), u"(absent)"_s);
    // A hole ends nothing, and a longer text than any path is none.
    settings::deleteValue(key, u"RecentFile1"_s);
    store(u"RecentFile2"_s, QString(40'000, QLatin1Char('x')));
    QCOMPARE(loadRecentFolders().size(), 4);
    saveRecentFolders({});
    QVERIFY(loadRecentFolders().isEmpty());
}

void DiskUsageOptionsTest::editsCountWhenSaved()
{
    FakeDialogs dialogs;
    DiskUsageOptionsForm form;
    form.show();
    QVERIFY(!find<QPushButton>(form, "saveButton")->isEnabled());
    category(form, 2)->setCheckState(0, Qt::Unchecked);
    find<QTabWidget>(form, "optionsTabWidget")->setCurrentIndex(1);
    find<QCheckBox>(form, "excludeOneDrivecheckBox")->setChecked(true);
    dialogs.nextFolder.enqueue(u"C:/some/folder"_s);
    click(form, "excludeAddButton");
    QCOMPARE(dialogs.fileDialogs.first().title, u"Select folder to exclude..."_s);
    QVERIFY(form.hasUnsavedChanges());
    QCOMPARE(loadScanSettings(), (ScanSettings{core::defaultFileTypes(), {}, false}));

    click(form, "saveButton");
    QVERIFY(!form.hasUnsavedChanges());
    const ScanSettings saved = loadScanSettings();
    QVERIFY(!saved.fileTypes[2].enabled);
    QVERIFY(saved.excludeOneDrive);
    QCOMPARE(saved.excludedFolders, std::vector<core::ExcludedFolder>({{true, u"C:\\some\\folder"_s}}));
    DiskUsageOptionsForm next;
    QCOMPARE(category(next, 2)->checkState(0), Qt::Unchecked);
    QVERIFY(find<QCheckBox>(next, "excludeOneDrivecheckBox")->isChecked());
}

void DiskUsageOptionsTest::leavingAsksAboutUnsavedEdits()
{
    struct Case {
        QMessageBox::StandardButton answer;
        bool leaves, saves;
    };
    for (const auto &[answer, leaves, saves] : {Case{QMessageBox::Cancel, false, false},
                                                {QMessageBox::No, true, false},
                                                {QMessageBox::Yes, true, true}}) {
        FakeDialogs dialogs;
        DiskUsageOptionsForm form;
        form.show();
        category(form, 0)->setCheckState(0, Qt::Unchecked);
        QSignalSpy closed(&form, &DiskUsageOptionsForm::closed);
        dialogs.nextAnswer.enqueue(answer);
        click(form, "optionsBackButton");
        QCOMPARE(dialogs.questions.size(), 1);
        QCOMPARE(dialogs.questions.first().text,
                 u"There are unsaved changes in the Options page. Do you want to save the changes now?"_s);
        QCOMPARE(closed.count(), leaves ? 1 : 0);
        QCOMPARE(settings::loadFileTypesOrDefaults().front().enabled, !saves);
        if (!leaves)
            continue;
        // What was forgotten is not there when the page is opened again, and nothing more is asked.
        form.load();
        QCOMPARE(category(form, 0)->checkState(0), saves ? Qt::Unchecked : Qt::Checked);
        category(form, 1)->setCheckState(0, Qt::Unchecked); // there and back is no edit
        category(form, 1)->setCheckState(0, Qt::Checked);
        click(form, "optionsBackButton");
        QCOMPARE(dialogs.questions.size(), 1);
    }
}

void DiskUsageOptionsTest::restoreBringsTheBuiltInTypesBack()
{
    core::FileTypeTable table = core::defaultFileTypes();
    table.erase(table.begin(), table.begin() + 5);
    table[0].enabled = false;
    settings::saveFileTypes(table);
    FakeDialogs dialogs;
    DiskUsageOptionsForm form;
    form.show();
    dialogs.nextAnswer.enqueue(QMessageBox::No);
    click(form, "FileTypesRestoreButton");
    QCOMPARE(dialogs.questions.first().title, u"Confirm to restore"_s);
    QCOMPARE(dialogs.questions.first().text, u"Are you sure you want to restore the file types?"_s);
    QVERIFY(!form.hasUnsavedChanges());
    dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    click(form, "FileTypesRestoreButton");
    QCOMPARE(settings::loadFileTypesOrDefaults(), table); // not yet saved
    click(form, "saveButton");
    QCOMPARE(settings::loadFileTypesOrDefaults(), core::defaultFileTypes());
}

void DiskUsageOptionsTest::extensionsAreEdited()
{
    DiskUsageOptionsForm form;
    form.show();
    find<QTreeWidget>(form, "fileTypesTreeWidget")->setCurrentItem(category(form, 6));
    category(form, 6)->setCheckState(0, Qt::Unchecked);
    click(form, "FileTypesEditButton");
    auto *edit = openDialog<DiskUsageEditFileTypesDialog>(form);
    QCOMPARE(edit->windowTitle(), u"Edit File Types"_s);
    QCOMPARE(find<QLabel>(*edit, "titleLabel")->text(), u"File Extensions for Font Files"_s);
    click(*edit, "AddButton");
    auto *add = openDialog<DiskUsageAddFileTypesDialog>(*edit);
    QCOMPARE(add->windowTitle(), u"New File Extensions"_s);
    QVERIFY(find<QLabel>(*add, "hintLabel")->text().startsWith(u"Add a new file extensions. Example: \""_s));
    auto *typed = find<QLineEdit>(*add, "FileTypeLineEdit");
    typed->setText(u".a,.b"_s);
    QVERIFY(!find<QPushButton>(*add, "OKButton")->isEnabled());
    QTest::keyClick(typed, Qt::Key_Return);
    QVERIFY(add->isVisible());
    typed->setText(u"*.WOFF"_s);
    click(*add, "OKButton");
    click(*edit, "SaveButton");
    QCOMPARE(category(form, 6)->text(0), u"Font Files (.fnt, .fon, .otf, .ttf, .woff)"_s);
    QCOMPARE(category(form, 6)->checkState(0), Qt::Unchecked); // the edit is about the extensions alone
    click(form, "saveButton");
    QCOMPARE(settings::loadFileTypesOrDefaults()[6].storedText(),
             u"0;Font Files (.fnt, .fon, .otf, .ttf, .woff)"_s);
}

void DiskUsageOptionsTest::deletingAnExtensionAsks()
{
    FakeDialogs dialogs;
    DiskUsageEditFileTypesDialog dialog(core::defaultFileTypes()[6], core::defaultFileTypes());
    dialog.show();
    QSignalSpy values(&dialog, &DiskUsageEditFileTypesDialog::newValue);
    find<QListWidget>(dialog, "extensionListWidget")->setCurrentRow(1);
    dialogs.nextAnswer.enqueue(QMessageBox::No);
    click(dialog, "DeleteButton");
    QCOMPARE(dialogs.questions.first().title, u"Confirm to delete"_s);
    QCOMPARE(dialogs.questions.first().text, u"Are you sure you want to delete"_s);
    dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    click(dialog, "DeleteButton");
    dialog.on_newFileExtensionValue(u".TTF"_s); // already there
    click(dialog, "SaveButton");
    QCOMPARE(values.takeFirst().first().toString(), u"Font Files (.fnt, .otf, .ttf)"_s);
}

void DiskUsageOptionsTest::aRefusedSaveIsNoSuccess()
{
    // A key that leads to another one which is not there takes no value.
    platform::RegKey link;
    QCOMPARE(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Folder Size Analyzer", 0, nullptr,
                             REG_OPTION_CREATE_LINK, KEY_ALL_ACCESS, nullptr, link.put(), nullptr),
             ERROR_SUCCESS);
    constexpr std::wstring_view nowhere = L"\\Registry\\Nowhere\\Folder Size Analyzer";
    QCOMPARE(RegSetValueExW(link.get(), L"SymbolicLinkValue", 0, REG_LINK,
                            reinterpret_cast<const BYTE *>(nowhere.data()),
                            static_cast<DWORD>(nowhere.size() * sizeof(wchar_t))),
             ERROR_SUCCESS);
    FakeDialogs dialogs;
    DiskUsageOptionsForm form;
    form.show();
    category(form, 0)->setCheckState(0, Qt::Unchecked);
    click(form, "saveButton");
    const auto *notice = form.findChild<NoticeBar *>();
    QVERIFY(!notice->text().isEmpty());
    QVERIFY(!notice->text().startsWith(u"Saved"_s));
    QVERIFY(form.hasUnsavedChanges());
    QVERIFY(find<QPushButton>(form, "saveButton")->isEnabled());
    // Whoever wants the edits saved before leaving is not sent away without them.
    QSignalSpy closed(&form, &DiskUsageOptionsForm::closed);
    dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    click(form, "optionsBackButton");
    QCOMPARE(closed.count(), 0);
}

void DiskUsageOptionsTest::atMostTenFoldersAreExcluded()
{
    FakeDialogs dialogs;
    DiskUsageOptionsForm form;
    showExclusions(form);
    auto *list = find<QTreeWidget>(form, "excludeTreeWidget");
    const auto add = [&](const QString &folder) {
        dialogs.nextFolder.enqueue(folder);
        click(form, "excludeAddButton");
    };
    for (int i = 0; i < 9; ++i)
        add(u"C:\\f%1\\"_s.arg(i));
    add(u"c:\\F0"_s); // the same folder once more
    QCOMPARE(list->topLevelItemCount(), 9);
    add(u"C:\\f9\\"_s);
    QCOMPARE(list->topLevelItem(9)->text(0), u"C:\\f9"_s);
    QVERIFY(!find<QPushButton>(form, "excludeAddButton")->isEnabled());
}

void DiskUsageOptionsTest::aRemovedFolderStaysRemoved()
{
    saveExcludedFolders({{true, u"C:\\a"_s}, {false, u"C:\\b"_s}, {true, u"C:\\c"_s}});
    DiskUsageOptionsForm form;
    showExclusions(form);
    auto *list = find<QTreeWidget>(form, "excludeTreeWidget");
    list->setCurrentItem(list->topLevelItem(0));
    form.activateWindow(); // keys reach an active window only
    QVERIFY(QTest::qWaitForWindowActive(&form));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Delete);
    click(form, "saveButton");
    QCOMPARE(loadExcludedFolders(),
             std::vector<core::ExcludedFolder>({{false, u"C:\\b"_s}, {true, u"C:\\c"_s}}));
}

void DiskUsageOptionsTest::siblingsThatGoTooAreNamed()
{
    const tests::TestFolder folder;
    for (const char *name : {"Data", "database", "Dat", "other"})
        folder.makeFolder(QLatin1String(name));
    folder.makeFile(u"Data.txt"_s);
    saveExcludedFolders({{true, folder.path(u"Data"_s)}});
    const auto asked = std::make_shared<std::atomic_int>(0);
    DiskUsageOptionsForm form(
        [asked](const QString &excluded, core::DirectoryEnumerator &disk, const core::CancelFlag &cancel) {
            ++*asked;
            QStringList found = siblingsLeftOut(excluded, disk, cancel);
            for (int i = 1; i < 5; ++i)
                found.append(u"C:\\a%1"_s.arg(i));
            return found;
        });
    form.load();
    QTest::qWait(100);
    QCOMPARE(asked->load(), 0); // on the screen only
    showExclusions(form);
    const auto *note = find<ElidedLabel>(form, "siblingNoteLabel");
    QTRY_VERIFY(note->isVisible());
    QVERIFY2(note->text().endsWith(folder.path(u"database"_s) + u", C:\\a1, C:\\a2 and 2 more"_s),
             qPrintable(note->text()));
    // No disk is asked again for moving in a list, and a row that is not checked leaves nothing out.
    auto *list = find<QTreeWidget>(form, "excludeTreeWidget");
    list->setCurrentItem(nullptr);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::qWait(100);
    QCOMPARE(asked->load(), 1);
    list->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    QTRY_VERIFY(!note->isVisible());
}

void DiskUsageOptionsTest::theOneDriveFolderIsOpened()
{
    tests::FakeShell shell;
    const QString environment = u"Environment"_s;
    settings::writeString(environment, u"OneDrive", u"C:/Users/x/OneDrive/");
    DiskUsageOptionsForm form;
    showExclusions(form);
    click(form, "openOneDriveButton");
    QCOMPARE(shell.opened, QStringList({u"C:\\Users\\x\\OneDrive"_s}));
    settings::deleteValue(environment, u"OneDrive");
    form.load();
    QVERIFY(!find<QPushButton>(form, "openOneDriveButton")->isEnabled());
}

QTEST_MAIN(DiskUsageOptionsTest)
#include "tst_disk_usage_options.moc"
