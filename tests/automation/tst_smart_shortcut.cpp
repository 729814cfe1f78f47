// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/shortcuts/ShortcutFiles.h"
#include "automation/shortcuts/SmartShortcutDialog.h"
#include "automation/shortcuts/SmartShortcutForm.h"
#include "settings/Settings.h"
#include "settings/SmartShortcutSettings.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeRecycleBin.h"
#include "tests/support/FakeShell.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <algorithm>

using namespace automation;
using namespace Qt::StringLiterals;

namespace
{

QString besideTests(const QString &path)
{
    return QDir::toNativeSeparators(QDir::cleanPath(QCoreApplication::applicationDirPath() + u'/' + path));
}

QString starter()
{
    return besideTests(u"../../companions/LarkspurStart/LarkspurStart.exe"_s);
}

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

QList<SmartShortcut> listed(const tests::TestFolder &folder)
{
    const core::CancelFlag cancel;
    return findSmartShortcuts({{u"Here"_s, folder.path(), true}}, starter(), cancel).found;
}

ShortcutWish wishOf(const QString &name, const QString &program)
{
    ShortcutWish wish;
    wish.name = name;
    wish.start = {Priority::High, 1, program, u"-x \"a b\" %PATH% ^&"_s};
    return wish;
}

} // namespace

class SmartShortcutTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void startsAsAsked();
    void listsOnlyItsOwn();
    void changesNothingElse();
    void addsInTheForm();
    void repairsAndRemovesInTheForm();
};

void SmartShortcutTest::startsAsAsked()
{
    const tests::TestFolder folder;
    const QString program = besideTests(u"started_program.exe"_s);
    QProcess process;
    process.setProgram(starter());
    process.setWorkingDirectory(folder.path());
    process.setNativeArguments(startText(wishOf(u"x"_s, program).start));
    process.start();
    QVERIFY2(process.waitForFinished(), qPrintable(process.errorString()));
    QCOMPARE(process.exitCode(), 0);
    const QString note = folder.path(u"started.txt"_s);
    QTRY_COMPARE(content(note).simplified(), QByteArray("started 80 1 -x \"a b\" %PATH% ^&"));
}

void SmartShortcutTest::listsOnlyItsOwn()
{
    const tests::TestFolder folder;
    const QString program = folder.makeFile(u"tool.exe"_s);
    folder.makeFile(u"rubbish.lnk"_s, "L\0\0\0rubbish");
    QDir(folder.path()).mkdir(u"deep"_s);
    QCOMPARE(makeShortcut(folder.path(), wishOf(u"b"_s, program), starter()), QString());
    QCOMPARE(makeShortcut(folder.path(u"deep"_s), wishOf(u"A"_s, folder.path(u"gone.exe"_s)), starter()),
             QString());
    QCOMPARE(makeShortcut(folder.path(), wishOf(u"moved"_s, program), u"C:\\old\\LarkspurStart.exe"_s),
             QString());
    QVERIFY(makeShortcut(folder.path(), wishOf(u"B"_s, program), starter()).contains(u"already"_s));
    platform::ShortcutFile other;
    other.target = program;
    other.arguments = startText(wishOf(u"b"_s, program).start);
    folder.makeFile(u"other.lnk"_s, platform::shortcutBytes(other));
    other.target = starter();
    other.arguments = u"/priority:realtime \"C:\\x.exe\""_s;
    folder.makeFile(u"odd.lnk"_s, platform::shortcutBytes(other));

    const QList<SmartShortcut> found = listed(folder);
    QStringList names;
    for (const SmartShortcut &shortcut : found)
        names.append(shortcut.name);
    QCOMPARE(names, QStringList({u"A"_s, u"b"_s, u"moved"_s, u"odd"_s}));
    QVERIFY(!found[0].programIsThere && found[0].starterIsThere);
    QVERIFY(found[1].programIsThere && found[1].start == wishOf(u"b"_s, program).start);
    QCOMPARE(found[1].file.iconPath, program);
    QCOMPARE(found[1].file.workingFolder, folder.path());
    QVERIFY(!found[2].starterIsThere);
    QVERIFY(!found[3].start);
}

void SmartShortcutTest::changesNothingElse()
{
    const tests::TestFolder folder;
    const QString program = folder.makeFile(u"tool.exe"_s);
    ShortcutWish wish = wishOf(u"a"_s, program);
    QCOMPARE(makeShortcut(folder.path(), wish, starter()), QString());
    folder.makeFile(u"taken.lnk"_s, "mine");
    const SmartShortcut first = listed(folder).value(0);

    wish.name = u"taken"_s;
    QVERIFY(changeShortcut(first, wish, starter()).contains(u"already"_s));
    QCOMPARE(content(folder.path(u"taken.lnk"_s)), QByteArray("mine"));
    wish.name = u"c"_s;
    wish.start.priority = Priority::Idle;
    wish.window = platform::ShortcutFile::Window::Minimized;
    QCOMPARE(changeShortcut(first, wish, starter()), QString());
    QVERIFY(!QFile::exists(first.item.path));
    const SmartShortcut second = listed(folder).value(0);
    QVERIFY(second.name == u"c"_s && second.start == wish.start);
    QCOMPARE(second.file.window, wish.window);

    // By now it is another file than the one that was listed.
    QFile file(second.item.path);
    QVERIFY(file.open(QFile::Append) && file.write("x") == 1);
    file.close();
    const QByteArray before = content(second.item.path);
    QVERIFY(!changeShortcut(second, wish, starter()).isEmpty());
    QCOMPARE(content(second.item.path), before);
}

void SmartShortcutTest::addsInTheForm()
{
    const tests::TestFolder folder;
    const QString program = folder.makeFile(u"tool.exe"_s);
    settings::writeString(settings::keys::root, u"Path", starter().section(u'\\', 0, -2));
    settings::smartShortcutFolder.write(folder.path() + u'\\');
    SmartShortcutForm form;
    form.show();
    form.findChild<QToolButton *>(u"AddButton"_s)->click();
    auto *dialog = form.findChild<SmartShortcutDialog *>();
    auto *save = dialog->findChild<QPushButton *>(u"saveButton"_s);
    QVERIFY(!save->isEnabled());
    dialog->propose(program);
    auto *name = dialog->findChild<QLineEdit *>(u"nameLineEdit"_s);
    QTRY_COMPARE(name->text(), u"tool (above normal priority)"_s);
    auto *priority = dialog->findChild<QComboBox *>(u"priorityComboBox"_s);
    priority->setCurrentIndex(priority->findText(u"High"_s));
    QCOMPARE(name->text(), u"tool (high priority)"_s);
    name->setText(u"mine"_s);
    priority->setCurrentIndex(priority->findText(u"Idle"_s));
    QCOMPARE(name->text(), u"mine"_s);
    auto *place = dialog->findChild<QComboBox *>(u"placeComboBox"_s);
    place->setCurrentIndex(place->findData(folder.path()));
    save->click();
    auto *view = form.findChild<FLTreeView *>(u"treeView"_s);
    QTRY_VERIFY(view->selectionModel()->hasSelection());
    QCOMPARE(view->selectionModel()->selectedRows(2).first().data().toString(), u"Idle"_s);
    QCOMPARE(listed(folder).value(0).name, u"mine"_s);
    QVERIFY(form.findChild<QToolButton *>(u"TestButton"_s)->isEnabled());
}

void SmartShortcutTest::repairsAndRemovesInTheForm()
{
    const tests::TestFolder folder;
    tests::FakeDialogs dialogs;
    tests::FakeRecycleBin bin(folder.path());
    const tests::FakeShell shell;
    settings::writeString(settings::keys::root, u"Path", starter().section(u'\\', 0, -2));
    settings::smartShortcutFolder.write(folder.path());
    const ShortcutWish wish = wishOf(u"a"_s, folder.path(u"old\\tool.exe"_s));
    QCOMPARE(makeShortcut(folder.path(), wish, starter()), QString());
    SmartShortcutForm form;
    form.show();
    auto *view = form.findChild<FLTreeView *>(u"treeView"_s);
    QTRY_COMPARE(view->model()->rowCount(), 1);
    QVERIFY(!form.findChild<NoticeBar *>(u"brokenNotice"_s)->text().isEmpty());
    view->setCurrentIndex(view->model()->index(0, 0));
    QVERIFY(!form.findChild<QToolButton *>(u"TestButton"_s)->isEnabled());

    dialogs.nextFilesToOpen.enqueue({folder.makeFile(u"new\\tool.exe"_s)});
    form.findChild<QToolButton *>(u"RepairButton"_s)->click();
    QTRY_VERIFY(form.findChild<NoticeBar *>(u"brokenNotice"_s)->text().isEmpty());
    const SmartShortcut repaired = listed(folder).value(0);
    QCOMPARE(repaired.start->program, folder.path(u"new\\tool.exe"_s));
    QCOMPARE(repaired.start->arguments, wish.start.arguments);
    QCOMPARE(repaired.file.workingFolder, folder.path(u"new"_s));

    bin.tellsNoPlace = true;
    form.findChild<QToolButton *>(u"RemoveButton"_s)->click();
    QTRY_COMPARE(bin.taken, QStringList{repaired.item.path});
    QTRY_COMPARE(view->model()->rowCount(), 0);
    const auto notices = form.findChildren<NoticeBar *>();
    QVERIFY(std::ranges::any_of(
        notices, [](const NoticeBar *bar) { return bar->text().contains(u"did not tell where"_s); }));
}

QTEST_MAIN(SmartShortcutTest)
#include "tst_smart_shortcut.moc"
