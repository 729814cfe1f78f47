// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FolderWalk.h"
#include "core/ReadAhead.h"
#include "tests/support/MemoryEnumerator.h"

#include <QMutex>
#include <QRandomGenerator>
#include <QSet>
#include <QTest>

#include <atomic>
#include <chrono>
#include <set>
#include <thread>

using namespace Qt::StringLiterals;
using core::DirectoryEntry;
using tests::MemoryEnumerator;

namespace
{

// Every call as one line of text, with a limit after which the walk is cancelled and paths that are refused.
class Recorder : public core::WalkVisitor
{
public:
    void rootCounted(int directSubfolders) override { add(u"root %1"_s.arg(directSubfolders)); }
    void entryMet() override { add(u"entry"_s); }
    bool acceptFolder(const QString &path, const DirectoryEntry &entry) override
    {
        add(u"accept %1 %2"_s.arg(path, entry.name));
        return !refused.contains(path);
    }
    void enterFolder(const QString &path, QStringView name, int depth, FolderState state) override
    {
        add(u"enter %1 %2 %3 %4"_s.arg(path, name).arg(depth).arg(int(state)));
    }
    void file(const QString &folder, const DirectoryEntry &entry) override
    {
        add(u"file %1 %2 %3"_s.arg(folder, entry.name).arg(entry.size));
    }
    void leaveFolder() override { add(u"leave"_s); }

    core::CancelFlag cancel;
    QSet<QString> refused;
    int cancelAfter = -1;
    QStringList events;

private:
    void add(const QString &event)
    {
        events.append(event);
        if (events.size() == cancelAfter)
            cancel.set();
    }
};

// The order that the walk promises, written as directly as it can be said.
void plainRecursion(MemoryEnumerator &disk, const QString &path, const QString &name, int depth,
                    Recorder &out)
{
    const core::CancelFlag never;
    core::DirectoryListing listing;
    disk.list(path, listing, never);
    if (depth == 0) {
        int subfolders = 0;
        for (std::size_t i = 0; i < listing.size(); ++i)
            subfolders += listing.at(i).isDirectory();
        out.rootCounted(subfolders);
    }
    using State = core::WalkVisitor::FolderState;
    out.enterFolder(path, name, depth,
                    listing.brokenOff  ? State::ListedInPart
                    : listing.readable ? State::Listed
                                       : State::Unreadable);
    for (std::size_t i = 0; i < listing.size(); ++i) {
        const DirectoryEntry entry = listing.at(i);
        const QString child = path + u'\\' + entry.name.toString();
        out.entryMet();
        if (!entry.isDirectory())
            out.file(path, entry);
        else if (out.acceptFolder(child, entry))
            plainRecursion(disk, child, entry.name.toString(), depth + 1, out);
    }
    out.leaveFolder();
}

// `size` entries; narrow and deep, or wide and flat, as the seed has it.
QStringList buildRandomTree(MemoryEnumerator &disk, quint32 seed, int size)
{
    QRandomGenerator random(seed);
    QStringList folders{u"C:\\r"_s};
    disk.addFolder(folders.first());
    const int window = 1 + random.bounded(20);
    for (int i = 0; i < size; ++i) {
        const qsizetype lowest = qMax<qsizetype>(0, folders.size() - window);
        const QString parent = folders[lowest + random.bounded(int(folders.size() - lowest))];
        const QString path = parent + u"\\n%1"_s.arg(i);
        if (random.bounded(3) > 0) {
            disk.addFile(path, random.bounded(1000U));
            continue;
        }
        disk.addFolder(path);
        folders.append(path);
        if (random.bounded(12) == 0)
            disk.setUnreadable(path);
        else if (random.bounded(12) == 0)
            disk.setBrokenOff(path);
    }
    return folders;
}

core::WalkOptions readAhead(int threads)
{
    core::WalkOptions options;
    options.readAheadThreads = threads;
    return options;
}

constexpr int poolSizes[] = {0, 1, 4};

void walk(MemoryEnumerator &disk, Recorder &recorder, const core::WalkOptions &options = {})
{
    core::walkFolders(u"C:\\r"_s, disk, recorder, recorder.cancel, options);
}

QStringList walk(MemoryEnumerator &disk, int threads = 0)
{
    Recorder recorder;
    walk(disk, recorder, readAhead(threads));
    return recorder.events;
}

int entered(const QStringList &events, core::WalkVisitor::FolderState state)
{
    const QString end = u" %1"_s.arg(int(state));
    return int(std::count_if(events.begin(), events.end(), [&](const QString &event) {
        return event.startsWith(u"enter") && event.endsWith(end);
    }));
}

// Holds the walk back at its first entry until the pool has listed so many folders.
class Patient : public Recorder
{
public:
    Patient(MemoryEnumerator &files, qsizetype folderCount) : disk(files), count(folderCount) {}
    void entryMet() override
    {
        for (int i = 0; i < 5000 && disk.listCount() < count; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        m_sawAll = m_sawAll || disk.listCount() == count;
    }
    bool sawAll() const { return m_sawAll; }

    MemoryEnumerator &disk;
    qsizetype count;

private:
    bool m_sawAll = false;
};

} // namespace

class TestFolderWalk : public QObject
{
    Q_OBJECT

private slots:
    void sameAsPlainRecursion();
    void links_data();
    void links();
    void anotherTagIsNoLink();
    void thousandsOfLevels();
    void cancelledAtEveryEvent();
    void cancelledListingIsNotUnreadable();
    void poolListsInTheOrderOfTheWalk();
    void poolDoesNotFollowLinks();
    void poolStopsAtTheLimit();
    void walkListsWhilePoolIsBusy();
    void foldersAboveTheRootCanCount();
    void thePoolStaysSmall();
};

void TestFolderWalk::sameAsPlainRecursion()
{
    for (quint32 seed = 1; seed <= 180; ++seed) {
        MemoryEnumerator disk;
        const QStringList folders = buildRandomTree(disk, seed, 400);
        QSet<QString> refused;
        QRandomGenerator random(seed);
        for (const QString &folder : folders.sliced(1)) {
            if (random.bounded(10) == 0)
                refused.insert(folder);
        }
        Recorder expected, recorder;
        expected.refused = recorder.refused = refused;
        plainRecursion(disk, u"C:\\r"_s, u"C:\\r"_s, 0, expected);

        // The pool is kept from the refused folders at every second tree, where nobody lists them, and has to
        // throw them away at the others; small limits make it stop and go on.
        core::WalkOptions options = readAhead(poolSizes[seed / 6 % 3]);
        options.readAheadEntries = seed % 3 == 0 ? 20 : 200'000;
        if (seed % 2 == 0)
            options.mayListAhead = [&](const QString &path) { return !refused.contains(path); };
        walk(disk, recorder, options);
        QCOMPARE(recorder.events, expected.events);
        const QStringList listed = disk.listed();
        if (options.mayListAhead)
            QVERIFY(!refused.intersects(QSet<QString>(listed.begin(), listed.end())));
    }
}

void TestFolderWalk::links_data()
{
    using Links = QList<std::pair<QString, QString>>;
    QTest::addColumn<Links>("links");
    QTest::addColumn<int>("listed"); // of C:\r, with C:\r\x and C:\r\y in it
    QTest::addColumn<int>("cycles");
    QTest::addColumn<bool>("known"); // C:\r\x has an identity
    const auto in = [](const char *name) { return u"C:\\r\\"_s + QLatin1String(name); };
    QTest::newRow("to itself") << Links{{in("x\\l"), in("x")}} << 3 << 1 << true;
    QTest::newRow("to the root") << Links{{in("x\\l"), u"C:\\r"_s}} << 3 << 1 << true;
    QTest::newRow("to above the root") << Links{{in("x\\l"), u"C:"_s}} << 7 << 1 << true;
    QTest::newRow("two in one folder")
        << Links{{in("x\\l"), in("x")}, {in("x\\m"), in("x")}} << 3 << 2 << true;
    QTest::newRow("a pair") << Links{{in("x\\l"), in("y")}, {in("y\\m"), in("x")}} << 5 << 2 << true;
    QTest::newRow("to a brother") << Links{{in("x\\l"), in("y")}} << 4 << 0 << true;
    QTest::newRow("to a link") << Links{{in("x\\l"), in("y\\m")}, {in("y\\m"), in("x")}} << 4 << 2 << true;
    QTest::newRow("to nowhere") << Links{{in("x\\l"), in("gone")}} << 3 << 0 << true;
    QTest::newRow("one to itself, unknown") << Links{{in("x\\l"), in("x")}} << 4 << 1 << false;
    Links many;
    for (int i = 0; i < 20; ++i)
        many.append({in("x\\l") + QString::number(i), in("x")});
    QTest::newRow("twenty to itself, unknown") << many << 3 + 20 << 20 * 20 << false;
}

void TestFolderWalk::links()
{
    using Links = QList<std::pair<QString, QString>>;
    QFETCH(Links, links);
    QFETCH(bool, known);
    for (const quint32 tag : {MemoryEnumerator::mountPointTag, MemoryEnumerator::symbolicLinkTag, 0U}) {
        for (const int threads : {0, 2}) {
            MemoryEnumerator disk;
            disk.addFolder(u"C:\\r\\x"_s);
            disk.addFolder(u"C:\\r\\y"_s);
            for (const auto &[path, target] : links)
                disk.addLink(path, target, tag);
            if (!known)
                disk.setUnidentified(u"C:\\r\\x"_s);
            const QStringList events = walk(disk, threads);
            QTEST(entered(events, core::WalkVisitor::FolderState::Listed), "listed");
            QTEST(entered(events, core::WalkVisitor::FolderState::Cycle), "cycles");
        }
    }
}

void TestFolderWalk::anotherTagIsNoLink()
{
    MemoryEnumerator disk;
    disk.addFolder(u"C:\\r\\cloud"_s, core::AttributeDirectory | core::AttributeReparsePoint,
                   MemoryEnumerator::cloudTag);
    disk.addFile(u"C:\\r\\cloud\\f"_s, 1);
    QVERIFY(walk(disk).contains(u"file C:\\r\\cloud f 1"_s));
    QCOMPARE(disk.identityCount(), 0);
}

void TestFolderWalk::thousandsOfLevels()
{
    constexpr int levels = 3000;
    MemoryEnumerator disk;
    QString path = u"C:\\r"_s;
    for (int i = 0; i < levels; ++i)
        path += u"\\d"_s;
    disk.addFile(path + u"\\f"_s, 7);
    disk.addLink(path + u"\\up"_s, u"C:\\r"_s);
    for (const int threads : poolSizes) {
        const QStringList events = walk(disk, threads);
        QCOMPARE(entered(events, core::WalkVisitor::FolderState::Listed), levels + 1);
        QCOMPARE(entered(events, core::WalkVisitor::FolderState::Cycle), 1);
        QVERIFY(events.contains(u"file %1 f 7"_s.arg(path)));
    }
}

// However far the walk got: what was told up to then is the beginning of the whole story, nothing new is met
// after it, and every folder that began also ends.
void TestFolderWalk::cancelledAtEveryEvent()
{
    MemoryEnumerator disk;
    buildRandomTree(disk, 5, 60);
    disk.addLink(u"C:\\r\\again"_s, u"C:\\r"_s);
    const QStringList whole = walk(disk);
    for (int after = 1; after <= whole.size(); ++after) {
        for (const int threads : poolSizes) {
            Recorder recorder;
            recorder.cancelAfter = after;
            walk(disk, recorder, readAhead(threads));
            QCOMPARE(recorder.events.first(after), whole.first(after));

            int open = 0;
            for (qsizetype i = 0; i < recorder.events.size(); ++i) {
                const QString &event = recorder.events[i];
                open += event.startsWith(u"enter") ? 1 : event == u"leave" ? -1 : 0;
                // The entry that is being met at that moment is told to its end.
                if (i >= after)
                    QVERIFY2(event != u"entry", qPrintable(event));
            }
            QCOMPARE(open, 0);
        }
    }

    Recorder recorder;
    recorder.cancel.set();
    walk(disk, recorder);
    QCOMPARE(recorder.events, QStringList{u"root 0"_s});
}

void TestFolderWalk::cancelledListingIsNotUnreadable()
{
    MemoryEnumerator disk;
    disk.addFolder(u"C:\\r\\a"_s);
    Recorder recorder;
    disk.onList = [&](const QString &folder) {
        if (folder.endsWith(u'a'))
            recorder.cancel.set();
    };
    walk(disk, recorder);
    QCOMPARE(entered(recorder.events, core::WalkVisitor::FolderState::Unreadable), 0);
    QCOMPARE(entered(recorder.events, core::WalkVisitor::FolderState::Listed), 2);
}

// With the walk held back at the root's first entry, the only thread of the pool does all the work: in the
// order in which the walk will ask for it.
void TestFolderWalk::poolListsInTheOrderOfTheWalk()
{
    MemoryEnumerator disk;
    const QStringList folders = buildRandomTree(disk, 8, 300);
    walk(disk);
    const QStringList order = disk.listed();

    MemoryEnumerator again;
    buildRandomTree(again, 8, 300);
    Patient visitor(again, order.size());
    walk(again, visitor, readAhead(1));
    QVERIFY(visitor.sawAll());
    QCOMPARE(again.listed(), order);
}

void TestFolderWalk::poolDoesNotFollowLinks()
{
    MemoryEnumerator disk;
    disk.addFolder(u"C:\\r\\a"_s);
    disk.addLink(u"C:\\r\\loop"_s, u"C:\\r"_s);
    disk.addLink(u"C:\\r\\wine"_s, u"C:\\r"_s, 0);
    for (int i = 0; i < 100; ++i)
        disk.addFolder(u"C:\\r\\f%1"_s.arg(i));
    Patient visitor(disk, 102);
    walk(disk, visitor, readAhead(4));
    QCOMPARE(disk.listCount(), 102);
}

void TestFolderWalk::poolStopsAtTheLimit()
{
    MemoryEnumerator disk;
    for (int i = 0; i < 200; ++i) {
        for (int k = 0; k < 9; ++k)
            disk.addFile(u"C:\\r\\f%1\\%2"_s.arg(i).arg(k), 1);
    }
    // The walk stops at its first folder until the pool has come to rest.
    class Sleeper : public Patient
    {
    public:
        using Patient::Patient;
        void entryMet() override
        {
            if (highest > 0)
                return;
            Patient::entryMet();
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            highest = disk.listCount();
        }
        int highest = 0;
    };
    Sleeper visitor(disk, 25);
    core::WalkOptions options = readAhead(2);
    options.readAheadEntries = 300; // thirty folders of nine files, each counted as ten
    walk(disk, visitor, options);
    QVERIFY2(visitor.highest >= 25 && visitor.highest <= 1 + 30 + 2,
             qPrintable(QString::number(visitor.highest)));
    QCOMPARE(disk.listCount(), 201);
}

// The first listing of the pool never comes to an end until the walk has listed all that is left. The walk
// must neither wait for the pool before that nor list the folder a second time.
void TestFolderWalk::walkListsWhilePoolIsBusy()
{
    MemoryEnumerator disk;
    for (int i = 0; i < 50; ++i)
        disk.addFile(u"C:\\r\\f%1\\file"_s.arg(i), 1);
    const std::thread::id walker = std::this_thread::get_id();
    std::atomic_bool held = false, starved = false;
    disk.onList = [&](const QString &) {
        if (std::this_thread::get_id() == walker || held.exchange(true))
            return;
        for (int i = 0; i < 5000 && disk.listCount() < 51; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        starved = disk.listCount() < 51;
    };
    Patient recorder(disk, 2); // the pool begins, and only then the walk
    walk(disk, recorder, readAhead(1));
    QVERIFY(held && !starved);
    QCOMPARE(disk.listCount(), 51);
    QCOMPARE(entered(recorder.events, core::WalkVisitor::FolderState::Listed), 51);
}

// A walk that repeats a part of a larger one enters no link that the larger one did not enter.
void TestFolderWalk::foldersAboveTheRootCanCount()
{
    MemoryEnumerator disk;
    disk.addFolder(u"C:\\top\\r\\x"_s);
    disk.addLink(u"C:\\top\\r\\x\\toDrive"_s, u"C:"_s);
    disk.addLink(u"C:\\top\\r\\x\\toTop"_s, u"C:\\top"_s);
    disk.addLink(u"C:\\top\\r\\x\\toBrother"_s, u"C:\\top\\brother"_s);
    disk.addFolder(u"C:\\top\\brother"_s);
    for (const int threads : {0, 2}) {
        Recorder recorder;
        core::WalkOptions options = readAhead(threads);
        options.ancestors = {u"C:\\top"_s, u"C:\\"_s};
        core::walkFolders(u"C:\\top\\r"_s, disk, recorder, recorder.cancel, options);
        QCOMPARE(entered(recorder.events, core::WalkVisitor::FolderState::Cycle), 2);
        QCOMPARE(entered(recorder.events, core::WalkVisitor::FolderState::Listed), 3); // r, x, the brother
    }
}

void TestFolderWalk::thePoolStaysSmall()
{
    MemoryEnumerator disk;
    for (int i = 0; i < 200; ++i)
        disk.addFolder(u"C:\\r\\f%1"_s.arg(i));
    QMutex mutex;
    std::set<std::thread::id> listing;
    disk.onList = [&](const QString &) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5)); // every thread gets its turn
        const QMutexLocker lock(&mutex);
        listing.insert(std::this_thread::get_id());
    };
    Patient visitor(disk, 201);
    walk(disk, visitor, readAhead(63));
    QVERIFY(visitor.sawAll());
    QVERIFY(listing.size() <= std::size_t(core::ReadAhead::maxThreads + 1));
}

QTEST_GUILESS_MAIN(TestFolderWalk)
#include "tst_folder_walk.moc"
