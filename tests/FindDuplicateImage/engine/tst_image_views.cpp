// SPDX-License-Identifier: GPL-3.0-or-later

// What the results view is made of: the list of groups, kept thumbnails and the picture of a difference.

#include "FindDuplicate/engine/ListedGroups.h"
#include "FindDuplicateImage/engine/Difference.h"
#include "FindDuplicateImage/engine/ImageRecord.h"
#include "imaging/engine/ThumbnailSpool.h"
#include "tests/FindDuplicateImage/engine/PlainFingerprint.h"

#include <QBuffer>
#include <QTest>

#include <thread>

using namespace imaging;
using namespace lookalikes;
using duplicates::GroupOrder;
using namespace Qt::StringLiterals;

namespace
{

QImage filled(QSize size, QColor colour, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, format);
    image.fill(colour);
    return image;
}

// A disk that is full after so many bytes.
class SmallDisk : public QBuffer
{
public:
    qint64 room = 1 << 20;

protected:
    qint64 writeData(const char *data, qint64 length) override
    {
        return QBuffer::writeData(data, std::min(length, std::max<qint64>(room - pos(), 0)));
    }
};

ImageRecord picture(const QString &path, quint64 size, bool removed = false)
{
    ImageRecord record;
    const qsizetype separator = path.lastIndexOf(u'\\');
    record.name = path.mid(separator + 1);
    record.walkedFolder = path.left(separator);
    record.size = size;
    record.checked = removed;
    return record;
}

bool isRed(QRgb pixel)
{
    return qRed(pixel) > qGreen(pixel) + 60;
}

} // namespace

class ImageViewsTest : public QObject
{
    Q_OBJECT

private slots:
    void listsGroups();
    void thumbnailsComeBack();
    void storedFromSeveralThreads();
    void difference();
};

void ImageViewsTest::listsGroups()
{
    using enum GroupOrder;
    const std::vector<ImageGroup> groups{
        {{picture(u"C:\\Pictures\\2019\\zebra.jpg"_s, 90), picture(u"C:\\Pictures\\2019\\a Copy.jpg"_s, 40)}},
        {{picture(u"C:\\Pictures\\Summer\\alp.jpg"_s, 70), picture(u"C:\\Pictures\\Summer\\b.jpg"_s, 30),
          picture(u"C:\\Pictures\\c.jpg"_s, 20)}},
        {{picture(u"C:\\Pictures\\2020\\m.jpg"_s, 60),
          picture(u"C:\\Pictures\\late summer\\copy.jpg"_s, 40)}},
        {{picture(u"C:\\Pictures\\Lake.jpg"_s, 50), picture(u"C:\\Pictures\\x.jpg"_s, 50, true)}}};
    std::vector<quint64> freeable;
    for (const ImageGroup &group : groups)
        freeable.push_back(freeableBytes(group));
    const auto listed = [&](const QString &search, GroupOrder order) {
        const auto found = listedGroups(groups, u"C:\\Pictures\\"_s, search, order, freeable);
        return QList<int>(found.cbegin(), found.cend());
    };
    QCOMPARE(listed(u"COPY"_s, Report), QList({0, 2}));   // of any member's name
    QCOMPARE(listed(u"summer"_s, Report), QList({1, 2})); // of a folder below the root
    for (const QString &text : {u"*"_s, u"pictures"_s, u"\\2019\\"_s})
        QCOMPARE(listed(text, Report), QList<int>());
    QCOMPARE(listed(QString(), Report), QList({0, 1, 2, 3}));
    // 50, 40, 40 and, since one was removed, nothing.
    QCOMPARE(listed(QString(), Freeable), QList({1, 0, 2, 3}));
    QCOMPARE(listed(QString(), Members), QList({1, 0, 2, 3}));
    QCOMPARE(listed(QString(), Name), QList({1, 3, 2, 0}));
    QCOMPARE(listed(QString(), Folder), QList({3, 0, 2, 1}));
}

void ImageViewsTest::thumbnailsComeBack()
{
    std::mt19937 random(1);
    SmallDisk device;
    device.open(QIODevice::ReadWrite);
    ThumbnailSpool spool(device);
    const QImage photo = tests::blockPicture({170, 128}, 4, random);
    const QImage clear = filled({128, 128}, Qt::transparent, QImage::Format_ARGB32);
    const qint64 first = spool.store(photo);
    const qint64 second = spool.store(clear);
    const qint64 strip = spool.store(filled({128, 40'000}, Qt::green));

    const QImage read = spool.load(first);
    QCOMPARE(read.size(), photo.size());
    const QColor colour = read.pixelColor(10, 10), original = photo.pixelColor(10, 10);
    QVERIFY(std::abs(colour.green() - original.green()) < 16);
    QVERIFY(spool.load(second).hasAlphaChannel());
    QCOMPARE(spool.load(second).pixelColor(5, 5).alpha(), 0);
    QCOMPARE(spool.load(strip).height(), ThumbnailSpool::maxSide);
    QVERIFY(spool.load(noThumbnail).isNull());
    QVERIFY(spool.load(3).isNull());
    QVERIFY(device.size() < 30'000);

    // A thumbnail that a full disk did not take spoils none.
    device.room = device.size() + 400;
    QCOMPARE(spool.store(tests::blockPicture({170, 128}, 40, random)), noThumbnail);
    device.room = 1 << 20;
    const qint64 later = spool.store(filled({100, 100}, Qt::red));
    QCOMPARE(spool.load(later).size(), QSize(100, 100));

    // What no group holds goes; the others are found where they moved to.
    const qint64 end = spool.keepOnly({strip, noThumbnail, second});
    QVERIFY(end < device.size());
    device.buffer().resize(end);
    QVERIFY(spool.load(first).isNull());
    QCOMPARE(spool.load(second).pixelColor(5, 5).alpha(), 0);
    QCOMPARE(spool.load(strip).height(), ThumbnailSpool::maxSide);
}

void ImageViewsTest::storedFromSeveralThreads()
{
    QBuffer device;
    device.open(QIODevice::ReadWrite);
    ThumbnailSpool spool(device);
    constexpr int each = 40;
    std::vector<qint64> keys(3 * each);
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t)
        threads.emplace_back([&, t] {
            for (int i = t * each; i < (t + 1) * each; ++i)
                keys[std::size_t(i)] = spool.store(filled({128 + i, 128}, Qt::gray));
        });
    for (std::thread &thread : threads)
        thread.join();
    for (int i = 0; i < 3 * each; ++i)
        QCOMPARE(spool.load(keys[std::size_t(i)]).width(), 128 + i);
}

void ImageViewsTest::difference()
{
    const QImage first = filled({200, 100}, Qt::white);
    QImage second = first;
    for (int y = 0; y < 50; ++y)
        for (int x = 0; x < 50; ++x)
            second.setPixel(x, y, qRgb(255, 255, 0));
    const Difference result = differenceOf(first, second, {1000, 1000});
    QCOMPARE(result.picture.size(), first.size());
    QCOMPARE(result.share, 0.125);
    QVERIFY(isRed(result.picture.pixel(49, 49)));
    QVERIFY(!isRed(result.picture.pixel(50, 49)));
    QVERIFY(!isRed(result.picture.pixel(199, 99)));
    // What compression makes of a colour is no difference, nor are colours that nobody sees.
    const auto differ = [](QColor one, QColor other) {
        const QSize size(50, 50);
        const Difference found = differenceOf(filled(size, one, QImage::Format_ARGB32),
                                              filled(size, other, QImage::Format_ARGB32), {100, 100});
        return found.share == 1 && isRed(found.picture.pixel(25, 25));
    };
    QVERIFY(!differ({100, 100, 100}, {124, 76, 100}));
    QVERIFY(differ({100, 100, 100}, {100, 100, 125}));
    QVERIFY(differ({0, 0, 0, 255}, {0, 0, 0, 100}));
    QVERIFY(!differ({255, 0, 0, 0}, {0, 255, 0, 0}));
    // Pictures of other sizes.
    std::mt19937 random(2);
    const QImage picture = tests::blockPicture({800, 400}, 2, random);
    const Difference same = differenceOf(picture, picture.scaled(400, 200), {1000, 1000});
    QCOMPARE(same.picture.size(), QSize(800, 400));
    QVERIFY(same.share < 0.02);
    QCOMPARE(differenceOf(picture, picture, {100, 100}).picture.size(), QSize(100, 50));
    QCOMPARE(differenceOf(filled({5000, 1}, Qt::red), picture, {100, 100}).picture.size(), QSize(100, 1));
    QVERIFY(differenceOf(picture, QImage(), {100, 100}).picture.isNull());
    QVERIFY(differenceOf(QImage(), picture, {100, 100}).picture.isNull());
    QVERIFY(differenceOf(picture, picture, QSize()).picture.isNull());
}

QTEST_GUILESS_MAIN(ImageViewsTest)
#include "tst_image_views.moc"
