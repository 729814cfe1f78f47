// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageAddFileTypesDialog.h"
#include "DiskUsage/DiskUsageEditFileTypesDialog.h"
#include "DiskUsage/DiskUsageOptionsForm.h"
#include "DiskUsage/Settings.h"
#include "platform/Handle.h"
#include "settings/FileTypeStore.h"
#include "tests/DiskUsage/Find.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/RegistryTest.h"
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

#include <string_view>

using namespace Qt::StringLiterals;
using namespace diskusage;
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

} // namespace

class DiskUsageOptionsTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void hasItsNamesAndSlots();
    void editsCountWhenSaved();
    void leavingAsksAboutUnsavedEdits();
    void restoreBringsTheBuiltInTypesBack();
    void extensionsAreEdited();
    void deletingAnExtensionAsks();
    void aRefusedSaveIsNoSuccess();
};

void DiskUsageOptionsTest::hasItsNamesAndSlots()
{
    const DiskUsageOptionsForm form;
    for (const char *name : {"fileTypesTab", "FileTypesEditButton", "FileTypesRestoreButton", "saveButton",
                             "excludeFolderTab", "excludeOneDrivecheckBox", "openOneDriveButton",
                             "excludeTreeWidget", "excludeAddButton", "excludeRemoveButton"})
        QVERIFY2(form.findChild<QWidget *>(QLatin1String(name)), name);
    const DiskUsageEditFileTypesDialog edit({}, {});
    for (const char *name : {"AddButton", "DeleteButton", "SaveButton"})
        QVERIFY2(edit.findChild<QPushButton *>(QLatin1String(name)), name);
    const DiskUsageAddFileTypesDialog add;
    for (const char *name : {"FileTypeLineEdit", "OKButton", "CancelButton"})
        QVERIFY2(add.findChild<QWidget *>(QLatin1String(name)), name);
    for (const auto &[object, slot] : std::initializer_list<std::pair<const QObject *, const char *>>{
             {&form, "on_excludeOneDrivecheckBox_toggled(bool)"},
             {&form, "on_openOneDriveButton_clicked()"},
             {&form, "on_newFileTypeValue(QString)"},
             {&edit, "on_newFileExtensionValue(QString)"},
             {&edit, "newValue(QString)"},
             {&add, "newExtension(QString)"}})
        QVERIFY2(object->metaObject()->indexOfMethod(slot) >= 0, slot);
    QCOMPARE(find<QCheckBox>(form, "excludeOneDrivecheckBox")->text(), u"Exclude OneDrive Folder"_s);
    QCOMPARE(category(form, 6)->text(0), u"Font Files (.fnt, .fon, .otf, .ttf)"_s);
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

QTEST_MAIN(DiskUsageOptionsTest)
#include "tst_disk_usage_options.moc"
