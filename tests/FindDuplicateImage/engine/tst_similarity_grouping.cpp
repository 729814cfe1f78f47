// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/engine/SimilarityGrouper.h"
#include "tests/FindDuplicateImage/engine/PlainFingerprint.h"

#include <QTest>

#include <random>

using namespace lookalikes;
using namespace Qt::StringLiterals;
using tests::compact;
using tests::PlainFingerprint;

namespace
{

// The grouping as it is stated: candidates in order, then the group whose first member has the same id.
struct PlainGrouping {
    struct Candidate {
        ImageRecord image;
        PlainFingerprint fingerprint;
    };
    std::vector<Candidate> candidates;
    std::vector<ImageGroup> groups;
    quint32 counter = 0;

    void add(ImageRecord image, const PlainFingerprint &fingerprint)
    {
        for (const Candidate &candidate : candidates) {
            if (!fingerprint.alike(candidate.fingerprint))
                continue;
            image.groupId = candidate.image.groupId;
            bool appended = false;
            for (ImageGroup &group : groups) {
                if (!group.members.empty() && group.members.front().groupId == image.groupId) {
                    group.members.push_back(image);
                    appended = true;
                }
            }
            if (!appended)
                groups.push_back({{candidate.image, image}});
            return;
        }
        image.groupId = ++counter;
        candidates.push_back({image, fingerprint});
    }
};

// One of a few motifs, with so many positions changed that some copies are alike to the motif and not to each
// other.
PlainFingerprint variation(quint32 motif, std::mt19937 &random)
{
    std::mt19937 pattern(motif);
    PlainFingerprint result;
    for (int i = 0; i < 1600; ++i) {
        result.red.push_back(qint32(pattern() % 77));
        result.green.push_back(qint32(pattern() % 150));
        result.blue.push_back(qint32(pattern() % 30));
    }
    for (quint32 i = random() % 16; i > 0; --i) {
        const std::size_t position = random() % 1600;
        result.green[position] = result.green[position] > 70 ? 0 : 149;
    }
    result.computeMeans();
    return result;
}

ImageRecord record(const QString &name, quint64 size = 0)
{
    ImageRecord image;
    image.name = name;
    image.size = size;
    return image;
}

QStringList described(const std::vector<ImageGroup> &groups)
{
    QStringList lines;
    for (const ImageGroup &group : groups) {
        QString line;
        for (const ImageRecord &member : group.members)
            line += QStringLiteral("%1(%2) ").arg(member.name).arg(member.groupId);
        lines.append(line.trimmed());
    }
    return lines;
}

ImageRecord picture(int width, int height, quint64 size, quint64 written, bool removed = false)
{
    ImageRecord image = record({}, size);
    image.width = width;
    image.height = height;
    image.lastWriteTime = written;
    image.checked = removed;
    return image;
}

} // namespace

class SimilarityGroupingTest : public QObject
{
    Q_OBJECT

private slots:
    void equalsPlainRule();
    void firstOfManyIsFound();
    void reportOrder();
    void proposal();
};

void SimilarityGroupingTest::equalsPlainRule()
{
    int outsiders = 0; // alike to a later member of an earlier group, and yet in none or in another
    for (quint32 seed = 1; seed <= 6; ++seed) {
        std::mt19937 random(seed);
        SimilarityGrouper grouper;
        PlainGrouping plain;
        for (int i = 0; i < 150; ++i) {
            const PlainFingerprint fingerprint = variation(random() % 12, random);
            grouper.add(record(QString::number(i)), compact(fingerprint));
            plain.add(record(QString::number(i)), fingerprint);
        }
        QCOMPARE(described(grouper.groups()), described(plain.groups));
        outsiders += int(plain.candidates.size()) - 12;
    }
    QVERIFY(outsiders > 6);
}

// The list keeps fingerprints in chunks; wherever one stands, the first that is alike is found, and no other.
void SimilarityGroupingTest::firstOfManyIsFound()
{
    std::mt19937 random(9);
    FingerprintList list;
    std::vector<Fingerprint> all;
    for (quint32 i = 0; i < 600; ++i) {
        all.push_back(compact(variation(i < 300 ? i : random() % 600, random)));
        list.add(all.back());
        QCOMPARE(list.size(), all.size());
        if (i % 64 != 0 && i % 256 > 1)
            continue;
        for (int search = 0; search < 60; ++search) {
            const Fingerprint later = compact(variation(random() % 700, random));
            std::optional<std::size_t> expected;
            for (std::size_t e = 0; e < all.size() && !expected; ++e)
                if (areAlike(all[e], later))
                    expected = e;
            QVERIFY(list.firstAlike(later) == expected);
        }
    }
}

void SimilarityGroupingTest::reportOrder()
{
    std::vector<ImageGroup> groups;
    const std::pair<const char *, quint64> firsts[] = {
        {"a", 5}, {"b", 90}, {"c", 5}, {"d", quint64(1) << 40}, {"e", 5}};
    for (const auto &[name, size] : firsts)
        groups.push_back({{record(QLatin1String(name), size), record(u"x"_s, 1000)}});
    sortForReport(groups);
    QString order;
    for (const ImageGroup &group : groups)
        order += group.members.front().name;
    QCOMPARE(order, u"dbace"_s);
}

void SimilarityGroupingTest::proposal()
{
    // The one that is proposed, -1 when none is.
    const auto kept = [](const std::vector<ImageRecord> &members) {
        const auto proposed = proposedToKeep(ImageGroup{members});
        return proposed ? int(*proposed) : -1;
    };
    // Most pixels. 3 * 2^31 of them are fewer than 2^31 in 32 bits.
    QCOMPARE(kept({picture(100, 100, 900, 1), picture(50, 300, 10, 9)}), 1);
    QCOMPARE(kept({picture(60'000, 30'000, 1, 1), picture(0x18000, 0x10000, 1, 1)}), 1);
    // Then the larger file, the oldest, the first.
    QCOMPARE(kept({picture(20, 10, 5, 1), picture(10, 20, 6, 9)}), 1);
    QCOMPARE(kept({picture(9, 9, 5, 7), picture(9, 9, 5, 3)}), 1);
    QCOMPARE(kept({picture(9, 9, 5, 7), picture(9, 9, 5, 7)}), 0);
    // None that was removed.
    QCOMPARE(kept({picture(9, 9, 5, 7, true), picture(8, 8, 5, 7)}), 1);
    QCOMPARE(kept({picture(9, 9, 5, 7, true), picture(8, 8, 5, 7, true)}), -1);
}

QTEST_APPLESS_MAIN(SimilarityGroupingTest)
#include "tst_similarity_grouping.moc"
