// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/engine/Shred.h"
#include "tests/SecureDelete/engine/FakeDisk.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace securedelete;
using tests::FakeDisk;
using tests::Write;

namespace
{

constexpr quint32 compressed = 0x800;
constexpr quint32 sparse = 0x200;
constexpr quint64 chunk = PassBuffers::size;

// Counts up.
class Counter : public Randomness
{
public:
    quint32 seconds() override { return 1000; }
    void seed(quint32) override {}
    quint8 byte() override { return static_cast<quint8>(drawn++); }

    quint64 drawn = 0;
};

std::shared_ptr<char[]> onTheHeap(std::size_t bytes)
{
    return std::shared_ptr<char[]>(new char[bytes]);
}

struct Run : ShredListener {
    void bytesWritten(quint64 bytes) override { written += bytes; }
    void bytesLeftOut(quint64 bytes) override { leftOut += bytes; }
    void stepDone() override { ++steps; }
    void itemBegins(const QString &path, int count) override
    {
        paths.append(path);
        if (count == cancelAt)
            cancel.set();
    }
    void rowDestroyed(int row) override { destroyed.append(row); }

    ShredResult of(const QStringList &paths_)
    {
        std::vector<ShredRow> rows;
        for (const QString &path : paths_)
            rows.push_back(disk.row(path));
        return of(rows);
    }
    ShredResult of(const std::vector<ShredRow> &rows)
    {
        return shredRows(rows, options, disk, buffers, *this, cancel);
    }

    FakeDisk disk;
    Counter random;
    PassBuffers buffers{random, onTheHeap};
    ShredOptions options{.method = Method::Dod3};
    core::CancelFlag cancel;
    int cancelAt = -1;
    quint64 written = 0, leftOut = 0;
    int steps = 0;
    QStringList paths;
    QList<int> destroyed;
};

Fault faultOf(const ShredResult &result, const QString &path)
{
    for (const ShredRecord &record : result.records) {
        if (record.path == path)
            return record.fault;
    }
    return Fault::None;
}

// Where the first pass of each chunk went; every pass is checked to go to the same place.
QList<std::pair<quint64, quint64>> chunksOf(const std::vector<Write> &writes, int passes)
{
    QList<std::pair<quint64, quint64>> chunks;
    for (std::size_t index = 0; index < writes.size(); ++index) {
        const auto place = std::pair(writes[index].offset, writes[index].length);
        if (index % static_cast<std::size_t>(passes) == 0)
            chunks.append(place);
        else if (chunks.last() != place)
            return {};
    }
    return chunks;
}

} // namespace

class TestShred : public QObject
{
    Q_OBJECT

private slots:
    void passContents();
    void orderOfWrites_data();
    void orderOfWrites();
    void renameRounds();
    void whatIsNotOverwrittenKeepsItsName_data();
    void whatIsNotOverwrittenKeepsItsName();
    void aFileThatCannotBeErasedGetsItsNameBack();
    void cancelling();
    void rowsAndFolders();
    void linksAreRemovedAndNeverEntered();
    void protectedAndExchangedFoldersStay();
    void streamsAndSparseFiles();
    void clusters();
    void believableClusters();
};

void TestShred::passContents()
{
    Counter random;
    PassBuffers buffers(random, onTheHeap);
    QByteArray fixed;
    for (int pass = 1; pass <= 35; ++pass) {
        const char *data = buffers.data(Method::Gutmann, pass);
        const bool same = std::all_of(data, data + chunk, [&](char byte) { return byte == *data; });
        QCOMPARE(same, pass >= 5 && pass <= 31);
        if (same)
            fixed.append(*data);
    }
    QCOMPARE(fixed.toHex(), "55aa924924"
                            "00112233445566778899aabbccddeeff"
                            "9249246db6db"_ba);
    QCOMPARE(random.drawn, 8 * chunk);

    random.drawn = 0x30;
    QCOMPARE(buffers.data(Method::Dod7, 1)[chunk - 1], '\x30');
    QCOMPARE(buffers.data(Method::Dod7, 2)[0], static_cast<char>(~0x31)); // of a byte of its own
    QCOMPARE(buffers.data(Method::Dod7, 7)[1], static_cast<char>(buffers.data(Method::Dod7, 7)[0] + 1));
    const quint64 drawn = random.drawn;
    buffers.data(Method::Gutmann, 1);
    buffers.data(Method::Dod7, 3);
    QCOMPARE(random.drawn, drawn); // built once
    buffers.data(Method::Random, 1);
    buffers.data(Method::Random, 1);
    QCOMPARE(random.drawn, drawn + 2 * chunk); // filled for every pass of every chunk
    QCOMPARE(passCount(Method::Random, 0), 1);
    QCOMPARE(passCount(Method::Dod7, 9), 7);
}

void TestShred::orderOfWrites_data()
{
    QTest::addColumn<Method>("method");
    QTest::addColumn<quint64>("size");
    QTest::addColumn<QList<std::pair<quint64, quint64>>>("chunks");
    using List = QList<std::pair<quint64, quint64>>;
    QTest::newRow("empty") << Method::Dod3 << quint64{0} << List{};
    QTest::newRow("one byte") << Method::Dod7 << quint64{1} << List{{0, 1}};
    QTest::newRow("a chunk and a byte") << Method::Dod3 << chunk + 1 << List{{chunk, 1}, {0, chunk}};
    QTest::newRow("35 passes") << Method::Gutmann << 2 * chunk
                               << List{{2 * chunk - 1, 1}, {0, chunk}, {chunk, chunk - 1}};
    QTest::newRow("random") << Method::Random << quint64{3} << List{{2, 1}, {0, 2}};
}

void TestShred::orderOfWrites()
{
    QFETCH(const Method, method);
    QFETCH(const quint64, size);
    Run run;
    run.options.method = method;
    run.options.randomPasses = 5;
    std::vector<Write> writes;
    for (int pass = 1; pass <= 7 && method == Method::Dod7; ++pass)
        QTest::ignoreMessage(QtDebugMsg, qPrintable(u"WriteFile: %1:1 1"_s.arg(pass))); // must come
    run.disk.add(u"C:\\d\\f"_s, size);
    run.disk.onWrite = [&](const QString &path) { writes = run.disk.files[path].writes; };
    QCOMPARE(run.of(QStringList{u"C:\\d\\f"_s}).rowsLeft, 0);
    const int passes = passCount(method, 5);
    QTEST(chunksOf(writes, passes), "chunks");
    QCOMPARE(run.written, size * static_cast<quint64>(passes));
    QVERIFY(run.disk.files.isEmpty());
}

void TestShred::renameRounds()
{
    const struct {
        QString name, sibling, erased;
    } rows[] = {{u"report.doc"_s, u"other"_s, u"ZZZZZZ.ZZZ"_s},
                {u".a.b-c "_s, u"other"_s, u".Z.ZZZZ"_s},            // dots stay
                {u"report.doc"_s, u"AAAAAA.AAA"_s, u"report.doc"_s}, // the first is taken
                {u"report.doc"_s, u"MMMMMM.MMM"_s, u"LLLLLL.LLL"_s},
                {u"AAA"_s, u"other"_s, u"ZZZ"_s}}; // its own name in the first round
    for (const auto &row : rows) {
        Run run;
        run.disk.add(u"C:\\d\\"_s + row.name, 0);
        run.disk.add(u"C:\\d\\"_s + row.sibling, 7);
        QCOMPARE(run.of(QStringList{u"C:\\d\\"_s + row.name}).rowsLeft, 0);
        QCOMPARE(run.disk.log.last(), u"erase "_s + row.erased);
        QCOMPARE(run.disk.files.keys(), QStringList{u"C:\\d\\"_s + row.sibling});
    }
}

void TestShred::whatIsNotOverwrittenKeepsItsName_data()
{
    QTest::addColumn<std::function<void(FakeDisk::File &)>>("spoil");
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<int>("writes");
    using Spoil = std::function<void(FakeDisk::File &)>;
    const auto attribute = [](quint32 value) {
        return Spoil([=](FakeDisk::File &f) { f.attributes = value; });
    };
    QTest::newRow("in use") << Spoil([](FakeDisk::File &f) { f.canOpen = false; }) << Fault::InUse << 0;
    QTest::newRow("read-only") << attribute(core::AttributeReadOnly) << Fault::ReadOnly << 0;
    QTest::newRow("in the cloud") << attribute(core::AttributeRecallOnDataAccess) << Fault::InCloud << 0;
    QTest::newRow("other names") << Spoil([](FakeDisk::File &f) { f.links = 2; }) << Fault::OtherNames << 0;
    QTest::newRow("write fails") << Spoil([](FakeDisk::File &f) { f.failingWrite = 2; }) << Fault::WriteFailed
                                 << 2;
    QTest::newRow("a sparse one without room") << attribute(sparse) << Fault::DiskFull << 0;
}

void TestShred::whatIsNotOverwrittenKeepsItsName()
{
    QFETCH(const std::function<void(FakeDisk::File &)>, spoil);
    Run run;
    run.disk.free = 10;
    FakeDisk::File &file = run.disk.add(u"C:\\d\\f.txt"_s, 100);
    spoil(file);
    const ShredResult result = run.of(QStringList{u"C:\\d\\f.txt"_s});
    QTEST(result.records.at(0).fault, "fault");
    QVERIFY(!result.records.at(0).destroyed);
    QCOMPARE(result.rowsLeft, 1);
    QCOMPARE(run.disk.files.keys(), QStringList{u"C:\\d\\f.txt"_s});
    QTEST(static_cast<int>(run.disk.files.first().writes.size()), "writes");
    QCOMPARE(run.leftOut, quint64{300});
    run.options.overwriteOtherNames = true;
    if (result.records.at(0).fault == Fault::OtherNames)
        QCOMPARE(run.of(QStringList{u"C:\\d\\f.txt"_s}).rowsLeft, 0);
}

void TestShred::aFileThatCannotBeErasedGetsItsNameBack()
{
    Run run;
    run.disk.add(u"C:\\d\\f.txt"_s, 5).canErase = false;
    run.disk.add(u"C:\\d\\g.txt"_s, 5).canErase = false;
    run.disk.files[u"C:\\d\\g.txt"_s].canRenameTimes = 26;
    const ShredResult result = run.of(QStringList{u"C:\\d\\g.txt"_s, u"C:\\d\\f.txt"_s});
    QCOMPARE(run.disk.files.keys(), (QStringList{u"C:\\d\\Z.ZZZ"_s, u"C:\\d\\f.txt"_s}));
    QCOMPARE(result.rowsLeft, 2);
    QCOMPARE(result.records.at(0).leftName, QString());
    QCOMPARE(result.records.at(1).leftName, u"Z.ZZZ"_s);
    QCOMPARE(run.disk.log.count(u"pause"_s), 4);
}

void TestShred::cancelling()
{
    for (const Method method : {Method::Gutmann, Method::Dod7}) {
        Run run;
        run.options.method = method;
        run.disk.add(u"C:\\d\\a"_s, 9);
        run.disk.add(u"C:\\d\\b"_s, 9);
        run.disk.onWrite = [&](const QString &) { run.cancel.set(); };
        const ShredResult result = run.of(QStringList{u"C:\\d\\a"_s, u"C:\\d\\b"_s});
        const bool finishes = method == Method::Dod7;
        QVERIFY(result.cancelled);
        QCOMPARE(run.disk.files.contains(u"C:\\d\\b"_s), !finishes);
        QVERIFY(run.disk.files.contains(u"C:\\d\\a"_s) && run.disk.files[u"C:\\d\\a"_s].writes.empty());
        QCOMPARE(faultOf(result, u"C:\\d\\b"_s), finishes ? Fault::None : Fault::Cancelled);
        QCOMPARE(run.steps, 2); // the row in hand, and the end
    }
}

void TestShred::rowsAndFolders()
{
    Run run;
    for (const char *folder : {"C:\\d\\tree", "C:\\d\\tree\\sub", "C:\\d\\tree\\sub\\deep", "C:\\d\\kept"})
        run.disk.add(QString::fromLatin1(folder), 0, core::AttributeDirectory);
    for (const char *file :
         {"C:\\d\\one", "C:\\d\\tree\\a", "C:\\d\\tree\\sub\\b", "C:\\d\\kept\\stays", "C:\\d\\Win"})
        run.disk.add(QString::fromLatin1(file), 4);
    run.disk.files[u"C:\\d\\kept\\stays"_s].canOpen = false;
    run.disk.protectedPath = u"C:\\d\\Win"_s;
    std::vector<ShredRow> rows;
    for (const char *path : {"C:\\d\\one", "C:\\d\\tree", "C:\\d\\kept", "C:\\d\\Win"})
        rows.push_back(run.disk.row(QString::fromLatin1(path)));
    rows.push_back({{.root = u"C:\\d"_s, .folder = u"C:\\d"_s, .name = u"gone"_s}, true});
    rows.push_back({{.root = u"C:\\d"_s, .folder = u"C:\\d"_s, .name = u"gone"_s}, false});
    const ShredResult result = run.of(rows);
    QCOMPARE(run.disk.files.keys(),
             (QStringList{u"C:\\d\\Win"_s, u"C:\\d\\kept"_s, u"C:\\d\\kept\\stays"_s}));
    QCOMPARE(run.destroyed, (QList<int>{5, 1, 0})); // from the last; a folder that is gone is done
    QCOMPARE(run.steps, totalSteps(rows.size()));
    QCOMPARE(faultOf(result, u"C:\\d\\kept"_s), Fault::NotEmpty);
    QCOMPARE(faultOf(result, u"C:\\d\\Win"_s), Fault::Protected);
    QCOMPARE(faultOf(result, u"C:\\d\\gone"_s), Fault::Vanished);
    QCOMPARE(run.written + run.leftOut, quint64{5 * 4 * 3});
}

// The fake lists what a link leads to as if it lay there, so entering one would be seen. Names that differ
// only in their case are two, as in Linux folders on Windows.
void TestShred::linksAreRemovedAndNeverEntered()
{
    constexpr quint32 junction = 0xA0000003, symlink = 0xA000000C;
    constexpr quint32 folder = core::AttributeDirectory, link = core::AttributeReparsePoint;
    Run run;
    run.disk.add(u"C:\\d\\t"_s, 0, folder);
    run.disk.add(u"C:\\d\\t\\JUNCTION"_s, 0, folder);
    run.disk.add(u"C:\\d\\t\\JUNCTION\\plain"_s, 0);
    run.disk.add(u"C:\\d\\t\\folder link"_s, 0, folder | link).tag = symlink;
    run.disk.add(u"C:\\d\\t\\junction"_s, 0, folder | link).tag = junction;
    run.disk.add(u"C:\\d\\t\\symlink"_s, 90, link).tag = symlink;
    run.disk.add(u"C:\\d\\t\\unknown"_s, 0, folder | link).canErase = false; // as Wine shows one
    QStringList stay{u"C:\\d\\t"_s};
    for (const char *name : {"folder link\\f", "junction\\f", "symlink\\f", "unknown", "unknown\\f"})
        stay.append(u"C:\\d\\t\\"_s + QString::fromLatin1(name));
    for (const QString &path : stay.filter(u"\\f"_s)) {
        if (!run.disk.files.contains(path))
            run.disk.add(path, 4);
    }
    const ShredResult result = run.of(QStringList{u"C:\\d\\t"_s});
    QCOMPARE(run.disk.files.keys(), stay);
    QCOMPARE(run.disk.log.filter(u"link "_s),
             (QStringList{u"link folder link"_s, u"link junction"_s, u"link symlink"_s}));
    QCOMPARE(faultOf(result, u"C:\\d\\t\\unknown"_s), Fault::Denied);
    QCOMPARE(run.written, quint64{0});
}

void TestShred::protectedAndExchangedFoldersStay()
{
    Run run;
    for (const QString &folder : {u"C:\\d\\was"_s, u"C:\\d\\p"_s, u"C:\\d\\p\\sys"_s, u"C:\\d\\other"_s})
        run.disk.add(folder, 0, core::AttributeDirectory);
    run.disk.add(u"C:\\d\\p\\sys\\f"_s, 4);
    run.disk.protectedPath = u"C:\\d\\p\\sys"_s;
    run.disk.add(u"C:\\d\\other\\f"_s, 4);
    const std::vector<ShredRow> rows{run.disk.row(u"C:\\d\\was"_s), run.disk.row(u"C:\\d\\p"_s),
                                     run.disk.row(u"C:\\d\\other"_s)};
    run.disk.files[u"C:\\d\\other"_s].number = 2; // another folder by now
    run.disk.files[u"C:\\d\\was"_s].attributes |= core::AttributeReparsePoint;
    run.disk.files[u"C:\\d\\was"_s].tag = 0xA0000003; // a junction by now
    const ShredResult result = run.of(rows);
    QCOMPARE(faultOf(result, u"C:\\d\\was"_s), Fault::Changed);
    QCOMPARE(faultOf(result, u"C:\\d\\other"_s), Fault::Changed);
    QCOMPARE(faultOf(result, u"C:\\d\\p\\sys"_s), Fault::Protected);
    QCOMPARE(run.disk.files.size(), 6);
    QVERIFY(run.disk.log.isEmpty());
}

void TestShred::streamsAndSparseFiles()
{
    Run run;
    run.disk.add(u"C:\\d\\f"_s, 10).streams = {{u":secret:$DATA"_s, 7}};
    FakeDisk::File &file = run.disk.add(u"C:\\d\\s"_s, 1'000'000, sparse);
    file.ranges = {{0, 4096}, {999'000, 4096}};
    std::vector<Write> writes;
    run.disk.onWrite = [&](const QString &path) { writes = run.disk.files[path].writes; };
    const ShredResult result = run.of(QStringList{u"C:\\d\\f"_s, u"C:\\d\\s"_s});
    QCOMPARE(result.rowsLeft, 0);
    QCOMPARE(result.records.at(1).streams, 1);
    QVERIFY(result.records.at(0).oldClustersMaySurvive);
    QVERIFY(run.disk.log.contains(u"write :secret:$DATA"_s));
    QCOMPARE(run.written, quint64{3 * (10 + 7 + 4096 + 1000)});
}

void TestShred::clusters()
{
    using Extents = std::vector<Extent>;
    const Extents good{{0, 10, 2}, {2, -1, 14}, {16, 40, 100}}, stub{{1, 0, -1}};
    const struct {
        const char *what;
        Extents extents, later;
        bool hasVolume, throughVolume;
    } rows[] = {{"through the volume", good, good, true, true},
                {"moved meanwhile", good, {{0, 11, 2}}, true, false},
                {"no rights on the volume", good, good, false, false},
                {"what a stub answers", stub, stub, true, false},
                {"none: in the file table itself", {}, {}, true, false}};
    for (const auto &row : rows) {
        Run run;
        FakeDisk::File &file = run.disk.add(u"C:\\d\\f"_s, 200, compressed);
        file.extents = row.extents;
        file.extentsLater = row.later;
        if (row.hasVolume)
            run.disk.volume = VolumeFacts{u"NTFS"_s, 1000, 4096};
        const ShredResult result = run.of(QStringList{u"C:\\d\\f"_s});
        QCOMPARE(result.rowsLeft, 0);
        QVERIFY2(result.records.at(0).oldClustersMaySurvive != row.throughVolume, row.what);
        QVERIFY2(run.disk.volumeWrites.empty() != row.throughVolume, row.what);
        if (!row.throughVolume)
            continue;
        // Each run is one chunk: all passes over the first, in pieces, before the second begins.
        QCOMPARE(chunksOf({run.disk.volumeWrites.begin(), run.disk.volumeWrites.begin() + 3}, 3),
                 (QList<std::pair<quint64, quint64>>{{40'960, 8192}}));
        QCOMPARE(run.disk.volumeWrites.at(4).offset, 40 * 4096 + chunk);
        QCOMPARE(run.written, quint64{3 * 102 * 4096});
    }
}

void TestShred::believableClusters()
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    const struct {
        const char *what;
        std::vector<Extent> extents;
        bool expected;
    } rows[] = {{"to the very end", {{0, 998, 2}}, true},
                {"beyond the end", {{0, 998, 3}}, false},
                {"at the start", {{0, 0, 1}}, false},
                {"negative", {{0, -2, 1}}, false},
                {"empty run", {{0, 5, 0}}, false},
                {"does not begin at 0", {{1, 5, 1}}, false},
                {"gap", {{0, 5, 1}, {2, 7, 1}}, false},
                {"same place twice", {{0, 5, 2}, {2, 6, 1}}, false},
                {"huge", {{0, 5, most}}, false},
                {"huge hole, then more", {{0, -1, most}, {most, 5, 1}}, false},
                {"holes only", {{0, -1, 9}}, false}};
    for (const auto &row : rows) {
        QVERIFY2(areBelievable(row.extents, {u"NTFS"_s, 1000, 4096}) == row.expected, row.what);
        QVERIFY2(!areBelievable(row.extents, {u"FAT32"_s, 1000, 4096}), row.what);
        QVERIFY2(!areBelievable(row.extents, {u"NTFS"_s, 1000, 0}), row.what);
    }
}

QTEST_APPLESS_MAIN(TestShred)

#include "tst_shred.moc"
