// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Handle.h"
#include "platform/Text.h"
#include "settings/Keys.h"
#include "settings/Settings.h"
#include "settings/Values.h"
#include "tests/support/RegistryTest.h"

#include <QByteArray>
#include <QLoggingCategory>
#include <QOperatingSystemVersion>
#include <QTest>

#include <atomic>
#include <thread>

using namespace Qt::StringLiterals;
using namespace settings;
using platform::RegKey;
using platform::wide;

namespace
{

const QString testKey = u"Software\\Fernlight Larkspur\\Test"_s;

RegKey createKey(const QString &path, REGSAM access = KEY_ALL_ACCESS, DWORD options = 0)
{
    RegKey key;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, wide(path), 0, nullptr, options, access, nullptr, key.put(),
                        nullptr) != ERROR_SUCCESS)
        qFatal("Cannot create %ls", qUtf16Printable(path));
    return key;
}

bool keyExists(const QString &path)
{
    RegKey key;
    return RegOpenKeyExW(HKEY_CURRENT_USER, wide(path), REG_OPTION_OPEN_LINK, KEY_READ, key.put()) ==
           ERROR_SUCCESS;
}

// Past the store: the bytes as they are, so that a value can be as broken as other programs leave them.
void store(const QString &name, DWORD type, const QByteArray &bytes)
{
    const RegKey key = createKey(testKey);
    if (RegSetValueExW(key.get(), wide(name), 0, type, reinterpret_cast<const BYTE *>(bytes.constData()),
                       static_cast<DWORD>(bytes.size())) != ERROR_SUCCESS)
        qFatal("Cannot store %ls", qUtf16Printable(name));
}

QByteArray storedBytes(const QString &name, DWORD expectedType)
{
    const RegKey key = createKey(testKey);
    QByteArray bytes(100'000, '\0');
    auto size = static_cast<DWORD>(bytes.size());
    DWORD type = REG_NONE;
    if (RegQueryValueExW(key.get(), wide(name), nullptr, &type, reinterpret_cast<BYTE *>(bytes.data()),
                         &size) != ERROR_SUCCESS ||
        type != expectedType)
        return "absent, or of another type";
    return bytes.left(size);
}

QByteArray utf16(const QString &text)
{
    return QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
}

const QByteArray four("\x2a\0\0\0", 4);
const QByteArray eight("\x2a\0\0\0\0\0\0\0", 8);
const QByteArray nul(2, '\0'); // the terminator of a text

struct Stored {
    DWORD type;
    QByteArray bytes;
};

} // namespace

class TestSettings : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void readsOnlyProperDwords();
    void readsWhateverTextIsStored();
    void expandsVariables();
    void writesTextWithTerminator();
    void survivesTextThatGrowsWhileItIsRead();
    void logs();
    void tellsValuesAndDeletesThem();
    void checksNumbersAndFlags();
    void deletesNestedKeys();
    void deletesTheDeepestTree();
    void stopsAtAChildThatStays();
    void deletesALinkAndSparesItsTarget();
    void refusesToDeleteTooMuch();
    void backgroundFeatures();
    void windows11();
};

void TestSettings::readsOnlyProperDwords()
{
    quint32 value = 986;
    for (const Stored &stored : {Stored{REG_DWORD, eight},
                                 {REG_DWORD, four.left(2)},
                                 {REG_DWORD, QByteArray()},
                                 {REG_QWORD, eight},
                                 {REG_BINARY, four},
                                 {REG_DWORD_BIG_ENDIAN, four},
                                 {REG_SZ, utf16(u"7"_s) + nul},
                                 {REG_SZ, utf16(QString(10'000, u'7')) + nul}}) {
        store(u"value"_s, stored.type, stored.bytes);
        QVERIFY2(!readDword(testKey, u"value", value), stored.bytes.toHex());
        QCOMPARE(value, 986u);
    }
    store(u"value"_s, REG_DWORD, four);
    QVERIFY(readDword(testKey, u"value", value));
    QCOMPARE(value, 42u);
}

void TestSettings::readsWhateverTextIsStored()
{
    const QByteArray abc = utf16(u"abc"_s);
    const QString surrogate(QChar(0xd83d)); // half of a pair
    const QString longText(10'000, u'x');
    QString read;
    for (const auto &[bytes, text] : {std::pair{abc + nul, u"abc"_s},
                                      {nul, QString()},
                                      {QByteArray(), QString()},
                                      {QByteArray("a"), QString()},
                                      {abc, u"abc"_s}, // no terminator
                                      {abc.left(5), u"ab"_s},
                                      {abc + nul + abc + nul, u"abc"_s},
                                      {abc + nul + nul, u"abc"_s},
                                      {utf16(longText) + nul, longText},
                                      {utf16(longText), longText},
                                      {utf16(surrogate) + nul, surrogate}}) {
        store(u"value"_s, REG_SZ, bytes);
        QVERIFY2(readString(testKey, u"value", read), bytes.toHex());
        QCOMPARE(read, text);
    }
    // What is no text, or not there, leaves nothing of the text before.
    for (const Stored &stored :
         {Stored{REG_DWORD, four}, {REG_BINARY, abc + nul}, {REG_MULTI_SZ, abc + nul + nul}}) {
        store(u"value"_s, stored.type, stored.bytes);
        read = u"before"_s;
        QVERIFY2(!readString(testKey, u"value", read), stored.bytes.toHex());
        QVERIFY(read.isEmpty());
    }
    for (const char16_t *key :
         {u"Software\\Fernlight Larkspur\\Test", u"Software\\Fernlight Larkspur\\No such key"}) {
        read = u"before"_s;
        QVERIFY(!readString(QStringView(key), u"no such value", read));
        QVERIFY(read.isEmpty());
    }
}

void TestSettings::expandsVariables()
{
    // The folder of OneDrive is often stored in this form. The stored text is shorter than the read one here
    // and longer there, so both directions of a wrong size would show.
    const QString variable = u"LARKSPUR_TEST"_s;
    for (const QString &content : {QString(3'000, u'y'), u"y"_s}) {
        QVERIFY(SetEnvironmentVariableW(wide(variable), wide(content)));
        store(u"value"_s, REG_EXPAND_SZ, utf16(u'%' + variable + u"%\\end"_s) + nul);
        QString read;
        QVERIFY(readString(testKey, u"value", read));
        QCOMPARE(read, content + u"\\end"_s);
    }
    SetEnvironmentVariableW(wide(variable), nullptr);
}

void TestSettings::writesTextWithTerminator()
{
    QVERIFY(!keyExists(testKey));
    for (const QString &text :
         {QString(), QString::fromUtf8("Straße \u0430\u0431\u0432 \u65e5\u672c \U0001F600"),
          QString::fromUtf8("ä").repeated(10'000), u"%PATH%"_s, u"a"_s + QChar(0xdc00)}) {
        QVERIFY(writeString(testKey, u"value", text));
        QCOMPARE(storedBytes(u"value"_s, REG_SZ), utf16(text) + nul);
        QString read = u"before"_s;
        QVERIFY(readString(testKey, u"value", read));
        QCOMPARE(read, text);
        // A value of another type is replaced, not appended to.
        QVERIFY(writeDword(testKey, u"value", 0xFFFFFFCE));
        QCOMPARE(storedBytes(u"value"_s, REG_DWORD), QByteArray("\xce\xff\xff\xff", 4));
    }
}

void TestSettings::survivesTextThatGrowsWhileItIsRead()
{
    // Between the question for the size and the reading, another process may store a longer text.
    const QString shortText = u"short"_s;
    const QString longText(5'000, u'x');
    QVERIFY(writeString(testKey, u"value", shortText));
    QLoggingCategory::setFilterRules(u"default.debug=false"_s); // thousands of lines
    std::atomic_bool stop = false;
    std::thread writer([&] {
        while (!stop) {
            writeString(testKey, u"value", longText);
            writeString(testKey, u"value", shortText);
        }
    });
    int readings = 0;
    for (; readings < 2'000; ++readings) {
        QString read;
        if (!readString(testKey, u"value", read) || (read != shortText && read != longText))
            break;
    }
    stop = true;
    writer.join();
    QLoggingCategory::setFilterRules(QString());
    QCOMPARE(readings, 2'000);
}

void TestSettings::logs()
{
    quint32 number = 0;
    QString text;
    QTest::ignoreMessage(QtDebugMsg,
                         "Software\\Fernlight Larkspur\\Test : posX: Cannot read DWORD from registry.");
    QVERIFY(!readDword(testKey, u"posX", number));
    QTest::ignoreMessage(QtDebugMsg, "error");
    QVERIFY(!readString(testKey, u"Path", text));
    QTest::ignoreMessage(QtDebugMsg, "true");
    QVERIFY(writeDword(testKey, u"posX", 1));
    QTest::ignoreMessage(QtDebugMsg, "true");
    QVERIFY(writeString(testKey, u"Path", u"x"));
    createKey(testKey + u"\\child"_s);
    QTest::ignoreMessage(QtDebugMsg, "RegDeleteKeyEx Enumerate the keys");
    QTest::ignoreMessage(QtDebugMsg, "RegDeleteKeyEx alsoDeleteChildKey");
    QTest::ignoreMessage(QtDebugMsg, "RegDeleteKeyEx Enumerate the keys");
    QVERIFY(deleteKeyWithSubkeys(testKey));
}

void TestSettings::tellsValuesAndDeletesThem()
{
    QVERIFY(!valueExists(testKey, u"value"));
    QVERIFY(!deleteValue(testKey, u"value"));
    store(u"value"_s, REG_NONE, QByteArray());
    QVERIFY(valueExists(testKey, u"value"));
    QVERIFY(deleteValue(testKey, u"value"));
    QVERIFY(!valueExists(testKey, u"value"));
    QVERIFY(keyExists(testKey));
}

void TestSettings::checksNumbersAndFlags()
{
    constexpr Number number{u"Software\\Fernlight Larkspur\\Test", u"value", 7, -100, 100};
    QCOMPARE(number.read(), 7);
    for (const auto &[stored, read] : {std::pair{-101, 7}, {-100, -100}, {100, 100}, {101, 7}}) {
        writeDword(testKey, u"value", static_cast<quint32>(stored));
        QCOMPARE(number.read(), read);
    }
    number.write(-50);
    QCOMPARE(number.read(), -50);

    constexpr Flag enabled{keys::hotKey, u"Enabled", true};
    QVERIFY(enabled.read());
    enabled.write(false);
    QVERIFY(!enabled.read());
    writeDword(keys::hotKey, u"Enabled", 2);
    QVERIFY(enabled.read());
}

void TestSettings::deletesNestedKeys()
{
    const QString longName(255, u'0'); // sorts first
    for (const char16_t *child : {u"a\\b\\c", u"a\\d", u"e", u"f\\g"})
        createKey(testKey + u'\\' + QString::fromUtf16(child));
    createKey(testKey + u'\\' + longName + u"\\below"_s);
    writeDword(testKey + u"\\a\\b"_s, u"value", 1);
    writeDword(keys::root, u"posX", 5);

    QVERIFY(deleteKeyWithSubkeys(testKey));
    QVERIFY(!keyExists(testKey));
    QVERIFY(valueExists(keys::root, u"posX"));
    QVERIFY(!deleteKeyWithSubkeys(testKey)); // there is nothing to delete any more
}

void TestSettings::deletesTheDeepestTree()
{
    // Windows allows 512 levels; some are taken by the way to the user's part.
    RegKey key = createKey(testKey);
    for (int level = 0; level < 480; ++level) {
        RegKey child;
        QCOMPARE(
            RegCreateKeyExW(key.get(), L"x", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, child.put(), nullptr),
            ERROR_SUCCESS);
        key = std::move(child);
    }
    key.reset();
    QVERIFY(deleteKeyWithSubkeys(testKey));
    QVERIFY(!keyExists(testKey));
}

void TestSettings::stopsAtAChildThatStays()
{
    // A child that cannot be deleted would be met at index 0 for ever. A key whose rights forbid everything
    // is one.
    const QString child = testKey + u"\\locked"_s;
    const RegKey key = createKey(child, KEY_ALL_ACCESS);
    SECURITY_DESCRIPTOR nobody = {};
    ACL empty = {};
    QVERIFY(InitializeSecurityDescriptor(&nobody, SECURITY_DESCRIPTOR_REVISION));
    QVERIFY(InitializeAcl(&empty, sizeof empty, ACL_REVISION));
    QVERIFY(SetSecurityDescriptorDacl(&nobody, TRUE, &empty, FALSE));
    QCOMPARE(RegSetKeySecurity(key.get(), DACL_SECURITY_INFORMATION, &nobody), ERROR_SUCCESS);
    if (keyExists(child))
        QSKIP("This Windows does not enforce the rights of registry keys.");

    QVERIFY(!deleteKeyWithSubkeys(testKey));
    QVERIFY(keyExists(testKey));

    QVERIFY(SetSecurityDescriptorDacl(&nobody, TRUE, nullptr, FALSE));
    QCOMPARE(RegSetKeySecurity(key.get(), DACL_SECURITY_INFORMATION, &nobody), ERROR_SUCCESS);
    QVERIFY(deleteKeyWithSubkeys(testKey));
}

void TestSettings::deletesALinkAndSparesItsTarget()
{
    const QString target = u"Software\\Fernlight Larkspur\\Target"_s;
    createKey(target + u"\\precious"_s);
    {
        // A link holds the kernel's name of its target, which begins with the user's own part of the
        // registry.
        const RegKey user = createKey(u"Software\\Fernlight Larkspur"_s);
        QByteArray name(2'000, '\0');
        using QueryKey = LONG(NTAPI *)(HANDLE, int, void *, ULONG, ULONG *);
        const auto query = reinterpret_cast<QueryKey>(
            reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"ntdll"), "NtQueryKey")));
        constexpr int keyNameInformation = 3;
        ULONG size = 0;
        QCOMPARE(query(user.get(), keyNameInformation, name.data(), static_cast<ULONG>(name.size()), &size),
                 0L);
        const auto length = *reinterpret_cast<const ULONG *>(name.constData());
        const QString kernelName =
            QString::fromUtf16(reinterpret_cast<const char16_t *>(name.constData() + 4), length / 2);

        const RegKey link = createKey(testKey + u"\\link"_s, KEY_ALL_ACCESS, REG_OPTION_CREATE_LINK);
        const QByteArray goal = utf16(kernelName + u"\\Target"_s);
        QCOMPARE(RegSetValueExW(link.get(), L"SymbolicLinkValue", 0, REG_LINK,
                                reinterpret_cast<const BYTE *>(goal.constData()),
                                static_cast<DWORD>(goal.size())),
                 ERROR_SUCCESS);
    }
    writeDword(target, u"value", 42);
    quint32 through = 0;
    QVERIFY(readDword(testKey + u"\\link"_s, u"value", through)); // it does lead there
    QCOMPARE(through, 42u);

    QVERIFY(deleteKeyWithSubkeys(testKey));
    QVERIFY(!keyExists(testKey));
    QVERIFY(keyExists(target + u"\\precious"_s));
    QVERIFY(valueExists(target, u"value"));
}

// Every path that is refused leads to a key of our own when it is misread, so a fault cannot do harm either:
// the store is asked to delete "Larkspur Test Only", never "Software".
void TestSettings::refusesToDeleteTooMuch()
{
    const QString own = u"Larkspur Test Only"_s;
    const QString child = own + u"\\child"_s;
    createKey(child);
    for (const QString &path : {own, own + u'\\', u'\\' + own, u'\\' + own + u'\\', own + u"\\\\child"_s,
                                own + QChar(QChar::Null) + u"\\child"_s, own + u'\\' + QChar(QChar::Null)}) {
        QVERIFY2(!deleteKeyWithSubkeys(path), qPrintable(path));
        QVERIFY(keyExists(child));
    }
    // What is refused has to be refused by its text and not by luck: the same key two levels deep does go.
    QVERIFY(deleteKeyWithSubkeys(child));
    QCOMPARE(RegDeleteKeyW(HKEY_CURRENT_USER, wide(own)), ERROR_SUCCESS);
}

void TestSettings::backgroundFeatures()
{
    for (const auto &[key, name] : {std::pair<QStringView, QStringView>{keys::autoDarkMode, u"Enabled"},
                                    {keys::glasswick, u"Enabled"},
                                    {keys::root, u"ShowTrayIcon"},
                                    {keys::root, u"StayAwakeActive"},
                                    {keys::hotKey, u"Enabled"}}) {
        QVERIFY(!backgroundFeaturesEnabled());
        writeDword(key, name, 2);
        QVERIFY2(backgroundFeaturesEnabled(), qPrintable(key.toString() + name.toString()));
        writeString(key, name, u"1");
    }
    QVERIFY(!backgroundFeaturesEnabled());
}

void TestSettings::windows11()
{
    QVERIFY(!isWindows11Version(6, 30000));
    QVERIFY(!isWindows11Version(10, 21999));
    QVERIFY(isWindows11Version(10, 22000));
    QVERIFY(isWindows11Version(11, 1));
    QCOMPARE(isWindows11(), QOperatingSystemVersion::current() >= QOperatingSystemVersion::Windows11);
}

QTEST_GUILESS_MAIN(TestSettings)

#include "tst_settings.moc"
