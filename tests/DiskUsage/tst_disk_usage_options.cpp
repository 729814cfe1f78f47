// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageAddFileTypesDialog.h"
#include "DiskUsage/DiskUsageEditFileTypesDialog.h"
#include "DiskUsage/DiskUsageOptionsForm.h"
#include "DiskUsage/Settings.h"
#include "app/settings/Settings.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeShell.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

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

using namespace diskusage;
using tests::FakeDialogs;

namespace
{

template <class Widget>
Widget *find(const QWidget &in, const char *name)
{
    auto *widget = in.findChild<Widget *>(QLatin1String(name));
    if (!widget)
        qFatal("no widget %s", name);
    return widget;
}

void click(const QWidget &in, const char *name)
{
    QTest::mouseClick(find<QAbstractButton>(in, name), Qt::LeftButton);
}

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

class DiskUsageOptionsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void init() { m_guard = std::make_unique<tests::RegistryGuard>(); }
    void cleanup() { m_guard.reset(); }

    void hasItsNamesAndSlots();
    void editsCountWhenSaved();
    void leavingAsksAboutUnsavedEdits_data();
    void leavingAsksAboutUnsavedEdits();
    void leavingWithoutEditsAsksNothing();
    void restoreBringsTheBuiltInTypesBack();
    void extensionsAreEdited();
    void deletingAnExtensionAsks();
    void typedExtensionsAreTidied_data();
    void typedExtensionsAreTidied();
    void atMostTenFoldersAreExcluded();
    void aRemovedFolderStaysRemoved();
    void siblingsThatGoTooAreNamed();
    void theOneDriveFolderIsOpened();

private:
    std::unique_ptr<tests::RegistryGuard> m_guard;
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
    QCOMPARE(find<QCheckBox>(form, "excludeOneDrivecheckBox")->text(),
             QStringLiteral("Exclude OneDrive Folder"));
    QCOMPARE(category(form, 6)->text(0), QStringLiteral("Font Files (.fnt, .fon, .otf, .ttf)"));
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
    dialogs.nextFolder.enqueue(QStringLiteral("C:/some/folder"));
    click(form, "excludeAddButton");
    QCOMPARE(dialogs.fileDialogs.first().title, QStringLiteral("Select folder to exclude..."));
    QVERIFY(form.hasUnsavedChanges());
    QCOMPARE(loadScanSettings(), (ScanSettings{core::defaultFileTypes(), {}, false}));

    click(form, "saveButton");
    QVERIFY(!form.hasUnsavedChanges());
    const ScanSettings saved = loadScanSettings();
    QVERIFY(!saved.fileTypes[2].enabled);
    QVERIFY(saved.excludeOneDrive);
    QCOMPARE(saved.excludedFolders,
             std::vector<core::ExcludedFolder>({{true, QStringLiteral("C:\\some\\folder")}}));
    DiskUsageOptionsForm next;
    QCOMPARE(category(next, 2)->checkState(0), Qt::Unchecked);
    QCOMPARE(find<QTreeWidget>(next, "excludeTreeWidget")->topLevelItem(0)->checkState(0), Qt::Checked);
    QVERIFY(find<QCheckBox>(next, "excludeOneDrivecheckBox")->isChecked());
}

void DiskUsageOptionsTest::leavingAsksAboutUnsavedEdits_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("left");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("save") << int(QMessageBox::Yes) << true << false;
    QTest::newRow("forget") << int(QMessageBox::No) << true << true;
    QTest::newRow("stay") << int(QMessageBox::Cancel) << false << true;
}

void DiskUsageOptionsTest::leavingAsksAboutUnsavedEdits()
{
    QFETCH(int, answer);
    QFETCH(bool, left);
    QFETCH(bool, enabled);
    FakeDialogs dialogs;
    DiskUsageOptionsForm form;
    form.show();
    category(form, 0)->setCheckState(0, Qt::Unchecked);
    QSignalSpy closed(&form, &DiskUsageOptionsForm::closed);
    dialogs.nextAnswer.enqueue(QMessageBox::StandardButton(answer));
    click(form, "optionsBackButton");
    QCOMPARE(dialogs.questions.size(), 1);
    QCOMPARE(dialogs.questions.first().text,
             QStringLiteral(
                 "There are unsaved changes in the Options page. Do you want to save the changes now?"));
    QCOMPARE(closed.count(), left ? 1 : 0);
    QCOMPARE(loadFileTypesOrDefaults().front().enabled, enabled);
    // What was forgotten is not there when the page is opened again.
    if (left) {
        form.load();
        QCOMPARE(category(form, 0)->checkState(0), enabled ? Qt::Checked : Qt::Unchecked);
    }
}

void DiskUsageOptionsTest::leavingWithoutEditsAsksNothing()
{
    FakeDialogs dialogs;
    DiskUsageOptionsForm form;
    form.show();
    QSignalSpy closed(&form, &DiskUsageOptionsForm::closed);
    category(form, 0)->setCheckState(0, Qt::Unchecked);
    category(form, 0)->setCheckState(0, Qt::Checked); // there and back is no edit
    click(form, "optionsBackButton");
    QCOMPARE(closed.count(), 1);
    QVERIFY(dialogs.questions.isEmpty());
}

void DiskUsageOptionsTest::restoreBringsTheBuiltInTypesBack()
{
    core::FileTypeTable table = core::defaultFileTypes();
    table.erase(table.begin(), table.begin() + 5);
    table[0].enabled = false;
    saveFileTypes(table);
    FakeDialogs dialogs;
    DiskUsageOptionsForm form;
    form.show();
    dialogs.nextAnswer.enqueue(QMessageBox::No);
    click(form, "FileTypesRestoreButton");
    QCOMPARE(dialogs.questions.first().title, QStringLiteral("Confirm to restore"));
    QCOMPARE(dialogs.questions.first().text,
             QStringLiteral("Are you sure you want to restore the file types?"));
    QVERIFY(!form.hasUnsavedChanges());
    dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    click(form, "FileTypesRestoreButton");
    QCOMPARE(loadFileTypesOrDefaults(), table); // not yet saved
    click(form, "saveButton");
    QCOMPARE(loadFileTypesOrDefaults(), core::defaultFileTypes());
}

void DiskUsageOptionsTest::extensionsAreEdited()
{
    DiskUsageOptionsForm form;
    form.show();
    find<QTreeWidget>(form, "fileTypesTreeWidget")->setCurrentItem(category(form, 6));
    category(form, 6)->setCheckState(0, Qt::Unchecked);
    click(form, "FileTypesEditButton");
    auto *edit = openDialog<DiskUsageEditFileTypesDialog>(form);
    QCOMPARE(edit->windowTitle(), QStringLiteral("Edit File Types"));
    QCOMPARE(find<QLabel>(*edit, "titleLabel")->text(), QStringLiteral("File Extensions for Font Files"));
    click(*edit, "AddButton");
    auto *add = openDialog<DiskUsageAddFileTypesDialog>(*edit);
    QCOMPARE(add->windowTitle(), QStringLiteral("New File Extensions"));
    QVERIFY(find<QLabel>(*add, "hintLabel")
                ->text()
                .startsWith(QStringLiteral("Add a new file extensions. Example: \"")));
    QTest::keyClicks(find<QLineEdit>(*add, "FileTypeLineEdit"), QStringLiteral("*.WOFF"));
    click(*add, "OKButton");
    click(*edit, "SaveButton");
    QCOMPARE(category(form, 6)->text(0), QStringLiteral("Font Files (.fnt, .fon, .otf, .ttf, .woff)"));
    QCOMPARE(category(form, 6)->checkState(0), Qt::Unchecked); // the edit is about the extensions alone
    click(form, "saveButton");
    QCOMPARE(loadFileTypesOrDefaults()[6].storedText(),
             QStringLiteral("0;Font Files (.fnt, .fon, .otf, .ttf, .woff)"));
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
    QCOMPARE(dialogs.questions.first().title, QStringLiteral("Confirm to delete"));
    QCOMPARE(dialogs.questions.first().text, QStringLiteral("Are you sure you want to delete"));
    dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    click(dialog, "DeleteButton");
    dialog.on_newFileExtensionValue(QStringLiteral(".TTF")); // already there
    click(dialog, "SaveButton");
    QCOMPARE(values.takeFirst().first().toString(), QStringLiteral("Font Files (.fnt, .otf, .ttf)"));
}

void DiskUsageOptionsTest::typedExtensionsAreTidied_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("extension"); // empty: refused
    QTest::newRow("as it should be") << QStringLiteral(".pdf") << QStringLiteral(".pdf");
    QTest::newRow("no dot") << QStringLiteral("pdf") << QStringLiteral(".pdf");
    QTest::newRow("pattern") << QStringLiteral(" *.PDF ") << QStringLiteral(".pdf");
    QTest::newRow("two parts") << QStringLiteral("tar.gz") << QStringLiteral(".tar.gz");
    QTest::newRow("a list") << QStringLiteral(".a,.b") << QString();
    QTest::newRow("parenthesis") << QStringLiteral(".a)") << QString();
    QTest::newRow("semicolon") << QStringLiteral(".a;b") << QString();
    QTest::newRow("path") << QStringLiteral("a\\b") << QString();
    QTest::newRow("nothing") << QStringLiteral(" . ") << QString();
}

void DiskUsageOptionsTest::typedExtensionsAreTidied()
{
    QFETCH(QString, typed);
    QFETCH(QString, extension);
    DiskUsageAddFileTypesDialog dialog;
    dialog.show();
    QSignalSpy values(&dialog, &DiskUsageAddFileTypesDialog::newExtension);
    find<QLineEdit>(dialog, "FileTypeLineEdit")->setText(typed);
    QCOMPARE(find<QPushButton>(dialog, "OKButton")->isEnabled(), !extension.isEmpty());
    QTest::keyClick(find<QLineEdit>(dialog, "FileTypeLineEdit"), Qt::Key_Return);
    QCOMPARE(values.count(), extension.isEmpty() ? 0 : 1);
    QCOMPARE(dialog.isVisible(), extension.isEmpty());
    if (!extension.isEmpty())
        QCOMPARE(values.first().first().toString(), extension);
}

void DiskUsageOptionsTest::atMostTenFoldersAreExcluded()
{
    FakeDialogs dialogs;
    DiskUsageOptionsForm form;
    form.show();
    find<QTabWidget>(form, "optionsTabWidget")->setCurrentIndex(1);
    auto *list = find<QTreeWidget>(form, "excludeTreeWidget");
    for (int i = 0; i < 10; ++i) {
        QVERIFY(find<QPushButton>(form, "excludeAddButton")->isEnabled());
        dialogs.nextFolder.enqueue(QStringLiteral("C:\\f%1\\").arg(i));
        dialogs.nextFolder.enqueue(QStringLiteral("c:\\F%1").arg(i)); // the same folder once more
        click(form, "excludeAddButton");
        if (i < 9)
            click(form, "excludeAddButton");
        QCOMPARE(list->topLevelItemCount(), i + 1);
        dialogs.nextFolder.clear();
    }
    QVERIFY(!find<QPushButton>(form, "excludeAddButton")->isEnabled());
    QCOMPARE(list->topLevelItem(9)->text(0), QStringLiteral("C:\\f9"));
}

void DiskUsageOptionsTest::aRemovedFolderStaysRemoved()
{
    saveExcludedFolders(
        {{true, QStringLiteral("C:\\a")}, {false, QStringLiteral("C:\\b")}, {true, QStringLiteral("C:\\c")}});
    DiskUsageOptionsForm form;
    form.show();
    find<QTabWidget>(form, "optionsTabWidget")->setCurrentIndex(1);
    auto *list = find<QTreeWidget>(form, "excludeTreeWidget");
    list->setCurrentItem(list->topLevelItem(0));
    form.activateWindow(); // keys reach an active window only
    QVERIFY(QTest::qWaitForWindowActive(&form));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Delete);
    click(form, "saveButton");
    QCOMPARE(loadExcludedFolders(), std::vector<core::ExcludedFolder>(
                                        {{false, QStringLiteral("C:\\b")}, {true, QStringLiteral("C:\\c")}}));
}

void DiskUsageOptionsTest::siblingsThatGoTooAreNamed()
{
    const tests::TestFolder folder;
    for (const char *name : {"Data", "database", "Dat", "other"})
        folder.makeFolder(QLatin1String(name));
    folder.makeFile(QStringLiteral("Data.txt"));
    saveExcludedFolders({{true, folder.path(QStringLiteral("Data"))}});
    DiskUsageOptionsForm form;
    form.show();
    find<QTabWidget>(form, "optionsTabWidget")->setCurrentIndex(1);
    auto *note = find<QLabel>(form, "siblingNoteLabel");
    QTRY_VERIFY(note->isVisible());
    QVERIFY(note->text().contains(folder.path(QStringLiteral("database"))));
    QVERIFY(!note->text().contains(QStringLiteral("other")));
    QVERIFY(!note->text().contains(QStringLiteral("Data.txt")));
    // A row that is not checked leaves nothing out.
    find<QTreeWidget>(form, "excludeTreeWidget")->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    QTRY_VERIFY(!note->isVisible());
}

void DiskUsageOptionsTest::theOneDriveFolderIsOpened()
{
    tests::FakeShell shell;
    const QString environment = QStringLiteral("Environment");
    settings::writeString(environment, u"OneDrive", u"C:\\Users\\x\\OneDrive");
    DiskUsageOptionsForm form;
    form.show();
    find<QTabWidget>(form, "optionsTabWidget")->setCurrentIndex(1);
    click(form, "openOneDriveButton");
    QCOMPARE(shell.opened, QStringList({QStringLiteral("C:\\Users\\x\\OneDrive")}));
    settings::deleteValue(environment, u"OneDrive");
    form.load();
    QVERIFY(!find<QPushButton>(form, "openOneDriveButton")->isEnabled());
}

QTEST_MAIN(DiskUsageOptionsTest)
#include "tst_disk_usage_options.moc"
