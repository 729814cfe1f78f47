// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/ShortcutCommand.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace automation;
using enum ShortcutAction;

class ShortcutCommandTest : public QObject
{
    Q_OBJECT

private slots:
    void storedForm_data();
    void storedForm();
    void refused_data();
    void refused();
    void sameCombination();
    void addresses_data();
    void addresses();
};

void ShortcutCommandTest::storedForm_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<ShortcutCommand>("command");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("action");
    const auto row = [](const char *name, const QString &text, ShortcutCommand command, const QString &keys,
                        const QString &action) { QTest::newRow(name) << text << command << keys << action; };
    constexpr auto ctrl = Modifier::Ctrl, shift = Modifier::Shift, windows = Modifier::Windows;
    row("app", u"01K0notepad"_s, {ctrl, shift, u"K"_s, OpenBuiltInApp, u"notepad"_s}, u"Ctrl+Shift+K"_s,
        u"Open Windows 11 App: notepad"_s);
    row("app in a folder", u"01K0cmd;C:\\x;y"_s,
        {ctrl, shift, u"K"_s, OpenBuiltInApp, u"cmd"_s, u"C:\\x;y"_s}, u"Ctrl+Shift+K"_s,
        u"Open Windows 11 App: cmd;C:\\x;y"_s);
    row("folder", u"20\u00e91C:\\x"_s, {windows, ctrl, u"\u00e9"_s, OpenFolder, u"C:\\x"_s},
        u"Windows+Ctrl+\u00e9"_s, u"Open Folder: C:\\x"_s);
    row("website", u"1152example.org"_s, {shift, shift, u"5"_s, OpenWebsite, u"example.org"_s},
        u"Shift+Shift+5"_s, u"Open Website: example.org"_s);
    row("other app", u"01K3C:\\a.exe;"_s, {ctrl, shift, u"K"_s, OpenOtherApp, u"C:\\a.exe"_s},
        u"Ctrl+Shift+K"_s, u"Open Other App: C:\\a.exe"_s);
    row("names with a semicolon", u"01K3C:\\a;b.exe;D:\\c;d"_s,
        {ctrl, shift, u"K"_s, OpenOtherApp, u"C:\\a;b.exe"_s, u"D:\\c;d"_s}, u"Ctrl+Shift+K"_s,
        u"Open Other App: C:\\a;b.exe;D:\\c;d"_s);
    row("paste", u"01;4"_s, {ctrl, shift, u";"_s, PastePlainText}, u"Ctrl+Shift+;"_s,
        u"Paste as Plain Text"_s);
    row("restart", u"01K530"_s, {ctrl, shift, u"K"_s, Restart, {}, {}, 30}, u"Ctrl+Shift+K"_s,
        u"Restart Windows"_s);
    // Stored without a key, this was a restart after a minute; it reads as one that shuts down on "5".
    row("ambiguous without a key", u"01560"_s, {ctrl, shift, u"5"_s, ShutDown, {}, {}, 0}, u"Ctrl+Shift+5"_s,
        u"Shutdown Windows"_s);
}

void ShortcutCommandTest::storedForm()
{
    QFETCH(const QString, text);
    QFETCH(const ShortcutCommand, command);
    QVERIFY(parseCommand(text) == command);
    QCOMPARE(commandText(command), text);
    QTEST(keyText(text), "keys");
    QTEST(actionText(text), "action");
}

void ShortcutCommandTest::refused_data()
{
    QTest::addColumn<QString>("text");
    for (const auto &text : {u""_s,
                             u"0"_s,
                             u"01"_s,
                             u"01K"_s,
                             u"03K4"_s,
                             u"x1K4"_s,
                             u"01K7"_s,
                             u"01 4"_s,
                             u"01\n4"_s,
                             u"01F10notepad"_s,
                             u"01K0format"_s,
                             u"01K0"_s,
                             u"01K1"_s,
                             u"01K3"_s,
                             u"01K3;x"_s,
                             u"01K4x"_s,
                             u"01K5"_s,
                             u"01K5-1"_s,
                             u"01K5 30"_s,
                             u"01K686401"_s,
                             u"01K69999999999"_s,
                             u"01K5\u0663"_s})
        QTest::newRow(qPrintable(text)) << text;
}

void ShortcutCommandTest::refused()
{
    QFETCH(const QString, text);
    QVERIFY(!parseCommand(text));
    QVERIFY(actionText(text).startsWith(u"Cannot be read"));
}

void ShortcutCommandTest::sameCombination()
{
    QVERIFY(sameKeys(u"01K0notepad"_s, u"01K4"_s));
    QVERIFY(sameKeys(u"01K4"_s, u"10k4"_s));
    QVERIFY(sameKeys(u"00K4"_s, u"00k510"_s));
    QVERIFY(!sameKeys(u"01K4"_s, u"02K4"_s));
    QVERIFY(!sameKeys(u"00K4"_s, u"01K4"_s));
    QVERIFY(!sameKeys(u"01K4"_s, u"01L4"_s));
    QVERIFY(sameKeys(u"damaged"_s, u"damaged"_s));
    QVERIFY(!sameKeys(u"damaged"_s, u"broken"_s));
}

void ShortcutCommandTest::addresses_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("opened");
    const auto row = [](const QString &typed, const QString &opened) {
        QTest::newRow(qPrintable(typed)) << typed << opened;
    };
    row(u"example.org/a b"_s, u"https://example.org/a%20b"_s);
    row(u" http://example.org "_s, u"http://example.org"_s);
    row(u"mailto:a@example.org"_s, u"mailto:a@example.org"_s);
    row(u"example.org:8080/x"_s, u"https://example.org:8080/x"_s);
    for (const auto &refused :
         {u""_s, u"file:///C:/a.exe"_s, u"C:\\a.exe"_s, u"ms-settings://x"_s, u"https://"_s})
        row(refused, {});
}

void ShortcutCommandTest::addresses()
{
    QFETCH(const QString, typed);
    QTEST(openableAddress(typed), "opened");
}

QTEST_APPLESS_MAIN(ShortcutCommandTest)
#include "tst_shortcut_command.moc"
