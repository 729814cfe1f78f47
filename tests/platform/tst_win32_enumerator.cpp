// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Handle.h"
#include "platform/Win32Enumerator.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QMap>
#include <QTest>

#include <windows.h>

using core::DirectoryEntry;
using tests::TestFolder;

namespace
{

struct Listed {
    QStringList names;
    QMap<QString, DirectoryEntry> entries; // whose names are not valid any more
    bool readable = false;
    bool brokenOff = false;
};

Listed list(const QString &folder)
{
    platform::Win32Enumerator enumerator;
    core::DirectoryListing listing;
    const core::CancelFlag never;
    enumerator.list(folder, listing, never);
    Listed result;
    result.readable = listing.readable;
    result.brokenOff = listing.brokenOff;
    for (std::size_t index = 0; index < listing.size(); ++index) {
        const DirectoryEntry entry = listing.at(index);
        result.names.append(entry.name.toString());
        result.entries.insert(result.names.last(), entry);
    }
    return result;
}

} // namespace

class TestWin32Enumerator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void passesOnWhatWindowsReports();
    void keepsTheOrderOfTheSystem();
    void keepsEveryName_data();
    void keepsEveryName();
    void longAndDeepPaths();
    void links();
    void whatCannotBeListed();
    void driveRoot();
    void stopsWhenCancelled();
};

void TestWin32Enumerator::passesOnWhatWindowsReports()
{
    TestFolder folder;
    constexpr quint64 fiveGiB = quint64{5} << 30;
    constexpr quint64 write = 0x01DA'1234'5678'9ABC;
    constexpr quint64 access = 0x01DB'1234'5678'9ABC;
    folder.makeFile(QStringLiteral("small.txt"), "abc");
    folder.makeLargeFile(QStringLiteral("large.iso"), fiveGiB);
    folder.makeFolder(QStringLiteral("sub"));
    folder.setTimes(QStringLiteral("small.txt"), write, access);
    QVERIFY(SetFileAttributesW(folder.path(QStringLiteral("small.txt")).toStdWString().c_str(),
                               FILE_ATTRIBUTE_READONLY));

    const Listed listed = list(folder.path());
    QVERIFY(SetFileAttributesW(folder.path(QStringLiteral("small.txt")).toStdWString().c_str(),
                               FILE_ATTRIBUTE_NORMAL));
    QVERIFY(listed.readable);
    QCOMPARE(listed.names.size(), 3);
    const DirectoryEntry small = listed.entries[QStringLiteral("small.txt")];
    QCOMPARE(small.size, 3u);
    QCOMPARE(small.lastWriteTime, write);
    QCOMPARE(small.lastAccessTime, access);
    QVERIFY(small.creationTime != 0);
    QVERIFY((small.attributes & core::AttributeReadOnly) != 0);
    QVERIFY(!small.isDirectory());
    QCOMPARE(listed.entries[QStringLiteral("large.iso")].size, fiveGiB);
    QVERIFY(listed.entries[QStringLiteral("sub")].isDirectory());
    QVERIFY(!listed.entries[QStringLiteral("sub")].mayBeLink());
}

void TestWin32Enumerator::keepsTheOrderOfTheSystem()
{
    TestFolder folder;
    for (int index = 0; index < 300; ++index)
        folder.makeFile(QString::number((index * 7919) % 1000));
    QStringList expected;
    WIN32_FIND_DATAW found;
    const platform::FindHandle search(
        FindFirstFileW((folder.path() + QStringLiteral("\\*")).toStdWString().c_str(), &found));
    do {
        expected.append(QString::fromWCharArray(found.cFileName));
    } while (FindNextFileW(search.get(), &found));
    expected.removeOne(QStringLiteral("."));
    expected.removeOne(QStringLiteral(".."));
    const Listed listed = list(folder.path());
    QCOMPARE(listed.names, expected);
    QVERIFY(!listed.brokenOff);
}

void TestWin32Enumerator::keepsEveryName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("trailing dot") << QStringLiteral("dot.");
    QTest::newRow("trailing space") << QStringLiteral("space ");
    QTest::newRow("only dots") << QStringLiteral("...");
    QTest::newRow("begins with dots") << QStringLiteral("..a");
    QTest::newRow("semicolon, percent, brackets") << QStringLiteral("x;y %TEMP% [1] {2}.txt");
    QTest::newRow("emoji") << QString::fromUtf8("\U0001F600.txt");
    QTest::newRow("combining") << QString::fromUtf8("e\u0301.txt");
    QTest::newRow("255 characters") << QString(255, u'n');
    QTest::newRow("unpaired surrogate") << QString(QChar(0xd83d)) + QStringLiteral(".txt");
    QTest::newRow("device") << QStringLiteral("nul.txt");
}

void TestWin32Enumerator::keepsEveryName()
{
    QFETCH(QString, name);
    if (tests::isWine() && !name.isValidUtf16())
        QSKIP("The build machine's file names are UTF-8, which cannot hold this one.");
    TestFolder folder;
    folder.makeFile(name, "12");
    folder.makeFile(QStringLiteral("in\\") + name + QStringLiteral("\\inner"), "1");

    const Listed listed = list(folder.path());
    QCOMPARE(listed.names.size(), 2);
    QVERIFY(listed.entries.contains(name));
    QCOMPARE(listed.entries[name].size, 2u);
    // As a folder as well, and its own content, not that of a neighbour with a similar name.
    QCOMPARE(list(folder.path(QStringLiteral("in"))).names, QStringList{name});
    QCOMPARE(list(folder.path(QStringLiteral("in\\") + name)).names, QStringList{QStringLiteral("inner")});
}

void TestWin32Enumerator::longAndDeepPaths()
{
    TestFolder folder;
    for (const QString &name : {QString(100, u'l'), QStringLiteral("d")}) {
        const QString relative = (name + u'\\').repeated(name.size() > 1 ? 30 : 400) + QStringLiteral("end");
        folder.makeFile(relative + QStringLiteral("\\file"), "1");
        QCOMPARE(list(folder.path(relative)).names, QStringList{QStringLiteral("file")});
    }
}

void TestWin32Enumerator::links()
{
    TestFolder folder;
    folder.makeFile(QStringLiteral("real\\a.txt"), "123");
    const QString link = folder.makeLink(QStringLiteral("link"), QStringLiteral("real"));
    const QString loop = folder.makeLink(QStringLiteral("real\\loop"), QStringLiteral("real"));
    platform::Win32Enumerator enumerator;

    const Listed listed = list(folder.path());
    QVERIFY(listed.entries[QStringLiteral("link")].mayBeLink());
    QVERIFY(!listed.entries[QStringLiteral("real")].mayBeLink());
    if (tests::isWine())
        QCOMPARE(listed.entries[QStringLiteral("link")].attributes & 0x410u, 0x410u);
    QVERIFY(list(link).names.contains(QStringLiteral("a.txt")));

    const auto real = enumerator.identity(folder.path(QStringLiteral("real")));
    QVERIFY(real);
    QVERIFY(enumerator.identity(link) == real);
    QVERIFY(enumerator.identity(loop) == real);
    QVERIFY(enumerator.identity(loop + QStringLiteral("\\loop")) == real);
    QVERIFY(enumerator.identity(folder.path()) != real);
}

void TestWin32Enumerator::whatCannotBeListed()
{
    TestFolder folder;
    const QString file = folder.makeFile(QStringLiteral("file"));
    platform::Win32Enumerator enumerator;
    QVERIFY(!list(folder.path(QStringLiteral("nothing"))).readable);
    QVERIFY(!list(file).readable);
    QVERIFY(!list(QString()).readable);
    QVERIFY(!enumerator.identity(folder.path(QStringLiteral("nothing"))));

    // A listing is used again and again: nothing of the folder before may stay.
    core::DirectoryListing listing;
    const core::CancelFlag never;
    enumerator.list(folder.path(), listing, never);
    QCOMPARE(listing.size(), std::size_t{1});
    enumerator.list(folder.path(QStringLiteral("nothing")), listing, never);
    QCOMPARE(listing.size(), std::size_t{0});
    QVERIFY(!listing.readable);

    const Listed empty = list(folder.makeFolder(QStringLiteral("empty")));
    QVERIFY(empty.readable);
    QVERIFY(empty.names.isEmpty());
    QVERIFY(!empty.brokenOff);
}

void TestWin32Enumerator::driveRoot()
{
    // "C:" is the root, and not the folder that this process stands in on that drive.
    QVERIFY(SetCurrentDirectoryW(L"C:\\windows"));
    QVERIFY(list(QStringLiteral("C:")).names.contains(QStringLiteral("windows"), Qt::CaseInsensitive));
    QCOMPARE(list(QStringLiteral("C:\\")).names, list(QStringLiteral("C:")).names);
}

void TestWin32Enumerator::stopsWhenCancelled()
{
    TestFolder folder;
    for (int index = 0; index < 50; ++index)
        folder.makeFile(QString::number(index));
    platform::Win32Enumerator enumerator;
    core::DirectoryListing listing;
    core::CancelFlag cancel;
    cancel.set();
    enumerator.list(folder.path(), listing, cancel);
    QVERIFY(listing.size() <= 1);
    QVERIFY(!listing.brokenOff); // the end was asked for
}

QTEST_GUILESS_MAIN(TestWin32Enumerator)

#include "tst_win32_enumerator.moc"
