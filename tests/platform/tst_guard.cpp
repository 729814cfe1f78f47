// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GuardRules.h"
#include "platform/Paths.h"
#include "platform/ProtectedPlaces.h"
#include "platform/Win32Enumerator.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QDir>
#include <QFile>
#include <QStringBuilder>
#include <QTest>

#include <algorithm>
#include <functional>
#include <random>

using namespace Qt::StringLiterals;
using platform::Guarded;
using platform::GuardedFolder;
using platform::GuardedItem;
using platform::GuardedRoot;
using platform::ItemKind;
using platform::ShownItem;
using tests::TestFolder;

namespace
{

using Access = GuardedFolder::Access;

constexpr quint64 written = 133'000'000'000'000'000;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "unreadable";
}

// Written down as a list does it that follows every link that it meets, and so never seen to be right.
void planFolder(const QString &root, const QString &folder, int depth, std::vector<ShownItem> &plan)
{
    core::DirectoryListing listing;
    platform::Win32Enumerator().list(folder, listing, {});
    for (std::size_t index = 0; index < listing.size(); ++index) {
        const core::DirectoryEntry entry = listing.at(index);
        const QString path = folder % u'\\' % entry.name;
        if (entry.isDirectory() && depth < 5)
            planFolder(root, path, depth + 1, plan);
        ShownItem item{root, path, entry.size, entry.lastWriteTime, std::nullopt};
        item.kind = entry.mayBeLink()     ? ItemKind::Link
                    : entry.isDirectory() ? ItemKind::Folder
                                          : ItemKind::File;
        plan.push_back(item);
    }
}

// A tree below "root" whose every link leads out of it, to "out" with the canary, or back up.
struct Scene {
    explicit Scene(unsigned seed) : random(seed)
    {
        canary = disk.makeFile(u"out\\canary.txt"_s, "sings");
        disk.setTimes(u"out\\canary.txt"_s, written, written);
        root = disk.makeFolder(u"root"_s);
        QStringList folders{u"root"_s};
        for (int index = 0; index < 24; ++index) {
            const QString folder =
                folders[static_cast<int>(random() % static_cast<unsigned>(folders.size()))];
            const QString name = folder + u"\\Entry"_s + QString::number(index);
            if (random() % 4 == 0)
                folders.append(disk.makeFolder(name) == QString() ? folder : name);
            else
                plain.append(disk.makeFile(name, QByteArray(static_cast<int>(random() % 90), 'x')));
        }
        // The canary's name, and its folder's, in another case: no link, and not the canary.
        plain.append(disk.makeFile(folders.last() + u"\\OUT.d\\Canary.TXT"_s, "sings"));
        disk.makeHardLink(folders.last() + u"\\hard"_s, u"out\\canary.txt"_s);
        disk.makeLink(folders.last() + u"\\out"_s, u"out"_s);
        disk.makeLink(folders.last() + u"\\up"_s, u"root"_s);
        disk.makeLink(folders.first() + u"\\canary.txt"_s, u"out\\canary.txt"_s);
        planFolder(root, root, 0, plan);
        std::ranges::shuffle(plan, random);
    }

    // Other files in the place of two planned ones, and a folder that has become a link to the canary's.
    void exchange()
    {
        for (int index = 0; index < 2; ++index) {
            const QString path = plain[index];
            tests::requireBelow(disk.path(), path);
            QVERIFY(QFile::rename(path, disk.path(u"moved%1"_s.arg(index))));
            disk.makeFile(path.mid(disk.path().size() + 1), QByteArray(200 + index, 'n'));
            disk.setTimes(path.mid(disk.path().size() + 1), written + 1, written);
        }
        disk.makeFolder(u"root\\turned"_s);
        const QString file = disk.makeFile(u"root\\turned\\canary.txt"_s, "sings");
        disk.setTimes(u"root\\turned\\canary.txt"_s, written, written);
        plan.push_back({root, file, 5, written, std::nullopt});
        tests::requireBelow(disk.path(), file);
        QVERIFY(QDir().rename(disk.path(u"root\\turned"_s), disk.path(u"moved"_s)));
        disk.makeLink(u"root\\turned"_s, u"out"_s);
    }

    void requireCanary() const
    {
        QCOMPARE(contentOf(canary), "sings"_ba);
        QCOMPARE(platform::fileFacts(canary)->lastWriteTime, written);
        QCOMPARE(QDir(disk.path(u"out"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{u"canary.txt"_s});
    }

    TestFolder disk;
    std::mt19937 random;
    QString root, canary;
    QStringList plain;
    std::vector<ShownItem> plan;
};

} // namespace

class TestGuard : public QObject
{
    Q_OBJECT

private slots:
    void nothingOutsideIsTouched();
    void actsOnTheItemThatWasShown_data();
    void actsOnTheItemThatWasShown();
    void eachFactCounts();
    void protectedFoldersInsideTheChosenOne();
    void anErasureFollowsItsList();
    void renamesWithinItsFolderOnly();
    void writesWhatNobodyElseHolds();
    void protectedPlaces_data();
    void protectedPlaces();
};

// Whatever a list holds: the canary keeps its bytes, its name and its time, and what was exchanged stays.
void TestGuard::nothingOutsideIsTouched()
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        Scene scene(seed);
        if (QTest::currentTestFailed())
            return;
        scene.exchange();
        for (const ShownItem &item : scene.plan) {
            const GuardedRoot root(item.root);
            const GuardedFolder folder(root, item.folder());
            GuardedItem opened = folder.open(item.listed(), Access::Remove);
            if (item.kind == ItemKind::File && scene.random() % 2 == 0)
                opened.rename(u"Renamed%1"_s.arg(scene.random()));
            opened.erase();
            platform::GuardedErasure().erase(item);
        }
        scene.requireCanary();
        for (const QString &path : scene.plain.mid(0, 2))
            QVERIFY2(contentOf(path).startsWith("nnn"), qPrintable(path));
        for (const QString &path : scene.plain.mid(2))
            QVERIFY2(!platform::fileExists(path), qPrintable(path));
        if (QTest::currentTestFailed())
            return;
    }
}

void TestGuard::actsOnTheItemThatWasShown_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<ItemKind>("kind");
    QTest::addColumn<Guarded>("expected");

    QTest::newRow("file") << u"a.txt"_s << ItemKind::File << Guarded::Done;
    QTest::newRow("file in another case") << u"A.TXT"_s << ItemKind::File << Guarded::Done;
    QTest::newRow("file shown as a folder") << u"a.txt"_s << ItemKind::Folder << Guarded::Changed;
    QTest::newRow("file shown as a link") << u"a.txt"_s << ItemKind::Link << Guarded::Changed;
    QTest::newRow("empty folder") << u"empty"_s << ItemKind::Folder << Guarded::Done;
    QTest::newRow("folder with a file") << u"full"_s << ItemKind::Folder << Guarded::NotEmpty;
    QTest::newRow("folder shown as a file") << u"empty"_s << ItemKind::File << Guarded::Changed;
    QTest::newRow("missing") << u"none"_s << ItemKind::File << Guarded::Vanished;
    QTest::newRow("read-only") << u"readonly.txt"_s << ItemKind::File << Guarded::ReadOnly;
    QTest::newRow("a path and no name") << u"full\\b.txt"_s << ItemKind::File << Guarded::Refused;
    QTest::newRow("the folder above") << u".."_s << ItemKind::Folder << Guarded::Refused;
    QTest::newRow("a stream") << u"a.txt:stream"_s << ItemKind::File << Guarded::Refused;
    QTest::newRow("no name") << QString() << ItemKind::Folder << Guarded::Refused;
}

void TestGuard::actsOnTheItemThatWasShown()
{
    QFETCH(const QString, name);
    QFETCH(const ItemKind, kind);
    QFETCH(const Guarded, expected);
    TestFolder disk;
    for (const QString &file : {u"a.txt"_s, u"full\\b.txt"_s, u"readonly.txt"_s}) {
        disk.makeFile(file, "content");
        disk.setTimes(file, written, written);
    }
    disk.makeFolder(u"empty"_s);
    const QString readOnly = disk.path(u"readonly.txt"_s);
    QVERIFY(QFile::setPermissions(readOnly, QFile::ReadOwner));
    std::vector<ShownItem> before, after;
    planFolder(disk.path(), disk.path(), 0, before);
    const GuardedFolder folder(GuardedRoot(disk.path()), disk.path());
    const Guarded result = folder.erase({name, kind, 7, written});
    planFolder(disk.path(), disk.path(), 0, after);
    QVERIFY(QFile::setPermissions(readOnly, QFile::ReadOwner | QFile::WriteOwner));
    QCOMPARE(result, expected);
    QCOMPARE(before.size() - after.size(), expected == Guarded::Done ? 1U : 0U);
}

// One at a time: what another program does to a file mostly changes several.
void TestGuard::eachFactCounts()
{
    using Listed = platform::ListedItem;
    using Opened = platform::OpenedFacts;
    const struct {
        const char *what;
        std::function<void(Listed &, Opened &)> spoil;
        Guarded forRemoval, forALook;
    } rows[] = {
        {"nothing", [](Listed &, Opened &) {}, Guarded::Done, Guarded::Done},
        {"size", [](Listed &, Opened &o) { ++o.size; }, Guarded::Changed, Guarded::Changed},
        {"time", [](Listed &, Opened &o) { ++o.lastWriteTime; }, Guarded::Changed, Guarded::Changed},
        {"number", [](Listed &, Opened &o) { o.number = 8; }, Guarded::Changed, Guarded::Changed},
        {"no number now", [](Listed &, Opened &o) { o.number.reset(); }, Guarded::Changed, Guarded::Changed},
        {"identity", [](Listed &, Opened &o) { o.identity->volume = 8; }, Guarded::Changed, Guarded::Changed},
        {"no identity now", [](Listed &, Opened &o) { o.identity.reset(); }, Guarded::Changed,
         Guarded::Changed},
        {"no identity listed", [](Listed &l, Opened &) { l.identity.reset(); }, Guarded::Done, Guarded::Done},
        {"kind", [](Listed &, Opened &o) { o.kind = ItemKind::Link; }, Guarded::Changed, Guarded::Changed},
        {"folder of another time",
         [](Listed &l, Opened &o) {
             l.kind = o.kind = ItemKind::Folder;
             ++o.lastWriteTime;
             o.attributes = core::AttributeReadOnly; // which of a folder says nothing
         },
         Guarded::Done, Guarded::Done},
        {"read-only", [](Listed &, Opened &o) { o.attributes = core::AttributeReadOnly; }, Guarded::ReadOnly,
         Guarded::Done},
        {"offline", [](Listed &, Opened &o) { o.attributes = core::AttributeOffline; }, Guarded::InCloud,
         Guarded::Done},
        {"placeholder", [](Listed &, Opened &o) { o.attributes = core::AttributeRecallOnDataAccess; },
         Guarded::InCloud, Guarded::Done},
        {"placeholder of a folder",
         [](Listed &l, Opened &o) {
             l.kind = o.kind = ItemKind::Folder;
             o.attributes = core::AttributeRecallOnOpen;
         },
         Guarded::InCloud, Guarded::Done},
    };
    for (const auto &row : rows) {
        Listed listed{u"f"_s, ItemKind::File, 5, written, core::FileIdentity{1, 2}, 3};
        Opened opened{ItemKind::File, 0, 5, written, 3, core::FileIdentity{1, 2}};
        row.spoil(listed, opened);
        QVERIFY2(platform::judge(listed, opened, Access::Remove) == row.forRemoval, row.what);
        QVERIFY2(platform::judge(listed, opened, Access::Query) == row.forALook, row.what);
    }
    TestFolder folder;
    const QString path = folder.makeFile(u"f"_s, "12345");
    const GuardedFolder guarded(GuardedRoot(folder.path()), folder.path());
    Listed item = platform::itemAsItIs(folder.path(), path)->listed();
    item.number = 1; // of no file here
    QCOMPARE(guarded.open(item, Access::Remove).state(), Guarded::Changed);
}

// Opened, and nothing else: this is the Windows of the test.
void TestGuard::protectedFoldersInsideTheChosenOne()
{
    const QString data = platform::protectedPlaces().shared.value(0);
    const QString drive = data.left(2);
    const GuardedFolder guarded(GuardedRoot(drive + u'\\'), drive);
    QCOMPARE(guarded.state(), Guarded::Done);
    const platform::ListedItem item{data.mid(3), ItemKind::Folder};
    QCOMPARE(guarded.open(item, Access::Query).state(), Guarded::Done);
    QCOMPARE(guarded.open(item, Access::Remove).state(), Guarded::Protected);
}

void TestGuard::anErasureFollowsItsList()
{
    TestFolder folder;
    platform::GuardedErasure erasure;
    for (const QString &name : {u"a"_s, u"b"_s}) {
        const QString path = folder.makeFile(name + u"\\f"_s);
        tests::requireBelow(folder.path(), path);
        const std::optional<ShownItem> item = platform::itemAsItIs(folder.path(name), path);
        QCOMPARE(erasure.erase(*item), Guarded::Done);
        QVERIFY(!platform::fileExists(path));
    }
    erasure.release();
}

void TestGuard::renamesWithinItsFolderOnly()
{
    TestFolder disk;
    const QString path = disk.makeFile(u"sub\\a.txt"_s, "mine");
    const QString taken = disk.makeFile(u"sub\\taken.txt"_s, "theirs");
    const GuardedRoot root(disk.path());
    const GuardedFolder folder(root, disk.path(u"sub"_s));
    const auto shown = platform::itemAsItIs(disk.path(), path);
    QVERIFY(shown && shown->identity);
    GuardedItem item = folder.open(shown->listed(), Access::Remove);
    QCOMPARE(item.rename(u"taken.txt"_s), Guarded::NameTaken);
    QCOMPARE(item.rename(u"..\\b.txt"_s), Guarded::Refused);
    QCOMPARE(item.rename(u"a.txt"_s), Guarded::Done);
    QCOMPARE(item.rename(u"b.txt"_s), Guarded::Done);
    QCOMPARE(item.name(), u"b.txt"_s);
    QVERIFY(!platform::fileExists(path));
    QCOMPARE(contentOf(taken), "theirs"_ba);
    QCOMPARE(item.erase(), Guarded::Done);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{u"taken.txt"_s});
    QCOMPARE(item.erase(), Guarded::Vanished);
    // Its own name needs no folder any more.
    const auto own = platform::itemAsItIs(disk.path(), taken);
    GuardedItem left = GuardedFolder(root, disk.path(u"sub"_s)).open(own->listed(), Access::Remove);
    QCOMPARE(left.rename(u"taken.txt"_s), Guarded::Done);

    // The same name, size and time, and another file.
    disk.makeFile(u"sub\\a.txt"_s, "mine");
    disk.setTimes(u"sub\\a.txt"_s, shown->lastWriteTime, written);
    platform::ListedItem other = shown->listed();
    other.identity->file ^= 1;
    QCOMPARE(folder.erase(other), Guarded::Changed);
}

void TestGuard::writesWhatNobodyElseHolds()
{
    TestFolder disk;
    const QString path = disk.makeFile(u"a.txt"_s, "content");
    const auto shown = platform::itemAsItIs(disk.path(), path);
    const GuardedRoot root(disk.path());
    const GuardedFolder folder(root, disk.path());
    {
        // Shares writing and not removing.
        QFile holder(path);
        QVERIFY(holder.open(QIODevice::ReadOnly));
        QCOMPARE(folder.open(shown->listed(), Access::Write).state(), Guarded::Done);
        QCOMPARE(folder.open(shown->listed(), Access::Remove).state(), Guarded::InUse);
    }
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
    QCOMPARE(folder.open(shown->listed(), Access::Write).state(), Guarded::ReadOnly);
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    // A folder outside the root, one that is missing, and a root that is.
    QCOMPARE(GuardedFolder(GuardedRoot(disk.makeFolder(u"other"_s)), disk.path()).state(), Guarded::Refused);
    QCOMPARE(GuardedFolder(root, disk.path(u"none"_s)).state(), Guarded::Vanished);
    QVERIFY(GuardedFolder(GuardedRoot(disk.path(u"none"_s)), disk.path(u"none"_s)).state() != Guarded::Done);
}

void TestGuard::protectedPlaces_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<platform::Protection>("expected");
    using platform::Protection;
    QTest::newRow("drive") << u"D:\\"_s << Protection::Holds;
    QTest::newRow("share") << u"\\\\server\\share"_s << Protection::Holds;
    QTest::newRow("nothing") << QString() << Protection::Holds;
    QTest::newRow("Windows, in another case") << u"c:\\windows\\"_s << Protection::Holds;
    QTest::newRow("above Windows, mounted elsewhere") << u"E:\\os"_s << Protection::Holds;
    QTest::newRow("in Windows") << u"C:\\Windows\\Temp"_s << Protection::Below;
    QTest::newRow("only begins like Windows") << u"C:\\WindowsOld"_s << Protection::None;
    QTest::newRow("data of all users") << u"C:\\ProgramData"_s << Protection::Holds;
    QTest::newRow("below data of all users") << u"C:\\ProgramData\\App"_s << Protection::None;
    QTest::newRow("profiles") << u"C:\\Users"_s << Protection::Holds;
    QTest::newRow("anybody's profile") << u"C:\\users\\Other"_s << Protection::Holds;
    QTest::newRow("in a profile") << u"C:\\Users\\Other\\Documents"_s << Protection::None;
}

void TestGuard::protectedPlaces()
{
    QFETCH(const QString, path);
    const platform::ProtectedPlaces places{
        {u"C:\\Windows"_s, u"E:\\os\\Windows"_s}, {u"C:\\ProgramData"_s}, {u"C:\\Users"_s}};
    QTEST(platform::protectionOf(path, places), "expected");
    // This Windows has them, and the folders of the tests are not among them.
    QVERIFY(platform::protectionOf(platform::finalPath(qEnvironmentVariable("windir")),
                                   platform::protectedPlaces()) == platform::Protection::Holds);
    QVERIFY(platform::protectionOf(platform::finalPath(TestFolder().path()), platform::protectedPlaces()) ==
            platform::Protection::None);
}

QTEST_GUILESS_MAIN(TestGuard)

#include "tst_guard.moc"
