// SPDX-License-Identifier: GPL-3.0-or-later
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

FileRecord record(const QString &name)
{
    FileRecord file;
    file.name = name;
    file.walkedFolder = u"C:\\r"_s;
    file.size = size;
    file.lastWriteTime = written;
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

} // namespace

class MembersTest : public QObject
{
    Q_OBJECT

private slots:
    void factsOfAMember_data();
    void factsOfAMember();
    void proposesOneToKeep();
    void whatDiffersIsNoCopy_data();
    void whatDiffersIsNoCopy();
    void aCancelledReadingEnds();
    void oneMemberIsJudgedLikeInTheWholeGroup();
    void oneMemberOfManyIsReadQuickly();
};

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
    // The third is a second name of the first.
    QTest::newRow("not compared") << GroupContents{} << QList<bool>{false, false, false, false} << 2 << 0;
    QTest::newRow("all alike") << GroupContents{Reference, Identical, Identical, Identical}
                               << QList<bool>{false, false, false, false} << 2 << 0;
    QTest::newRow("none could be read") << GroupContents{Unreadable, Unreadable, Unreadable, NotCompared}
                                        << QList<bool>{false, false, false, false} << 2 << 0;
    QTest::newRow("one differs") << GroupContents{Reference, Different, Identical, Identical}
                                 << QList<bool>{false, true, false, false} << 1 << 0;
    QTest::newRow("nothing but a second name is alike")
        << GroupContents{Reference, Different, Identical, Different} << QList<bool>{true, true, true, true}
        << 0 << -1;
    QTest::newRow("the first is in the cloud") << GroupContents{Placeholder, Reference, Unreadable, Identical}
                                               << QList<bool>{true, false, true, false} << 1 << 1;
}

void MembersTest::whatDiffersIsNoCopy()
{
    QFETCH(GroupContents, contents);
    const std::vector<FileRecord> group{record(u"a"_s), record(u"b"_s), record(u"c"_s), record(u"d"_s)};
    MemoryProbe probe;
    for (int i = 0; i < 4; ++i)
        probe.files.insert(group[static_cast<std::size_t>(i)].fullPath(),
                           existing(i == 2 ? 0U : static_cast<quint64>(i)));
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

void MembersTest::aCancelledReadingEnds()
{
    MemoryProbe probe;
    core::CancelFlag cancel;
    cancel.set();
    QVERIFY(readMembers(u"C:\\r"_s, {record(u"a"_s)}, probe, cancel).empty());
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
}

QTEST_APPLESS_MAIN(MembersTest)
#include "tst_members.moc"
