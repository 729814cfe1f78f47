// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/engine/Scan.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;
using diskusage::LargestChildren;
using Child = LargestChildren::Child;
using Children = std::vector<Child>;

class TestLargestChildren : public QObject
{
    Q_OBJECT

private slots:
    void serialised();
    void keepsTheTenLargest();
    void readsBackWhatItWrote();
    void stopsAtWhatIsNotOfTheForm();
};

void TestLargestChildren::serialised()
{
    LargestChildren largest;
    QCOMPARE(largest.serialised(), QString());
    largest.offer(u"Photos"_s, 50, LargestChildren::SubFolder);
    largest.offer(u"a.iso"_s, 700, LargestChildren::File);
    QCOMPARE(largest.serialised(), u"a.iso:700:0;Photos:50:1;"_s);
    largest.offer(u"huge"_s, std::numeric_limits<qint64>::max(), LargestChildren::File);
    QVERIFY(largest.serialised().startsWith(u"huge:9223372036854775807:0;"));
}

// Like a stable sort by size of everything offered, cut off after ten.
void TestLargestChildren::keepsTheTenLargest()
{
    QRandomGenerator random(2);
    for (int round = 0; round < 500; ++round) {
        LargestChildren largest;
        Children offered;
        const int sizes = 1 + random.bounded(30); // one: all are equal
        for (int i = random.bounded(40); i > 0; --i) {
            offered.push_back({QString::number(i), random.bounded(sizes),
                               random.bounded(2) ? LargestChildren::File : LargestChildren::SubFolder});
            largest.offer(offered.back().name, offered.back().size, offered.back().kind);
        }
        std::stable_sort(offered.begin(), offered.end(),
                         [](const Child &a, const Child &b) { return a.size > b.size; });
        offered.resize(std::min<std::size_t>(offered.size(), 10));
        QVERIFY(largest.children() == offered);
    }
}

void TestLargestChildren::readsBackWhatItWrote()
{
    for (const QString &name : {u"x;y.txt;"_s, u"5;0;"_s, u"\U0001F600.png"_s,
                                QString(QChar(0xDC00)) + QChar(0xD800), QString(30'000, u'n')}) {
        LargestChildren largest;
        largest.offer(name, 12, LargestChildren::SubFolder);
        largest.offer(name, std::numeric_limits<qint64>::max(), LargestChildren::File);
        largest.offer(name, 0, LargestChildren::File);
        QVERIFY2(LargestChildren::parse(largest.serialised()) == largest.children(), qPrintable(name));
    }
}

void TestLargestChildren::stopsAtWhatIsNotOfTheForm()
{
    const Children expected{{u"a"_s, 1, LargestChildren::File}};
    for (const char *text :
         {"b", "b:", "b:5", "b:5:", "b:5:0", "b::0;", "b:-5:0;", "b:+5:0;", "b: 5:0;", "b:5.0:0;", "b:5:2;",
          "b:5:00;", "b:5:;", "b:9223372036854775808:0;", "b:x:0;", "b:5:0:c:6:0;"}) {
        QVERIFY2(LargestChildren::parse(QString::fromLatin1(text)).empty(), text);
        QVERIFY2(LargestChildren::parse(u"a:1:0;"_s + QString::fromLatin1(text)) == expected, text);
    }
}

QTEST_GUILESS_MAIN(TestLargestChildren)
#include "tst_largest_children.moc"
