// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/HotkeyAddDialog.h"
#include "automation/HotkeyForm.h"
#include "platform/HotKey.h"
#include "settings/HotKeySettings.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeShell.h"
#include "tests/support/FakeWindow.h"
#include "tests/support/RegistryTest.h"
#include "widgets/NoticeBar.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace
{

// The window of an agent that only notes what it is told.
class FakeAgent : public tests::FakeWindow
{
public:
    FakeAgent() : FakeWindow(u"GLASSWICK"_s, u"Transparent Taskbar"_s) {}

    QList<unsigned> taken() const
    {
        QList<unsigned> messages;
        MSG message;
        for (const unsigned wanted : {1624U, unsigned(WM_CLOSE)}) {
            while (PeekMessageW(&message, reinterpret_cast<HWND>(id()), wanted, wanted, PM_REMOVE))
                messages.append(message.message);
        }
        return messages;
    }
};

QString stored()
{
    return settings::hotKeyCommands.read().join(u'|');
}

} // namespace

class HotkeyFormTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void addsRemovesAndMoves();
    void refusesATakenCombination();
    void keepsWhatItCannotRead();
    void tellsTheAgent_data();
    void tellsTheAgent();
    void tellsWhoHoldsAKey_data();
    void tellsWhoHoldsAKey();
    void dialogStoresWhatItShows_data();
    void dialogStoresWhatItShows();
    void dialogTakesOneKey();
};

void HotkeyFormTest::addsRemovesAndMoves()
{
    const tests::FakeShell shell;
    HotkeyForm form;
    auto *view = form.findChild<QTreeView *>(u"treeView"_s);
    auto *remove = form.findChild<QToolButton *>(u"RemoveButton"_s);
    for (const auto &command : {u"01A4"_s, u"01B530"_s, u"01C1C:\\x"_s})
        form.insertData(command);
    QCOMPARE(stored(), u"01A4|01B530|01C1C:\\x"_s);
    QCOMPARE(view->model()->index(2, 0).data().toString(), u"Ctrl+Shift+C"_s);
    QCOMPARE(view->model()->index(2, 1).data().toString(), u"Open Folder: C:\\x"_s);

    view->setCurrentIndex(view->model()->index(0, 0));
    remove->click();
    QCOMPARE(stored(), u"01B530|01C1C:\\x"_s);
    QString third;
    QVERIFY(!settings::readString(settings::keys::hotKey, u"command2", third));

    view->setCurrentIndex(view->model()->index(0, 0));
    form.findChild<QToolButton *>(u"DownButton"_s)->click();
    QCOMPARE(stored(), u"01C1C:\\x|01B530"_s);
    view->clearSelection();
    QVERIFY(!remove->isEnabled());
}

void HotkeyFormTest::refusesATakenCombination()
{
    tests::FakeDialogs dialogs;
    const tests::FakeShell shell;
    const FakeAgent agent;
    HotkeyForm form;
    form.insertData(u"01K0notepad"_s);
    agent.taken();
    form.insertData(u"10k4"_s);
    QCOMPARE(stored(), u"01K0notepad"_s);
    QCOMPARE(dialogs.notes.size(), 1);
    QCOMPARE(dialogs.notes.first().title, u"Duplicate Found"_s);
    QCOMPARE(dialogs.notes.first().text, u"Shift+Ctrl+k is already used. Please use another combination."_s);
    QVERIFY(agent.taken().isEmpty());
}

void HotkeyFormTest::keepsWhatItCannotRead()
{
    const tests::FakeShell shell;
    settings::hotKeyCommands.write({u"rubbish"_s, u"01A4"_s});
    settings::writeDword(settings::keys::hotKey, u"commandCount", 0xffffffff);
    HotkeyForm form;
    form.insertData(u"01B4"_s);
    QCOMPARE(stored(), u"rubbish|01A4|01B4"_s);
}

void HotkeyFormTest::tellsTheAgent_data()
{
    QTest::addColumn<bool>("runs");
    QTest::addColumn<bool>("checked");
    QTest::addColumn<bool>("otherFeature");
    QTest::addColumn<int>("started");
    QTest::addColumn<QList<unsigned>>("told");
    using Messages = QList<unsigned>;
    QTest::newRow("on, not running") << false << true << false << 1 << Messages{};
    QTest::newRow("on, running") << true << true << false << 0 << Messages{1624};
    QTest::newRow("off, nothing else") << true << false << false << 0 << Messages{WM_CLOSE};
    QTest::newRow("off, tray icon on") << true << false << true << 0 << Messages{1624};
    QTest::newRow("off, not running") << false << false << true << 0 << Messages{};
}

void HotkeyFormTest::tellsTheAgent()
{
    QFETCH(const bool, runs);
    QFETCH(const bool, checked);
    QFETCH(const bool, otherFeature);
    const tests::FakeShell shell;
    settings::writeString(settings::keys::root, u"Path", u"C:\\suite");
    settings::writeDword(settings::keys::root, u"ShowTrayIcon", otherFeature ? 1 : 0);
    settings::hotKeysEnabled.write(!checked);
    HotkeyForm form;
    std::optional<FakeAgent> agent;
    if (runs)
        agent.emplace();
    form.findChild<QCheckBox *>(u"checkBox"_s)->setChecked(checked);
    QCOMPARE(settings::hotKeysEnabled.read(), checked);
    QTEST(int(shell.agents.size()), "started");
    if (!shell.agents.isEmpty())
        QCOMPARE(shell.agents.first(), u"C:\\suite\\Glasswick.exe"_s);
    QTEST(agent ? agent->taken() : QList<unsigned>(), "told");
}

void HotkeyFormTest::tellsWhoHoldsAKey_data()
{
    QTest::addColumn<bool>("agentRuns");
    QTest::addColumn<bool>("agentHolds");
    QTest::addColumn<bool>("otherHolds");
    QTest::addColumn<bool>("taken");
    QTest::newRow("nobody") << false << false << false << false;
    QTest::newRow("another program") << false << false << true << true;
    QTest::newRow("the agent") << true << true << false << false;
    QTest::newRow("the agent did not get it") << true << false << true << true;
}

void HotkeyFormTest::tellsWhoHoldsAKey()
{
    QFETCH(const bool, agentRuns);
    QFETCH(const bool, agentHolds);
    QFETCH(const bool, otherHolds);
    QFETCH(const bool, taken);
    const tests::FakeShell shell;
    settings::hotKeysEnabled.write(true);
    settings::hotKeyCommands.write({u"01K4"_s});
    const tests::FakeWindow other(u"Other"_s, u"Other"_s);
    std::optional<FakeAgent> agent;
    if (agentRuns)
        agent.emplace();
    const platform::HotKey keys = platform::hotKeyOf(u'k', true, true, false);
    if (agentHolds || otherHolds)
        QCOMPARE(platform::registerHotKey(agentHolds ? agent->id() : other.id(), 1, keys), 0U);
    HotkeyForm form;
    form.show();
    const auto *notice = form.findChild<NoticeBar *>(u"conflictsNotice"_s);
    QTest::qWait(1200);
    QCOMPARE(notice->text().contains(u"Ctrl+Shift+K"_s), taken);
    if (otherHolds && !agentRuns) {
        platform::unregisterHotKey(other.id(), 1, keys);
        QTRY_VERIFY(notice->text().isEmpty());
    }
}

void HotkeyFormTest::dialogStoresWhatItShows_data()
{
    QTest::addColumn<QString>("command");
    for (const auto &command :
         {u"01K0notepad"_s, u"21K0cmd;C:\\x"_s, u"01K1C:\\x"_s, u"01K2example.org"_s, u"01K3C:\\a.exe;"_s,
          u"01K3C:\\a.exe;D:\\"_s, u"01K4"_s, u"01K530"_s, u"01K60"_s})
        QTest::newRow(qPrintable(command)) << command;
}

void HotkeyFormTest::dialogStoresWhatItShows()
{
    QFETCH(const QString, command);
    HotkeyAddDialog dialog;
    QSignalSpy saved(&dialog, &HotkeyAddDialog::insertDataSignal);
    dialog.edit(*automation::parseCommand(command));
    dialog.findChild<QPushButton *>(u"saveButton"_s)->click();
    QCOMPARE(saved.size(), 1);
    QCOMPARE(saved.first().first().toString(), command);
}

void HotkeyFormTest::dialogTakesOneKey()
{
    HotkeyAddDialog dialog;
    auto *key = dialog.findChild<QLineEdit *>(u"key3LineEdit"_s);
    QVERIFY(!key->text().isEmpty());
    QTest::keyClicks(key, u"ab"_s);
    QCOMPARE(key->text(), u"B"_s);
    key->clear();
    QVERIFY(!dialog.findChild<QPushButton *>(u"saveButton"_s)->isEnabled());
}

QTEST_MAIN(HotkeyFormTest)
#include "tst_hotkey_form.moc"
