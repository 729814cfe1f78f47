// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/CustomFileType.h"
#include "FindDuplicate/engine/Scan.h"

#include "tests/FindDuplicate/engine/ScanRecorder.h"
#include "tests/support/MemoryEnumerator.h"

#include <QTest>

#include <random>

using namespace duplicates;
using namespace Qt::StringLiterals;

namespace
{

QStringList paths(const ScanResult &result)
{
    QStringList all;
    for (const DuplicateGroup &group : result.groups) {
        QStringList members;
        for (const FileRecord &member : group.members)
            members.append(member.fullPath());
        all.append(members.join(u' '));
    }
    return all;
}

} // namespace

class DuplicateScanTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void groupsWithinCategories();
    void threshold();
    void dotNames();
    void progress();
    void driveRoot();
    void cancelled();
    void category();
    void matchesAsComparedOneByOne();
    void customTypeIsStored_data();
    void customTypeIsStored();
    void malformedCustomTypeIsAbsent();

private:
    ScanResult scan(const QString &root = u"C:\\r"_s);

    std::unique_ptr<tests::MemoryEnumerator> m_disk;
    ScanOptions m_options;
    core::CancelFlag m_cancel;
    tests::ScanRecorder m_events;
};

void DuplicateScanTest::init()
{
    m_disk = std::make_unique<tests::MemoryEnumerator>();
    m_options = {categorySelection(core::defaultFileTypes(), {})};
    m_cancel.reset();
    m_events = {};
}

ScanResult DuplicateScanTest::scan(const QString &root)
{
    return findDuplicates(root, m_options, *m_disk, m_events, m_cancel);
}

void DuplicateScanTest::groupsWithinCategories()
{
    m_disk->addFile(u"C:\\r\\a.jpg"_s, 500, 9, 8, 7);
    m_disk->addFile(u"C:\\r\\same.txt"_s, 500, 9);
    m_disk->addFile(u"C:\\r\\x\\B.JPG"_s, 500, 9);
    m_disk->addFile(u"C:\\r\\unknown.zzz"_s, 500, 9);
    m_disk->addFile(u"C:\\r\\unknown2.zzz"_s, 500, 9);
    m_disk->addFile(u"C:\\r\\later.jpg"_s, 500, 10);
    m_disk->addFile(u"C:\\r\\c.png"_s, 500, 9);
    const ScanResult result = scan(u"C:\\r\\"_s);
    QCOMPARE(paths(result), QStringList{u"C:\\r\\a.jpg C:\\r\\x\\B.JPG C:\\r\\c.png"_s});
    QCOMPARE(result.itemsSeen, 8);
    QCOMPARE(result.filesCompared, std::size_t(5));
    QVERIFY(!result.cancelled);
    const FileRecord &first = result.groups[0].members[0];
    QCOMPARE(first.folder(), u"C:\\r"_s);
    QCOMPARE(first.suffix(), u"jpg"_s);
    QCOMPARE(first.lastWriteTime, quint64(9));
    QCOMPARE(first.lastAccessTime, quint64(8));
    QCOMPARE(first.creationTime, quint64(7));
    QVERIFY(!first.checked);
}

void DuplicateScanTest::threshold()
{
    constexpr quint64 large = quint64(5) << 32;
    for (const quint64 size : {quint64(0), quint64(19), quint64(20), quint64(1000), large}) {
        m_disk->addFile(u"C:\\r\\a%1.txt"_s.arg(size), size, 1);
        m_disk->addFile(u"C:\\r\\b%1.txt"_s.arg(size), size, 1);
    }
    const auto sizesFound = [&] {
        QList<quint64> sizes;
        for (const DuplicateGroup &group : scan().groups)
            sizes.append(group.size);
        return sizes;
    };
    QCOMPARE(sizesFound(), (QList<quint64>{large, 1000, 20})); // by default 20 bytes, not KB
    m_options.smallFileSize = 10240;
    QCOMPARE(sizesFound(), QList<quint64>{large});
    for (const qint32 every : {0, -1}) { // a stored 0xFFFFFFFF leaves nothing out
        m_options.smallFileSize = every;
        QCOMPARE(sizesFound(), (QList<quint64>{large, 1000, 20, 19, 0}));
    }
}

void DuplicateScanTest::dotNames()
{
    m_disk->addFile(u"C:\\r\\.git\\a.txt"_s, 100, 1);
    m_disk->addFile(u"C:\\r\\.b.txt"_s, 100, 1);
    m_disk->addFile(u"C:\\r\\c.txt"_s, 100, 1);
    QCOMPARE(paths(scan()), QStringList{u"C:\\r\\.git\\a.txt C:\\r\\c.txt"_s});
    QCOMPARE(m_events.events.count(u"C:\\r"_s), 2); // the dot-file is reported too
}

void DuplicateScanTest::progress()
{
    m_disk->addFile(u"C:\\r\\1.txt"_s, 1);
    m_disk->addFile(u"C:\\r\\a\\2.txt"_s, 1);
    m_disk->addFolder(u"C:\\r\\a\\deep"_s);
    m_disk->setUnreadable(u"C:\\r\\secret"_s);
    m_disk->addFile(u"C:\\r\\3.zzz"_s, 1);
    QCOMPARE(scan().foldersUnread, 1);
    QCOMPARE(m_events.events, QStringList({u"total 3"_s, u"1"_s, u"C:\\r"_s, u"2"_s, u"step"_s, u"3"_s,
                                           u"C:\\r\\a"_s, u"4"_s, u"5"_s, u"step"_s, u"6"_s, u"C:\\r"_s}));
}

void DuplicateScanTest::driveRoot()
{
    m_disk->addFile(u"D:\\a.txt"_s, 100, 1);
    m_disk->addFile(u"D:\\b.txt"_s, 100, 1);
    const ScanResult result = scan(u"D:\\"_s);
    QCOMPARE(paths(result), QStringList{u"D:\\a.txt D:\\b.txt"_s});
    QCOMPARE(result.groups[0].members[0].folder(), u"D:\\"_s);
}

void DuplicateScanTest::cancelled()
{
    for (int i = 0; i < 10; ++i)
        m_disk->addFile(u"C:\\r\\%1.txt"_s.arg(i), 100, 1);
    m_events.cancelAt = &m_cancel;
    m_events.cancelItem = 3;
    const ScanResult result = scan();
    QVERIFY(result.cancelled);
    QCOMPARE(result.itemsSeen, 3);
    QCOMPARE(result.groups.size(), std::size_t(1));
    QCOMPARE(result.groups[0].members.size(), std::size_t(3));
    // Before it has begun.
    m_events = {};
    QVERIFY(scan().cancelled);
    QCOMPARE(m_events.events, QStringList{u"total 1"_s});
}

void DuplicateScanTest::category()
{
    const SuffixMatcher matcher({{u"A"_s, {u".gz"_s}, true},
                                 {u"B"_s, {u".gz"_s, u".x"_s}, false},
                                 {u"C"_s, {u".x"_s, u".x"_s}, true},
                                 {u"D"_s, {u".tar.gz"_s, u"nodot"_s, u"."_s, u""_s}, true}});
    QCOMPARE(matcher.match(u"backup.tar.gz"_s), 0);
    QCOMPARE(matcher.match(u".gz"_s), 0);
    QCOMPARE(matcher.match(u"a.x"_s), 2); // the first that is selected
    for (const QString &name : {u"gz"_s, u"a."_s, u"a.nodot"_s, u"a.gzgzgzgzgzgz"_s})
        QCOMPARE(matcher.match(name), -1);
}

// Case folding has many corners (sharp s, dotted capital I, Kelvin sign, letters beyond 16 bits); all must
// agree with comparing the texts.
void DuplicateScanTest::matchesAsComparedOneByOne()
{
    const QStringList letters =
        u"a A k K \u212a s \u017f \u00df \u1e9e ss i I \u0130 \u0131 \u03c3 \u03c2 \u03a3"_s.split(u' ') +
        QStringList{u"\U00010400"_s, u"\U00010428"_s, QString(QChar(0xd801)), QString(QChar(0xdc00))};
    std::mt19937 random(11);
    const auto text = [&] {
        QString result;
        for (quint32 length = random() % 2 + 1; length > 0; --length)
            result += letters[static_cast<qsizetype>(random()) % letters.size()];
        return result;
    };
    int found = 0;
    for (int round = 0; round < 300; ++round) {
        CategorySelection selection;
        for (int i = 0; i < 4; ++i)
            selection.push_back({u"c"_s, {u'.' + text(), u'.' + text()}, random() % 4 != 0});
        const SuffixMatcher matcher(selection);
        for (int i = 0; i < 40; ++i) {
            const QString suffix = text();
            int expected = -1;
            for (int c = 3; c >= 0; --c)
                for (const QString &extension : selection[static_cast<std::size_t>(c)].extensions)
                    if (selection[static_cast<std::size_t>(c)].selected &&
                        QString::compare(extension, u'.' + suffix, Qt::CaseInsensitive) == 0)
                        expected = c;
            QCOMPARE(matcher.match(u"name."_s + suffix), expected);
            found += expected >= 0 ? 1 : 0;
        }
    }
    QVERIFY(found > 500);
}

void DuplicateScanTest::customTypeIsStored_data()
{
    QTest::addColumn<CustomFileType>("type");
    QTest::addColumn<QString>("stored");
    QTest::newRow("plain") << CustomFileType{u"Notes"_s, {u".note"_s, u".memo"_s}} << u"Notes;.note;.memo"_s;
    QTest::newRow("what separates, in a name")
        << CustomFileType{u"a;b \\ (c), d"_s, {u".x"_s}} << u"a\\;b \\\\ (c), d;.x"_s;
    QTest::newRow("and in an extension") << CustomFileType{u"n"_s, {u".;"_s, u".\\"_s}} << u"n;.\\;;.\\\\"_s;
    QTest::newRow("NUL, which a registry text cannot hold")
        << CustomFileType{QString(QChar(u'\0')), {u".0"_s}} << u"\\0;.0"_s;
}

void DuplicateScanTest::customTypeIsStored()
{
    QFETCH(CustomFileType, type);
    QFETCH(QString, stored);
    QVERIFY(type.isValid());
    QCOMPARE(type.storedText(), stored);
    QVERIFY(parseStoredCustomFileType(stored) == type);
}

void DuplicateScanTest::malformedCustomTypeIsAbsent()
{
    const QString bareNul = u"n;.a"_s + QChar(u'\0');
    for (const QString &stored :
         {u""_s, u"no extension"_s, u";.no name"_s, u"empty extension;.a;"_s, u"dot alone;."_s, u"no dot;a"_s,
          u"ends within an escape;.a\\"_s, u"unknown escape;.a\\n"_s, bareNul})
        QVERIFY2(!parseStoredCustomFileType(stored), qPrintable(stored));
}

QTEST_APPLESS_MAIN(DuplicateScanTest)
#include "tst_duplicate_scan.moc"
