// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/engine/PreparationQueue.h"
#include "FindDuplicateImage/engine/Scan.h"
#include "tests/FindDuplicate/engine/ScanRecorder.h"
#include "tests/FindDuplicateImage/engine/PlainFingerprint.h"
#include "tests/support/MemoryEnumerator.h"

#include <QHash>
#include <QTest>

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <new>
#include <thread>

using namespace imaging;
using namespace lookalikes;
using namespace Qt::StringLiterals;

namespace
{

class CountingSink : public ThumbnailSink
{
public:
    std::atomic_int stored = 0;
    qint64 store(const QImage &thumbnail) override
    {
        ++stored;
        return thumbnail.width(); // shows in the record
    }
};

// Pictures by path. Paths without one do not decode.
class FakePictures
{
public:
    QHash<QString, QImage> byPath;
    std::atomic_int decoded = 0;
    std::atomic_int atOnce = 0;
    std::atomic_int maxAtOnce = 0;
    int jitter = 0; // microseconds
    qint64 bytes = 0;

    Decode decoder()
    {
        return [this](const QString &path,
                      const imaging::BeforeDecode &before) -> std::optional<imaging::LoadedImage> {
            ++decoded;
            if (path.endsWith(u"throws.png"))
                throw std::bad_alloc();
            before(bytes);
            const int now = ++atOnce;
            for (int most = maxAtOnce; now > most && !maxAtOnce.compare_exchange_weak(most, now);) {
            }
            if (jitter > 0)
                std::this_thread::sleep_for(std::chrono::microseconds(qHash(path) % std::size_t(jitter)));
            --atOnce;
            const QImage image = byPath.value(path);
            if (image.isNull())
                return std::nullopt;
            return imaging::LoadedImage{image, "png"};
        };
    }
};

QStringList described(const ScanResult &result)
{
    QStringList lines;
    for (const ImageGroup &group : result.groups) {
        QString line;
        for (const ImageRecord &member : group.members)
            line += QStringLiteral("%1(%2, %3x%4, %5) ")
                        .arg(member.fullPath())
                        .arg(member.groupId)
                        .arg(member.width)
                        .arg(member.height)
                        .arg(member.thumbnail);
        lines.append(line.trimmed());
    }
    return lines;
}

} // namespace

class LookalikeScanTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void findsGroups();
    void opensAndComparesPicturesOnly();
    void threadsChangeNothing();
    void cancelled();
    void decodedMemoryIsBounded();
    void queueKeepsOrder();

private:
    void addPicture(const QString &path, const QImage &image, quint64 size = 1000);
    ScanResult scan(const ScanOptions &options = {});

    std::unique_ptr<tests::MemoryEnumerator> m_disk;
    std::unique_ptr<FakePictures> m_pictures;
    std::unique_ptr<CountingSink> m_sink;
    core::CancelFlag m_cancel;
    tests::ScanRecorder m_events;
    std::mt19937 m_random;
};

void LookalikeScanTest::init()
{
    m_disk = std::make_unique<tests::MemoryEnumerator>();
    m_pictures = std::make_unique<FakePictures>();
    m_sink = std::make_unique<CountingSink>();
    m_cancel.reset();
    m_events = {};
    m_random.seed(1);
}

void LookalikeScanTest::addPicture(const QString &path, const QImage &image, quint64 size)
{
    m_disk->addFile(path, size, 3, 2, 1);
    m_pictures->byPath.insert(path, image);
}

ScanResult LookalikeScanTest::scan(const ScanOptions &options)
{
    m_events.events.clear();
    return findLookalikes(u"C:\\r\\"_s, options, *m_disk, m_pictures->decoder(), *m_sink, m_events, m_cancel);
}

void LookalikeScanTest::findsGroups()
{
    const QImage cat = tests::blockPicture({640, 480}, 8, m_random);
    const QImage dog = tests::blockPicture({640, 480}, 8, m_random);
    const QImage bird = tests::blockPicture({640, 480}, 8, m_random);
    addPicture(u"C:\\r\\cat.jpg"_s, cat, 10);
    addPicture(u"C:\\r\\dog.jpg"_s, dog, 20);
    addPicture(u"C:\\r\\a\\bird.gif"_s, bird);
    addPicture(u"C:\\r\\a\\small dog.png"_s, dog.scaled(320, 240), 30);
    addPicture(u"C:\\r\\cat.PNG"_s, cat, 40);
    addPicture(u"C:\\r\\cat.webp"_s, cat, 50);
    const ScanResult result = scan();
    QCOMPARE(described(result),
             QStringList({u"C:\\r\\dog.jpg(2, 640x480, 171) C:\\r\\a\\small dog.png(2, 320x240, 171)"_s,
                          u"C:\\r\\cat.jpg(1, 640x480, 171) C:\\r\\cat.PNG(1, 640x480, 171) "
                          "C:\\r\\cat.webp(1, 640x480, 171)"_s}));
    QCOMPARE(result.imagesCompared, std::size_t(6));
    QCOMPARE(m_sink->stored.load(), 6);
    QCOMPARE(result.groups[0].members[0].format, "png");
    QCOMPARE(result.groups[0].members[0].lastWriteTime, quint64(3));
    QCOMPARE(m_events.events,
             QStringList({u"total 2"_s, u"1"_s, u"C:\\r"_s, u"2"_s, u"C:\\r"_s, u"3"_s, u"step"_s, u"4"_s,
                          u"C:\\r\\a"_s, u"5"_s, u"C:\\r\\a"_s, u"6"_s, u"C:\\r"_s, u"7"_s, u"C:\\r"_s}));
}

void LookalikeScanTest::opensAndComparesPicturesOnly()
{
    const QImage image = tests::blockPicture({100, 100}, 8, m_random);
    for (const QString &name : {u".x.avif"_s, u".x.pspimage"_s, u"x.WEBP"_s})
        addPicture(u"C:\\r\\"_s + name, image, 1); // dot-files, smaller than any threshold
    addPicture(u"C:\\r\\x.svg"_s, image);
    addPicture(u"C:\\r\\x.jpg.txt"_s, image);
    // What is opened and cannot be compared.
    addPicture(u"C:\\r\\narrow.png"_s, image.scaled(39, 500));
    addPicture(u"C:\\r\\narrow2.png"_s, image.scaled(39, 500));
    addPicture(u"C:\\r\\text.png"_s, QImage());
    addPicture(u"C:\\r\\throws.png"_s, image);
    addPicture(u"C:\\r\\z.png"_s, image.scaled(40, 40));
    const auto addEntry = [&](const QString &name, quint32 attributes, quint32 tag = 0) {
        core::DirectoryEntry entry;
        entry.attributes = attributes;
        entry.reparseTag = tag;
        m_disk->addEntry(u"C:\\r\\"_s + name, entry);
        m_pictures->byPath.insert(u"C:\\r\\"_s + name, image);
    };
    // Of a cloud store: not here, and here.
    addEntry(u"1.png"_s, core::AttributeOffline);
    addEntry(u"2.png"_s, core::AttributeRecallOnOpen);
    addEntry(u"3.png"_s, core::AttributeRecallOnDataAccess);
    addEntry(u"here.png"_s, core::AttributeReparsePoint, tests::MemoryEnumerator::cloudTag);
    for (const int threads : {0, 2}) {
        m_pictures->decoded = 0;
        ScanOptions options;
        options.decodeThreads = threads;
        const ScanResult result = scan(options);
        QStringList found;
        for (const ImageRecord &member : result.groups.at(0).members)
            found.append(member.name);
        QCOMPARE(found,
                 (QStringList{u".x.avif"_s, u".x.pspimage"_s, u"x.WEBP"_s, u"z.png"_s, u"here.png"_s}));
        QCOMPARE(result.imagesCompared, std::size_t(5));
        QCOMPARE(result.placeholders, std::size_t(3));
        QCOMPARE(m_pictures->decoded.load(), 9);
    }
}

void LookalikeScanTest::threadsChangeNothing()
{
    std::vector<QImage> motifs;
    for (int i = 0; i < 12; ++i)
        motifs.push_back(tests::blockPicture({90, 60}, 6, m_random));
    for (int i = 0; i < 150; ++i) {
        const QString path = QStringLiteral("C:\\r\\%1\\%2.png").arg(i / 20).arg(i);
        const QImage &motif = motifs[m_random() % motifs.size()];
        addPicture(path, i % 11 == 0 ? QImage() : motif.scaled(60 + i, 60), m_random() % 5);
    }
    const ScanResult expected = scan();
    const QStringList expectedEvents = m_events.events;
    QVERIFY(expected.groups.size() > 5);

    m_pictures->jitter = 800;
    for (const int threads : {1, 2, 3, 8}) {
        for (const int readAhead : {0, 2, 2}) {
            ScanOptions options;
            options.decodeThreads = threads;
            options.readAheadThreads = readAhead;
            const ScanResult result = scan(options);
            QCOMPARE(described(result), described(expected));
            QCOMPARE(result.imagesCompared, expected.imagesCompared);
            QCOMPARE(m_events.events, expectedEvents);
        }
    }
}

void LookalikeScanTest::cancelled()
{
    const QImage image = tests::blockPicture({100, 100}, 8, m_random);
    for (int i = 0; i < 100; ++i)
        addPicture(QStringLiteral("C:\\r\\%1.png").arg(i), image);
    m_events.cancelAt = &m_cancel;
    for (const int threads : {0, 3}) {
        m_cancel.reset();
        m_pictures->decoded = 0;
        m_events.cancelItem = 30;
        ScanOptions options;
        options.decodeThreads = threads;
        const ScanResult result = scan(options);
        QVERIFY(result.cancelled);
        QCOMPARE(result.itemsSeen, 30);
        QVERIFY(result.imagesCompared <= 30);
        QVERIFY(m_pictures->decoded <= 30);
    }
}

void LookalikeScanTest::decodedMemoryIsBounded()
{
    const QImage image = tests::blockPicture({100, 100}, 8, m_random);
    for (int i = 0; i < 60; ++i)
        addPicture(QStringLiteral("C:\\r\\%1.png").arg(i), image);
    m_pictures->jitter = 3000;
    ScanOptions options;
    options.decodeThreads = 8;
    options.decodedBytes = 1000;
    m_pictures->bytes = 400;
    QCOMPARE(scan(options).imagesCompared, std::size_t(60));
    QCOMPARE(m_pictures->maxAtOnce.load(), 2);
    // One picture may be larger than all that is allowed.
    m_pictures->maxAtOnce = 0;
    m_pictures->bytes = 5000;
    QCOMPARE(scan(options).imagesCompared, std::size_t(60));
    QCOMPARE(m_pictures->maxAtOnce.load(), 1);
}

void LookalikeScanTest::queueKeepsOrder()
{
    for (const int threads : {0, 1, 5}) {
        PreparationQueue queue(threads, [](duplicates::FileRecord file) {
            std::this_thread::sleep_for(std::chrono::microseconds(file.size * 7919 % 500));
            PreparedImage prepared;
            prepared.image.size = file.size;
            return prepared;
        });
        quint64 given = 0, taken = 0;
        while (taken < 300) {
            while (!queue.isFull()) {
                duplicates::FileRecord file;
                file.size = given++;
                queue.add(file);
            }
            QCOMPARE(given - taken,
                     std::max<quint64>(1, quint64(threads) * PreparationQueue::filesPerThread));
            QCOMPARE(queue.takeFirst().image.size, taken++);
        }
        // Leaves with files inside, begun and not begun.
        QVERIFY(threads == 0 || !queue.isEmpty());
    }
}

QTEST_GUILESS_MAIN(LookalikeScanTest)
#include "tst_lookalike_scan.moc"
