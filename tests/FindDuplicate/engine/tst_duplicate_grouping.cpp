// SPDX-License-Identifier: GPL-3.0-or-later

// The indexed grouping and the sorted report against the rules they stand for, written out as they are
// stated: every candidate searched in turn, every group inserted before the first that is not larger.

#include "FindDuplicate/engine/Grouping.h"
#include "FindDuplicate/engine/MemberMarks.h"

#include <QTest>

#include <random>

using namespace duplicates;
using namespace Qt::StringLiterals;

namespace
{

FileRecord file(const QString &name, quint64 size, quint64 lastWriteTime)
{
    FileRecord record;
    record.name = name;
    record.walkedFolder = u"C:\\r"_s;
    record.size = size;
    record.lastWriteTime = lastWriteTime;
    return record;
}

struct PlainCategory {
    std::vector<FileRecord> candidates;
    std::vector<DuplicateGroup> groups;

    void add(const FileRecord &record)
    {
        for (const FileRecord &candidate : candidates) {
            if (candidate.size != record.size || candidate.lastWriteTime != record.lastWriteTime)
                continue;
            bool appended = false;
            for (DuplicateGroup &group : groups) {
                if (!group.members.empty() && group.members.front().size == record.size &&
                    group.members.front().lastWriteTime == record.lastWriteTime) {
                    group.members.push_back(record);
                    appended = true;
                }
            }
            if (!appended)
                groups.push_back({{candidate, record}, record.size});
            return;
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

core::FileIdentity identity(quint64 number)
{
    return {7, number};
}

} // namespace

class DuplicateGroupingTest : public QObject
{
    Q_OBJECT

private slots:
    void equalsPlainRule_data();
    void equalsPlainRule();
    void statistics();
    void marks();
};

void DuplicateGroupingTest::equalsPlainRule_data()
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

void DuplicateGroupingTest::equalsPlainRule()
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
            const FileRecord record =
                file(QString::number(i), (random() % sizes) << 32, (random() % times) << 32);
            const std::size_t category = random() % 3;
            groupers[category].add(record);
            plain[category].add(record);
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

void DuplicateGroupingTest::statistics()
{
    std::vector<DuplicateGroup> groups{
        {{file(u"a"_s, 100, 1), file(u"b"_s, 100, 1), file(u"c"_s, 100, 1)}, 100},
        {{file(u"d"_s, 7, 1), file(u"e"_s, 7, 1)}, 7}};
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

void DuplicateGroupingTest::marks()
{
    using States = std::vector<MemberState>;
    using Marks = std::vector<MemberMark>;
    const MemberState gone{false, std::nullopt};
    const MemberState unknown{true, std::nullopt};
    const MemberState one{true, identity(1)};
    const MemberState two{true, identity(2)};
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

QTEST_APPLESS_MAIN(DuplicateGroupingTest)
#include "tst_duplicate_grouping.moc"
