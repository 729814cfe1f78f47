// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/RegFile.h"
#include "tests/TrackCleaner/engine/TraceWorld.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tests;
using namespace tracks;

namespace
{

const QString typedPaths = explorer + u"\\TypedPaths"_s;
const QString head = u"Windows Registry Editor Version 5.00\r\n\r\n"_s;

QByteArray fileOf(const QString &text)
{
    return "\xFF\xFE" + utf16(text, false);
}

QString underKey(const QString &key, const QString &lines)
{
    return head + u"[HKEY_CURRENT_USER\\"_s + key + u"]\r\n"_s + lines;
}

} // namespace

class RegFileTest : public QObject
{
    Q_OBJECT

private slots:
    void asTheRegistryEditorWrites();
    void everyValueComesBack();
    void faults_data();
    void faults();
    void foundValuesOfTheItems();
};

void RegFileTest::asTheRegistryEditorWrites()
{
    const std::vector<RegistryKey> keys{{typedPaths,
                                         0,
                                         {textValue({}, u"d"_s),
                                          textValue(u"url1"_s, u"C:\\a \"b\""_s),
                                          binaryValue(u"b"_s, QByteArray(27, '\xAB')),
                                          {u"n"_s, RegistryDword, QByteArray("\x0A\0\0\0", 4)},
                                          {u"e"_s, 2, QByteArray("%\0\0\0", 4)}},
                                         {}}};
    const QString text = underKey(
        typedPaths, u"@=\"d\"\r\n\"url1\"=\"C:\\\\a \\\"b\\\"\"\r\n"
                    "\"b\"=hex:ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,\\\r\n"
                    "  ab,ab,ab\r\n\"n\"=dword:0000000a\r\n\"e\"=hex(2):25,00,00,00\r\n\r\n"_s);
    QCOMPARE(regFile(keys), fileOf(text));
}

// Data that a quoted string or a number cannot hold must not be bent into one.
void RegFileTest::everyValueComesBack()
{
    const QByteArray unterminated = utf16(u"cmd\\1"_s, false);
    const std::vector<RegistryKey> keys{{explorer + u"\\RecentDocs\\.txt"_s,
                                         0,
                                         {{u"odd"_s, RegistryText, "abc"},
                                          {u"unterminated"_s, RegistryText, unterminated},
                                          {u"empty"_s, RegistryText, {}},
                                          {u"two lines"_s, RegistryText, utf16(u"a\r\nb"_s)},
                                          {u"nul within"_s, RegistryText, utf16(u"a\0b"_s)},
                                          {u"short"_s, RegistryDword, "abc"},
                                          {u"long"_s, RegistryBinary, QByteArray(5000, '\x01')},
                                          {u"none"_s, RegistryNone, "x"},
                                          {u"=\"[\\"_s, 7, utf16(u"a"_s)},
                                          textValue(u"at the end"_s, u"C:\\"_s),
                                          textValue(u"@"_s, u"[x]"_s)},
                                         {}}};
    const RegFileContent content = parseRegFile(regFile(keys));
    QCOMPARE(content.fault, RegFileFault::None);
    QCOMPARE(content.keys.size(), 1U);
    QCOMPARE(content.keys[0].path, keys[0].path);
    for (std::size_t i = 0; i < keys[0].values.size(); ++i)
        QVERIFY2(content.keys[0].values.at(i) == keys[0].values[i], qPrintable(keys[0].values[i].name));

    MemoryRegistry registry;
    QVERIFY(putBack(content.keys, registry));
    QVERIFY(registry.keys[keys[0].path] == keys[0].values);
    registry.refusedValue = u"long"_s;
    QVERIFY(!putBack(content.keys, registry));
}

void RegFileTest::faults_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<RegFileFault>("fault");
    QTest::addColumn<int>("line");
    const auto row = [](const char *name, const QString &text, RegFileFault fault, int line) {
        QTest::newRow(name) << fileOf(text) << fault << line;
    };
    QTest::newRow("empty") << QByteArray() << RegFileFault::NotARegFile << 1;
    QTest::newRow("a byte missing") << fileOf(underKey(typedPaths, {})).chopped(1)
                                    << RegFileFault::NotARegFile << 1;
    row("another format", u"REGEDIT4\r\n"_s, RegFileFault::NotARegFile, 1);
    row("a foreign key", underKey(u"Software\\Run"_s, {}), RegFileFault::OtherKeys, 3);
    row("a key beside", underKey(typedPaths + u"2"_s, {}), RegFileFault::OtherKeys, 3);
    row("a key below one that has none", underKey(typedPaths + u"\\x"_s, {}), RegFileFault::OtherKeys, 3);
    row("another hive", head + u"[HKEY_LOCAL_MACHINE\\x]"_s, RegFileFault::OtherKeys, 3);
    row("a key to be deleted", head + u"[-HKEY_CURRENT_USER\\"_s + typedPaths + u"]"_s,
        RegFileFault::Deletions, 3);
    row("a value to be deleted", underKey(typedPaths, u"\"a\"=-"_s), RegFileFault::Deletions, 4);
    row("no key before", head + u"\"a\"=\"b\""_s, RegFileFault::Damaged, 3);
    row("open string", underKey(typedPaths, u"\"a\"=\"b"_s), RegFileFault::Damaged, 4);
    row("rest behind a string", underKey(typedPaths, u"\"a\"=\"b\"c"_s), RegFileFault::Damaged, 4);
    row("no number", underKey(typedPaths, u"\"a\"=dword:0g"_s), RegFileFault::Damaged, 4);
    row("a byte too large", underKey(typedPaths, u"\"a\"=hex:00,100"_s), RegFileFault::Damaged, 4);
    row("broken off", underKey(typedPaths, u"\"a\"=hex:00,\\"_s), RegFileFault::Damaged, 4);
    row("comments and empty lines", underKey(typedPaths, u"\r\n; note\r\n\"a\"=\"b\"\r\n"_s),
        RegFileFault::None, 0);
}

void RegFileTest::faults()
{
    QFETCH(QByteArray, bytes);
    QFETCH(RegFileFault, fault);
    QFETCH(int, line);
    const RegFileContent content = parseRegFile(bytes);
    QCOMPARE(content.fault, fault);
    QCOMPARE(content.line, line);
    QCOMPARE(content.keys.empty(), fault != RegFileFault::None);
}

void RegFileTest::foundValuesOfTheItems()
{
    TraceWorld world;
    world.registry.keys[typedPaths] = {textValue(u"url1"_s, u"C:\\"_s), textValue(u"url2"_s, u"D:\\"_s)};
    world.registry.keys[explorer + u"\\RunMRU"_s] = {textValue(u"a"_s, u"cmd\\1"_s)};
    const ScanResult found = world.scan({Item::TypedPaths, Item::RunDialog});
    QCOMPARE(foundKeys(found, world.options.items).size(), 2U);
    const std::vector<RegistryKey> keys = foundKeys(found, {false, true});
    QCOMPARE(keys.size(), 1U);
    QVERIFY(keys[0].values == world.registry.keys[typedPaths]);
}

QTEST_GUILESS_MAIN(RegFileTest)
#include "tst_reg_file.moc"
