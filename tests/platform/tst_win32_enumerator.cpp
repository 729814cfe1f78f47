// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Handle.h"
#include "platform/Win32Enumerator.h"
#include "tests/support/TestFolder.h"

#include <QMap>
#include <QTest>

#include <windows.h>

using namespace Qt::StringLiterals;
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
    folder.makeFile(u"small.txt"_s, "abc");
    folder.makeLargeFile(u"large.iso"_s, fiveGiB);
    folder.makeFolder(u"sub"_s);
    folder.setTimes(u"small.txt"_s, write, access);
    QVERIFY(SetFileAttributesW(folder.path(u"small.txt"_s).toStdWString().c_str(), FILE_ATTRIBUTE_READONLY));

    const Listed listed = list(folder.path());
    QVERIFY(SetFileAttributesW(folder.path(u"small.txt"_s).toStdWString().c_str(), FILE_ATTRIBUTE_NORMAL));
    QVERIFY(listed.readable);
    QCOMPARE(listed.names.size(), 3);
    const DirectoryEntry small = listed.entries[u"small.txt"_s];
    QCOMPARE(small.size, 3u);
    QCOMPARE(small.lastWriteTime, write);
    QCOMPARE(small.lastAccessTime, access);
    QVERIFY(small.creationTime != 0);
    QVERIFY((small.attributes & core::AttributeReadOnly) != 0);
    QVERIFY(!small.isDirectory());
    QCOMPARE(listed.entries[u"large.iso"_s].size, fiveGiB);
    QVERIFY(listed.entries[u"sub"_s].isDirectory());
    QVERIFY(!listed.entries[u"sub"_s].mayBeLink());
}

void TestWin32Enumerator::keepsTheOrderOfTheSystem()
{
    TestFolder folder;
    for (int index = 0; index < 300; ++index)
        folder.makeFile(QString::number((index * 7919) % 1000));
    QStringList expected;
    WIN32_FIND_DATAW found;
    const platform::FindHandle search(
        FindFirstFileW((folder.path() + u"\\*"_s).toStdWString().c_str(), &found));
    do {
        expected.append(QString::fromWCharArray(found.cFileName));
    } while (FindNextFileW(search.get(), &found));
    expected.removeOne(u"."_s);
    expected.removeOne(u".."_s);
    const Listed listed = list(folder.path());
    QCOMPARE(listed.names, expected);
    QVERIFY(!listed.brokenOff);
}

void TestWin32Enumerator::keepsEveryName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("trailing dot") << u"dot."_s;
    QTest::newRow("trailing space") << u"space "_s;
    QTest::newRow("only dots") << u"..."_s;
    QTest::newRow("begins with dots") << u"..a"_s;
    QTest::newRow("semicolon, percent, brackets") << u"x;y %TEMP% [1] {2}.txt"_s;
    QTest::newRow("emoji") << u"\U0001F600.txt"_s;
    QTest::newRow("combining") << u"e\u0301.txt"_s;
    QTest::newRow("255 characters") << QString(255, u'n');
    QTest::newRow("unpaired surrogate") << QString(QChar(0xd83d)) + u".txt"_s;
    QTest::newRow("device") << u"nul.txt"_s;
}

void TestWin32Enumerator::keepsEveryName()
{
    QFETCH(QString, name);
    if (tests::isWine() && !name.isValidUtf16())
        QSKIP("The build machine's file names are UTF-8, which cannot hold this one.");
    TestFolder folder;
    folder.makeFile(name, "12");
    folder.makeFile(u"in\\"_s + name + u"\\inner"_s, "1");

    const Listed listed = list(folder.path());
    QCOMPARE(listed.names.size(), 2);
    QVERIFY(listed.entries.contains(name));
    QCOMPARE(listed.entries[name].size, 2u);
    // As a folder as well, and its own content, not that of a neighbour with a similar name.
    QCOMPARE(list(folder.path(u"in"_s)).names, QStringList{name});
    QCOMPARE(list(folder.path(u"in\\"_s + name)).names, QStringList{u"inner"_s});
}

void TestWin32Enumerator::longAndDeepPaths()
{
    TestFolder folder;
    for (const QString &name : {QString(100, u'l'), u"d"_s}) {
        const QString relative = (name + u'\\').repeated(name.size() > 1 ? 30 : 400) + u"end"_s;
        folder.makeFile(relative + u"\\file"_s, "1");
        QCOMPARE(list(folder.path(relative)).names, QStringList{u"file"_s});
    }
}

void TestWin32Enumerator::links()
{
    TestFolder folder;
    folder.makeFile(u"real\\a.txt"_s, "123");
    const QString link = folder.makeLink(u"link"_s, u"real"_s);
    const QString loop = folder.makeLink(u"real\\loop"_s, u"real"_s);
    platform::Win32Enumerator enumerator;

    const Listed listed = list(folder.path());
    QVERIFY(listed.entries[u"link"_s].mayBeLink());
    QVERIFY(!listed.entries[u"real"_s].mayBeLink());
    if (tests::isWine())
        QCOMPARE(listed.entries[u"link"_s].attributes & 0x410u, 0x410u);
    QVERIFY(list(link).names.contains(u"a.txt"_s));

    const auto real = enumerator.identity(folder.path(u"real"_s));
    QVERIFY(real);
    QVERIFY(enumerator.identity(link) == real);
    QVERIFY(enumerator.identity(loop) == real);
    QVERIFY(enumerator.identity(loop + u"\\loop"_s) == real);
    QVERIFY(enumerator.identity(folder.path()) != real);
}

void TestWin32Enumerator::whatCannotBeListed()
{
    TestFolder folder;
    const QString file = folder.makeFile(u"file"_s);
    platform::Win32Enumerator enumerator;
    QVERIFY(!list(folder.path(u"nothing"_s)).readable);
    QVERIFY(!list(file).readable);
    QVERIFY(!list(QString()).readable);
    QVERIFY(!enumerator.identity(folder.path(u"nothing"_s)));

    // A listing is used again and again: nothing of the folder before may stay.
    core::DirectoryListing listing;
    const core::CancelFlag never;
    enumerator.list(folder.path(), listing, never);
    QCOMPARE(listing.size(), std::size_t{1});
    enumerator.list(folder.path(u"nothing"_s), listing, never);
    QCOMPARE(listing.size(), std::size_t{0});
    QVERIFY(!listing.readable);

    const Listed empty = list(folder.makeFolder(u"empty"_s));
    QVERIFY(empty.readable);
    QVERIFY(empty.names.isEmpty());
    QVERIFY(!empty.brokenOff);
}

void TestWin32Enumerator::driveRoot()
{
    // "C:" is the root, and not the folder that this process stands in on that drive.
    QVERIFY(SetCurrentDirectoryW(L"C:\\windows"));
    QVERIFY(list(u"C:"_s).names.contains(u"windows"_s, Qt::CaseInsensitive));
    QCOMPARE(list(u"C:\\"_s).names, list(u"C:"_s).names);
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
