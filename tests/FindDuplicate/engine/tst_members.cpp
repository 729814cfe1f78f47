// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/Grouping.h"
#include "FindDuplicate/engine/MemberMarks.h"
#include "FindDuplicate/engine/Members.h"

#include <QHash>
#include <QStringList>
#include <QTest>

#include <random>

using namespace duplicates;
using namespace Qt::StringLiterals;

namespace
{

constexpr quint64 size = 700;
constexpr quint64 written = 133'000'000'000'000'000;

// Files that exist here alone; notes which were opened.
class MemoryProbe : public core::FileProbe
{
public:
    struct File {
        quint32 attributes = 0;
        std::optional<core::FileFacts> facts = core::FileFacts();
        bool inside = true;
    };

    std::optional<quint32> listedAttributes(const QString &path) override
    {
        return files.contains(path) ? std::optional(files.value(path).attributes) : std::nullopt;
    }
    std::optional<core::FileFacts> facts(const QString &path) override
    {
        opened.append(path);
        return files.value(path).facts;
    }
    bool isInside(const QString &, const QString &item) override
    {
        opened.append(item);
        return files.value(item).inside;
    }

    QHash<QString, File> files;
    QStringList opened;
};

FileRecord record(const QString &name, quint64 bytes = size, quint64 lastWriteTime = written)
{
    FileRecord file;
    file.name = name;
    file.walkedFolder = u"C:\\r"_s;
    file.size = bytes;
    file.lastWriteTime = lastWriteTime;
    return file;
}

MemoryProbe::File existing(quint64 number)
{
    MemoryProbe::File file;
    file.facts->identity = {1, number};
    file.facts->size = size;
    file.facts->lastWriteTime = written;
    return file;
}

const core::CancelFlag never;

// The grouping by the rules as they are stated: every candidate searched in turn, every group inserted before
// the first that is not larger.
struct PlainCategory {
    std::vector<FileRecord> candidates;
    std::vector<DuplicateGroup> groups;

    void add(const FileRecord &record)
    {
        for (const FileRecord &candidate : candidates) {
            if (candidate.size != record.size || candidate.lastWriteTime != record.lastWriteTime)
                continue;
            for (DuplicateGroup &group : groups)
                if (group.members.front() == candidate)
                    return group.members.push_back(record);
            return groups.push_back({{candidate, record}, record.size});
        }
        candidates.push_back(record);
    }
};

std::vector<DuplicateGroup> plainReport(const std::vector<PlainCategory> &categories)
{
    std::vector<DuplicateGroup> combined;
    for (const PlainCategory &category : categories) {
        for (const DuplicateGroup &group : category.groups) {
            auto place = combined.begin();
            while (place != combined.end() && place->size > group.size)
                ++place;
            combined.insert(place, group);
        }
    }
    return combined;
}

} // namespace

class MembersTest : public QObject
{
    Q_OBJECT

private slots:
    void groupingEqualsPlainRule_data();
    void groupingEqualsPlainRule();
    void statistics();
    void marks();
    void factsOfAMember_data();
    void factsOfAMember();
    void proposesOneToKeep();
    void whatDiffersIsNoCopy_data();
    void whatDiffersIsNoCopy();
    void oneMemberIsJudgedLikeInTheWholeGroup();
    void oneMemberOfManyIsReadQuickly();
};

void MembersTest::groupingEqualsPlainRule_data()
{
    QTest::addColumn<int>("files");
    QTest::addColumn<quint64>("sizes");
    QTest::addColumn<quint64>("times");
    QTest::newRow("hardly any duplicates") << 600 << quint64(1) << quint64(10'000);
    QTest::newRow("equal sizes, many groups") << 600 << quint64(2) << quint64(80);
    QTest::newRow("equal times") << 600 << quint64(150) << quint64(1);
    QTest::newRow("both vary") << 900 << quint64(12) << quint64(12);
    QTest::newRow("one group") << 100 << quint64(1) << quint64(1);
}

void MembersTest::groupingEqualsPlainRule()
{
    QFETCH(int, files);
    QFETCH(quint64, sizes);
    QFETCH(quint64, times);
    for (quint32 seed = 1; seed <= 8; ++seed) {
        std::mt19937_64 random(seed);
        std::vector<DuplicateGrouper> groupers(3);
        std::vector<PlainCategory> plain(3);
        for (int i = 0; i < files; ++i) {
            // Sizes and times beyond 32 bits, which differ in the upper half alone.
            const FileRecord file =
                record(QString::number(i), (random() % sizes) << 32, (random() % times) << 32);
            const std::size_t category = random() % 3;
            groupers[category].add(file);
            plain[category].add(file);
        }
        std::vector<std::vector<DuplicateGroup>> groups;
        for (std::size_t i = 0; i < 3; ++i) {
            QVERIFY(groupers[i].candidates() == plain[i].candidates);
            QVERIFY(groupers[i].groups() == plain[i].groups);
            groups.push_back(groupers[i].takeGroups());
        }
        QVERIFY(combinedGroups(std::move(groups)) == plainReport(plain));
    }
}

void MembersTest::statistics()
{
    std::vector<DuplicateGroup> groups{{{record(u"a"_s, 100), record(u"b"_s, 100), record(u"c"_s, 100)}, 100},
                                       {{record(u"d"_s, 7), record(u"e"_s, 7)}, 7}};
    QCOMPARE(statisticsOf(groups), (GroupStatistics{2, 5, 207, 0, 0}));
    // A file that was to go and is still there counts.
    groups[0].members[1].checked = true;
    QCOMPARE(statisticsOf(groups), (GroupStatistics{2, 5, 207, 0, 0}));
    groups[0].members[1].moved = true;
    QCOMPARE(statisticsOf(groups), (GroupStatistics{2, 4, 107, 1, 100}));
    for (FileRecord &member : groups[1].members)
        member.moved = true;
    QCOMPARE(statisticsOf(groups), (GroupStatistics{2, 2, 100, 3, 114}));
}

void MembersTest::marks()
{
    using States = std::vector<MemberState>;
    using Marks = std::vector<MemberMark>;
    const MemberState gone{false, std::nullopt};
    const MemberState unknown{true, std::nullopt};
    const MemberState one{true, core::FileIdentity{7, 1}};
    const MemberState two{true, core::FileIdentity{7, 2}};
    const MemberState otherVolume{true, core::FileIdentity{8, 1}}; // the same number there
    const MemberMark copy{true, false};
    const MemberMark last{true, true};
    const auto areMarked = [](const States &members, const Marks &expected) {
        return markMembers(members) == expected;
    };
    QVERIFY(areMarked({one, two}, {copy, copy}));
    QVERIFY(areMarked({one, otherVolume}, {copy, copy}));
    QVERIFY(areMarked({gone, two}, {{}, last}));
    // One file by two paths.
    QVERIFY(areMarked({one, one}, {last, {true, true, 0}}));
    QVERIFY(areMarked({one, two, one}, {copy, copy, {true, false, 0}}));
    // An unknown one may be any other.
    QVERIFY(areMarked({one, unknown}, {last, last}));
    QVERIFY(areMarked({unknown, one, two}, {copy, copy, copy}));
    QVERIFY(areMarked({unknown, unknown}, {last, last}));
}

void MembersTest::factsOfAMember_data()
{
    QTest::addColumn<MemoryProbe::File>("file");
    QTest::addColumn<MemberFacts>("expected");
    const core::FileIdentity identity{1, 2};
    // Beside another file that is as it was.
    const MemberMark mark{true, false, -1};
    const MemberMark last{true, true, -1};
    MemoryProbe::File file = existing(2);
    QTest::newRow("as it was") << file << MemberFacts{mark, identity};
    file.attributes = core::AttributeOffline;
    QTest::newRow("in a store") << file << MemberFacts{mark, identity, false, false, true};
    file.attributes = core::AttributeRecallOnDataAccess;
    QTest::newRow("in the cloud") << file << MemberFacts{mark, identity, false, false, true};
    // Must not be opened: nobody knows whether it is another file.
    file.attributes = core::AttributeRecallOnOpen;
    QTest::newRow("recalled when opened") << file << MemberFacts{last, std::nullopt, false, false, true};
    file = existing(2);
    file.inside = false;
    QTest::newRow("behind a link") << file << MemberFacts{last, identity, false, true};
    file = existing(2);
    file.facts->identityIsCertain = false;
    QTest::newRow("on a server with short numbers")
        << file << MemberFacts{last, identity, false, false, false, false, true};
    // What is no copy any more leaves the other one alone.
    file = existing(2);
    file.facts->size = size + 1;
    QTest::newRow("longer") << file << MemberFacts{last, identity, true};
    file = existing(2);
    file.facts->lastWriteTime = written + 1;
    QTest::newRow("100 ns younger") << file << MemberFacts{last, identity, true};
    file = existing(2);
    file.facts->linkCount = 2;
    QTest::newRow("with another name") << file << MemberFacts{mark, identity, false, false, false, true};
    file = existing(2);
    file.facts.reset();
    QTest::newRow("cannot be opened") << file << MemberFacts{last};
}

void MembersTest::factsOfAMember()
{
    QFETCH(MemoryProbe::File, file);
    QFETCH(MemberFacts, expected);
    const std::vector<FileRecord> group{record(u"a"_s), record(u"b"_s), record(u"gone"_s)};
    MemoryProbe probe;
    probe.files.insert(group[0].fullPath(), existing(1));
    probe.files.insert(group[1].fullPath(), file);
    const std::vector<MemberFacts> read = readMembers(u"C:\\r"_s, group, probe, never);
    QCOMPARE(read.size(), std::size_t(3));
    QVERIFY(read[1] == expected);
    QCOMPARE(read[0].mark.lastCopy, expected.mark.lastCopy);
    QVERIFY(read[2] == MemberFacts());
    QVERIFY(readMember(u"C:\\r"_s, group, 1, probe, never) == expected);
    QCOMPARE(probe.opened.contains(group[1].fullPath()), file.attributes != core::AttributeRecallOnOpen);
}

void MembersTest::proposesOneToKeep()
{
    struct Member {
        const char *name;
        quint64 created;
        MemberFacts facts{{true, false, -1}, std::nullopt};
        bool moved = false;
    };
    // The row of the one that is proposed, -1 when none is.
    const auto proposed = [](const std::vector<Member> &group) {
        std::vector<FileRecord> members;
        std::vector<MemberFacts> facts;
        for (const Member &member : group) {
            members.push_back(record(QString::fromLatin1(member.name)));
            members.back().creationTime = member.created;
            members.back().moved = member.moved;
            facts.push_back(member.facts);
        }
        const std::optional<std::size_t> found = proposedToKeep(members, facts);
        return found ? static_cast<int>(*found) : -1;
    };
    const MemberFacts there{{true, false, -1}, std::nullopt};
    const MemberFacts last{{true, true, -1}, std::nullopt};
    // Created first; of those the shortest path.
    QCOMPARE(proposed({{"a", 3}, {"long name", 1}, {"c", 2}}), 1);
    QCOMPARE(proposed({{"long", 1}, {"ab", 1}, {"cd", 1}, {"x", 2}}), 1);
    // Nothing that was moved, has gone, was changed or lies behind a link.
    QCOMPARE(proposed({{"a", 1, there, true},
                       {"b", 1, {}},
                       {"c", 1, {there.mark, std::nullopt, true}},
                       {"d", 1, {there.mark, std::nullopt, false, true}},
                       {"e", 2},
                       {"f", 3}}),
             4);
    // Where there is no choice.
    QCOMPARE(proposed({{"a", 1, {}}, {"b", 1, last}}), -1);
    QCOMPARE(proposed({{"a", 1, last}, {"b", 1, last}}), -1); // one file by two paths
    QCOMPARE(proposed({{"a", 1, {}}, {"b", 1, {}}}), -1);
}

void MembersTest::whatDiffersIsNoCopy_data()
{
    using enum ContentState;
    QTest::addColumn<GroupContents>("contents");
    QTest::addColumn<QList<bool>>("lastCopy");
    QTest::addColumn<int>("spares");
    QTest::addColumn<int>("proposed");
    QTest::addColumn<QList<int>>("linked"); // reached through a link
    // The third is a second name of the first.
    QTest::newRow("not compared") << GroupContents{} << QList<bool>{false, false, false, false} << 2 << 0
                                  << QList<int>();
    QTest::newRow("all alike") << GroupContents{Reference, Identical, Identical, Identical}
                               << QList<bool>{false, false, false, false} << 2 << 0 << QList<int>();
    QTest::newRow("none could be read") << GroupContents{Unreadable, Unreadable, Unreadable, NotCompared}
                                        << QList<bool>{false, false, false, false} << 2 << 0 << QList<int>();
    QTest::newRow("one differs") << GroupContents{Reference, Different, Identical, Identical}
                                 << QList<bool>{false, true, false, false} << 1 << 0 << QList<int>();
    QTest::newRow("nothing but a second name is alike")
        << GroupContents{Reference, Different, Identical, Different} << QList<bool>{true, true, true, true}
        << 0 << -1 << QList<int>();
    QTest::newRow("the first is in the cloud")
        << GroupContents{Placeholder, Reference, Unreadable, Identical}
        << QList<bool>{true, false, true, false} << 1 << 1 << QList<int>();
    QTest::newRow("one behind a link")
        << GroupContents{} << QList<bool>{false, false, false, false} << 1 << 0 << QList<int>{1};
    QTest::newRow("the first name behind a link")
        << GroupContents{} << QList<bool>{false, false, false, false} << 2 << 1 << QList<int>{0};
    QTest::newRow("one file without links")
        << GroupContents{} << QList<bool>{true, true, true, true} << 0 << -1 << QList<int>{0, 1, 3};
}

void MembersTest::whatDiffersIsNoCopy()
{
    QFETCH(GroupContents, contents);
    const std::vector<FileRecord> group{record(u"a"_s), record(u"b"_s), record(u"c"_s), record(u"d"_s)};
    MemoryProbe probe;
    QFETCH(QList<int>, linked);
    for (int i = 0; i < 4; ++i) {
        MemoryProbe::File file = existing(i == 2 ? 0U : static_cast<quint64>(i));
        file.inside = !linked.contains(i);
        probe.files.insert(group[static_cast<std::size_t>(i)].fullPath(), file);
    }
    const std::vector<MemberFacts> read = readMembers(u"C:\\r"_s, group, probe, never, contents);
    std::vector<MemberFacts> marked = readMembers(u"C:\\r"_s, group, probe, never);
    markAgain(marked, contents);
    QVERIFY(marked == read);
    QList<bool> last;
    for (std::size_t i = 0; i < group.size(); ++i) {
        last.append(read[i].mark.lastCopy);
        QCOMPARE(readMember(u"C:\\r"_s, group, i, probe, never, contents).mark.lastCopy, last.back());
    }
    QTEST(last, "lastCopy");
    QTEST(static_cast<int>(spareBytes(size, read, contents) / size), "spares");
    const std::optional<std::size_t> proposed = proposedToKeep(group, read, contents);
    QTEST(proposed ? static_cast<int>(*proposed) : -1, "proposed");
}

void MembersTest::oneMemberIsJudgedLikeInTheWholeGroup()
{
    std::mt19937 random(1);
    const auto below = [&](unsigned n) { return static_cast<int>(random() % n); };
    int lastCopies = 0;
    for (int round = 0; round < 2000; ++round) {
        std::vector<FileRecord> group;
        MemoryProbe probe;
        for (int i = 2 + below(4); i > 0; --i) {
            group.push_back(record(QString::number(i)));
            if (below(3) == 0)
                continue; // gone
            MemoryProbe::File file = existing(static_cast<quint64>(below(3)));
            if (below(4) == 0)
                file.facts->size = 1;
            if (below(5) == 0)
                file.facts.reset();
            file.inside = below(6) != 0;
            probe.files.insert(group.back().fullPath(), file);
        }
        const std::vector<MemberFacts> read = readMembers(u"C:\\r"_s, group, probe, never);
        for (std::size_t i = 0; i < group.size(); ++i) {
            MemberFacts expected = read[i];
            expected.mark.sameFileAs = -1;
            QVERIFY(readMember(u"C:\\r"_s, group, i, probe, never) == expected);
            lastCopies += expected.mark.lastCopy ? 1 : 0;
        }
    }
    QVERIFY(lastCopies > 1000);
}

void MembersTest::oneMemberOfManyIsReadQuickly()
{
    std::vector<FileRecord> group;
    MemoryProbe probe;
    for (int i = 0; i < 1000; ++i) {
        group.push_back(record(QString::number(i)));
        probe.files.insert(group.back().fullPath(), existing(static_cast<quint64>(i)));
    }
    QVERIFY(!readMember(u"C:\\r"_s, group, 500, probe, never).mark.lastCopy);
    QVERIFY(probe.opened.size() < 5);
    core::CancelFlag cancel;
    cancel.set();
    QVERIFY(readMembers(u"C:\\r"_s, group, probe, cancel).empty());
}

QTEST_APPLESS_MAIN(MembersTest)
#include "tst_members.moc"
