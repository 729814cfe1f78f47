// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/settings/Keys.h"
#include "app/settings/Settings.h"
#include "app/settings/Values.h"
#include "platform/Handle.h"
#include "platform/Text.h"
#include "tests/support/TestPrefix.h"

#include <QByteArray>
#include <QLoggingCategory>
#include <QOperatingSystemVersion>
#include <QTest>

#include <atomic>
#include <memory>
#include <thread>

using namespace settings;
using platform::RegKey;
using platform::wide;

namespace
{

const QString testKey = QStringLiteral("Software\\Fernlight Larkspur\\Test");

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

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void init() { m_guard = std::make_unique<tests::RegistryGuard>(); }
    void cleanup() { m_guard.reset(); }

    void readsOnlyProperDwords_data();
    void readsOnlyProperDwords();
    void readsWhateverTextIsStored_data();
    void readsWhateverTextIsStored();
    void expandsVariables();
    void writesTextWithTerminator_data();
    void writesTextWithTerminator();
    void survivesTextThatGrowsWhileItIsRead();
    void logs();
    void tellsValuesAndDeletesThem();
    void checksNumbers();
    void flagsAreOnForAnyNumber();
    void deletesNestedKeys();
    void deletesTheDeepestTree();
    void stopsAtAChildThatStays();
    void deletesALinkAndSparesItsTarget();
    void refusesToDeleteTooMuch_data();
    void refusesToDeleteTooMuch();
    void backgroundFeatures();
    void windows11();

private:
    std::unique_ptr<tests::RegistryGuard> m_guard;
};

void TestSettings::readsOnlyProperDwords_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("readable");

    QTest::newRow("dword") << quint32{REG_DWORD} << four << true;
    QTest::newRow("dword of eight bytes") << quint32{REG_DWORD} << eight << false;
    QTest::newRow("dword of two bytes") << quint32{REG_DWORD} << four.left(2) << false;
    QTest::newRow("dword of no bytes") << quint32{REG_DWORD} << QByteArray() << false;
    QTest::newRow("qword") << quint32{REG_QWORD} << eight << false;
    QTest::newRow("binary") << quint32{REG_BINARY} << four << false;
    QTest::newRow("big endian") << quint32{REG_DWORD_BIG_ENDIAN} << four << false;
    QTest::newRow("text") << quint32{REG_SZ} << utf16(QStringLiteral("7")) << false;
    QTest::newRow("long text") << quint32{REG_SZ} << utf16(QString(10'000, u'7')) << false;
}

void TestSettings::readsOnlyProperDwords()
{
    QFETCH(quint32, type);
    QFETCH(QByteArray, bytes);
    QFETCH(bool, readable);
    store(QStringLiteral("value"), type, bytes);

    quint32 value = 986;
    QCOMPARE(readDword(testKey, u"value", value), readable);
    QCOMPARE(value, readable ? 42u : 986u);
}

void TestSettings::readsWhateverTextIsStored_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("readable");
    QTest::addColumn<QString>("text");

    const QByteArray nul(2, '\0');
    const auto row = [](const char *name, const QByteArray &bytes, const QString &text) {
        QTest::newRow(name) << quint32{REG_SZ} << bytes << true << text;
    };
    const QString abc = QStringLiteral("abc");
    row("plain", utf16(abc) + nul, abc);
    row("only a terminator", nul, QString());
    row("no bytes at all", QByteArray(), QString());
    row("no terminator", utf16(abc), abc);
    row("no terminator, odd", utf16(abc).left(5), QStringLiteral("ab"));
    row("one byte", QByteArray("a"), QString());
    row("embedded NUL", utf16(QStringLiteral("ab")) + nul + utf16(QStringLiteral("cd")) + nul,
        QStringLiteral("ab"));
    row("two terminators", utf16(abc) + nul + nul, abc);
    row("10,000 characters", utf16(QString(10'000, u'x')) + nul, QString(10'000, u'x'));
    row("10,000 characters, no terminator", utf16(QString(10'000, u'x')), QString(10'000, u'x'));
    row("unpaired surrogate", utf16(QString(QChar(0xd83d))) + nul, QString(QChar(0xd83d)));
    QTest::newRow("dword") << quint32{REG_DWORD} << four << false << QString();
    QTest::newRow("binary") << quint32{REG_BINARY} << utf16(abc) + nul << false << QString();
    QTest::newRow("list") << quint32{REG_MULTI_SZ} << utf16(abc) + nul + nul << false << QString();
}

void TestSettings::readsWhateverTextIsStored()
{
    QFETCH(quint32, type);
    QFETCH(QByteArray, bytes);
    QFETCH(bool, readable);
    QFETCH(QString, text);
    store(QStringLiteral("value"), type, bytes);

    QString read = QStringLiteral("before");
    QCOMPARE(readString(testKey, u"value", read), readable);
    QCOMPARE(read, text);

    read = QStringLiteral("before");
    QVERIFY(!readString(testKey, u"no such value", read));
    QVERIFY(read.isEmpty());
    read = QStringLiteral("before");
    QVERIFY(!readString(u"Software\\Fernlight Larkspur\\No such key", u"value", read));
    QVERIFY(read.isEmpty());
}

void TestSettings::expandsVariables()
{
    // The folder of OneDrive is often stored in this form. The stored text is shorter than the read one here
    // and longer there, so both directions of a wrong size would show.
    const QString variable = QStringLiteral("LARKSPUR_TEST");
    for (const QString &content : {QString(3'000, u'y'), QStringLiteral("y")}) {
        QVERIFY(SetEnvironmentVariableW(wide(variable), wide(content)));
        store(QStringLiteral("value"), REG_EXPAND_SZ,
              utf16(u'%' + variable + QStringLiteral("%\\end")) + QByteArray(2, '\0'));
        QString read;
        QVERIFY(readString(testKey, u"value", read));
        QCOMPARE(read, content + QStringLiteral("\\end"));
    }
    SetEnvironmentVariableW(wide(variable), nullptr);
}

void TestSettings::writesTextWithTerminator_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << QString();
    QTest::newRow("beyond latin") << QString::fromUtf8("Straße \u0430\u0431\u0432 \u65e5\u672c \U0001F600");
    QTest::newRow("10,000 characters") << QString::fromUtf8("ä").repeated(10'000);
    QTest::newRow("percent signs") << QStringLiteral("%PATH%");
    QTest::newRow("unpaired surrogate") << QStringLiteral("a") + QChar(0xdc00);
}

void TestSettings::writesTextWithTerminator()
{
    QFETCH(QString, text);
    QVERIFY(!keyExists(testKey));
    QVERIFY(writeString(testKey, u"value", text));
    QCOMPARE(storedBytes(QStringLiteral("value"), REG_SZ), utf16(text) + QByteArray(2, '\0'));

    QString read = QStringLiteral("before");
    QVERIFY(readString(testKey, u"value", read));
    QCOMPARE(read, text);

    // A value of another type is replaced, not appended to.
    QVERIFY(writeDword(testKey, u"value", 0xFFFFFFCE));
    QCOMPARE(storedBytes(QStringLiteral("value"), REG_DWORD), QByteArray("\xce\xff\xff\xff", 4));
}

void TestSettings::survivesTextThatGrowsWhileItIsRead()
{
    // Between the question for the size and the reading, another process may store a longer text.
    const QString shortText = QStringLiteral("short");
    const QString longText(5'000, u'x');
    QVERIFY(writeString(testKey, u"value", shortText));
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); // thousands of lines
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
    createKey(testKey + QStringLiteral("\\child"));
    QTest::ignoreMessage(QtDebugMsg, "RegDeleteKeyEx Enumerate the keys");
    QTest::ignoreMessage(QtDebugMsg, "RegDeleteKeyEx alsoDeleteChildKey");
    QTest::ignoreMessage(QtDebugMsg, "RegDeleteKeyEx Enumerate the keys");
    QVERIFY(deleteKeyWithSubkeys(testKey));
}

void TestSettings::tellsValuesAndDeletesThem()
{
    QVERIFY(!valueExists(testKey, u"value"));
    QVERIFY(!deleteValue(testKey, u"value"));
    store(QStringLiteral("value"), REG_NONE, QByteArray());
    QVERIFY(valueExists(testKey, u"value"));
    QVERIFY(deleteValue(testKey, u"value"));
    QVERIFY(!valueExists(testKey, u"value"));
    QVERIFY(keyExists(testKey));
}

void TestSettings::checksNumbers()
{
    constexpr Number number{u"Software\\Fernlight Larkspur\\Test", u"value", 7, -100, 100};
    QCOMPARE(number.read(), 7);
    for (const auto &[stored, read] : {std::pair{-101, 7}, {-100, -100}, {100, 100}, {101, 7}}) {
        writeDword(testKey, u"value", static_cast<quint32>(stored));
        QCOMPARE(number.read(), read);
    }
    number.write(-50);
    QCOMPARE(number.read(), -50);
    QCOMPARE(storedBytes(QStringLiteral("value"), REG_DWORD), QByteArray("\xce\xff\xff\xff", 4));
}

void TestSettings::flagsAreOnForAnyNumber()
{
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
    createKey(testKey + u'\\' + longName + QStringLiteral("\\below"));
    writeDword(testKey + QStringLiteral("\\a\\b"), u"value", 1);
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
    const QString child = testKey + QStringLiteral("\\locked");
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
    const QString target = QStringLiteral("Software\\Fernlight Larkspur\\Target");
    createKey(target + QStringLiteral("\\precious"));
    {
        // A link holds the kernel's name of its target, which begins with the user's own part of the
        // registry.
        const RegKey user = createKey(QStringLiteral("Software\\Fernlight Larkspur"));
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

        const RegKey link =
            createKey(testKey + QStringLiteral("\\link"), KEY_ALL_ACCESS, REG_OPTION_CREATE_LINK);
        const QByteArray goal = utf16(kernelName + QStringLiteral("\\Target"));
        QCOMPARE(RegSetValueExW(link.get(), L"SymbolicLinkValue", 0, REG_LINK,
                                reinterpret_cast<const BYTE *>(goal.constData()),
                                static_cast<DWORD>(goal.size())),
                 ERROR_SUCCESS);
    }
    writeDword(target, u"value", 42);
    quint32 through = 0;
    QVERIFY(readDword(testKey + QStringLiteral("\\link"), u"value", through)); // it does lead there
    QCOMPARE(through, 42u);

    QVERIFY(deleteKeyWithSubkeys(testKey));
    QVERIFY(!keyExists(testKey));
    QVERIFY(keyExists(target + QStringLiteral("\\precious")));
    QVERIFY(valueExists(target, u"value"));
}

void TestSettings::refusesToDeleteTooMuch_data()
{
    // Every path that is refused leads to a key of our own when it is misread, so a fault cannot do harm
    // either: the store is asked to delete "Larkspur Test Only", never "Software".
    QTest::addColumn<QString>("path");
    const QString one = QStringLiteral("Larkspur Test Only");
    QTest::newRow("one component") << one;
    QTest::newRow("separator at the end") << one + u'\\';
    QTest::newRow("separator at the start") << u'\\' + one;
    QTest::newRow("both") << u'\\' + one + u'\\';
    QTest::newRow("doubled separator") << one + QStringLiteral("\\\\child");
    QTest::newRow("NUL inside") << one + QChar(QChar::Null) + QStringLiteral("\\child");
    QTest::newRow("NUL after the separator") << one + u'\\' + QChar(QChar::Null);
}

void TestSettings::refusesToDeleteTooMuch()
{
    QFETCH(QString, path);
    const QString own = QStringLiteral("Larkspur Test Only");
    createKey(own + QStringLiteral("\\child"));
    QVERIFY(!deleteKeyWithSubkeys(path));
    QVERIFY(keyExists(own + QStringLiteral("\\child")));
    // What is refused has to be refused by its text and not by luck: the same key two levels deep does go.
    QVERIFY(deleteKeyWithSubkeys(own + QStringLiteral("\\child")));
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
