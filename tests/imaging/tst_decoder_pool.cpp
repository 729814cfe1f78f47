// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/DecoderPool.h"
#include "tests/imaging/Pictures.h"
#include "tests/support/TestPrefix.h"

#include <QFileInfo>
#include <QTest>

#include <atomic>
#include <cstring>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;
using namespace tests;
using namespace std::chrono_literals;

namespace
{

// What one side wrote is what the other side reads.
class Memory : public platform::ByteChannel
{
public:
    bool read(void *to, std::size_t bytes) override
    {
        if (static_cast<std::size_t>(m_bytes.size()) < bytes)
            return false;
        std::memcpy(to, m_bytes.constData(), bytes);
        m_bytes.remove(0, static_cast<qsizetype>(bytes));
        return true;
    }
    bool write(const void *from, std::size_t bytes) override
    {
        m_bytes.append(static_cast<const char *>(from), static_cast<qsizetype>(bytes));
        return true;
    }

private:
    QByteArray m_bytes;
};

QImage grey(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::gray);
    return image;
}

} // namespace

class DecoderPoolTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void agreesWithThisProcess_data();
    void agreesWithThisProcess();
    void dropsWhatIsNoPicture();
    void tellsWhatIsTooLarge();
    void keepsNobodyFromMovingTheFile();
    void everyAnswerIsChecked();
    void survives_data();
    void survives();
    void cancelEndsAHangingDecoder();
    void waitsForMemoryBeforeItDecodes();
    void believesNoImpossibleNeed();
    void decodesOnSeveralThreads();
    void withoutADecoderThisProcessDecodes();
    void aDecoderThatDoesNotStartIsStartedOnceMore();

private:
    core::CancelFlag m_never;
};

void DecoderPoolTest::initTestCase()
{
    QVERIFY2(QFile::exists(realDecoder()), qPrintable(realDecoder()));
    QVERIFY2(QFile::exists(doublesProgram()), qPrintable(doublesProgram()));
}

void DecoderPoolTest::agreesWithThisProcess_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QImage>("image");
    QImage transparent = blocks(1, {200, 100}, QImage::Format_ARGB32);
    for (int x = 0; x < 100; ++x)
        transparent.setPixel(x, 50, qRgba(200, 10, x, x));
    QTest::newRow("jpeg") << u"a.jpg"_s << blocks(2);
    QTest::newRow("transparency") << u"a.png"_s << transparent;
    QTest::newRow("16 bits a channel") << u"a.png"_s << blocks(5, {300, 300}, QImage::Format_RGBA64);
    QTest::newRow("long and thin") << u"a.png"_s << blocks(6, {40, 3000});
    QTest::newRow("small") << u"a.png"_s << blocks(7, {39, 500});
    QTest::newRow("a long path of all the world")
        << u"x\\"_s.repeated(140) + u"\u00e4\u6f22\u5b57 \U0001f600.png"_s << blocks(8);
}

void DecoderPoolTest::agreesWithThisProcess()
{
    QFETCH(const QString, name);
    QFETCH(const QImage, image);
    const TestFolder folder;
    const QString path = savePicture(folder, name, image);
    imaging::DecoderPool pool({realDecoder()});
    const auto there = pool.examine(path, {}, m_never);
    std::optional<imaging::LoadedImage> loaded = imaging::readImage(path);
    QVERIFY(loaded);
    const auto here = imaging::examine(std::move(*loaded));
    QVERIFY(!pool.usesThisProcess());
    QCOMPARE(there.has_value(), here.has_value());
    QCOMPARE(there.has_value(), image.width() >= 40);
    if (!there)
        return;
    QCOMPARE(there->width, image.width());
    QCOMPARE(there->height, image.height());
    QCOMPARE(there->format, here->format);
    QCOMPARE(there->samples, here->samples);
    // The same pixels, but for those of a side that no list shows.
    const QImage &thumbnail = there->thumbnail;
    const QSize size = here->thumbnail.size();
    if (std::max(size.width(), size.height()) <= decoder::maxThumbnailSide)
        QCOMPARE(thumbnail, here->thumbnail.convertToFormat(thumbnail.format()));
    else
        QCOMPARE(thumbnail.height(), decoder::maxThumbnailSide);
    const auto whole = pool.picture(path, m_never);
    QVERIFY(whole);
    QCOMPARE(whole->image, imaging::readImage(path)->image.convertToFormat(whole->image.format()));
    QCOMPARE(whole->format, here->format);
}

void DecoderPoolTest::dropsWhatIsNoPicture()
{
    const TestFolder folder;
    imaging::DecoderPool pool({realDecoder()});
    QVERIFY(!pool.examine(folder.makeFile(u"text.png"_s, "no picture"), {}, m_never));
    QVERIFY(!pool.examine(folder.makeFile(u"empty.jpg"_s), {}, m_never));
    QVERIFY(!pool.examine(folder.makeFolder(u"folder.jpg"_s), {}, m_never));
    QVERIFY(!pool.picture(folder.path(u"missing.jpg"_s), m_never));
    QCOMPARE(pool.lost(), 0);
}

void DecoderPoolTest::tellsWhatIsTooLarge()
{
    const TestFolder folder;
    const QString huge = folder.makeFile(u"huge.ppm"_s, "P6\n8192 8193\n255\n");
    const QString cut = folder.makeFile(u"cut.ppm"_s, "P6\n8192 8192\n255\n");
    const QString text = folder.makeFile(u"text.png"_s, "no picture");
    for (const QString &program : {realDecoder(), folder.path(u"missing.exe"_s)}) {
        imaging::DecoderPool pool({program});
        for (const QString &path : {huge, cut, text, huge}) {
            bool isTooLarge = false;
            QVERIFY(!pool.source(path, {}, m_never, &isTooLarge));
            QCOMPARE(isTooLarge, path == huge);
        }
        QVERIFY(!pool.examine(huge, {}, m_never));
        QCOMPARE(pool.lost(), 0);
        QCOMPARE(pool.usesThisProcess(), program != realDecoder());
    }
}

void DecoderPoolTest::keepsNobodyFromMovingTheFile()
{
    const TestFolder folder;
    const QString path = savePicture(folder, u"a.jpg"_s, blocks(1));
    const QString moved = folder.path(u"b.jpg"_s);
    imaging::DecoderPool pool({realDecoder()});
    bool renamed = false;
    // The decoder has read the head of the file and waits.
    QVERIFY(pool.examine(
        path, [&](qint64) { renamed = QFile::rename(path, moved); }, m_never));
    QVERIFY(renamed);
    QVERIFY(pool.examine(moved, {}, m_never));
}

void DecoderPoolTest::everyAnswerIsChecked()
{
    const auto isTaken = [](int width, const QImage &pixels, const QImage &thumbnail) {
        Memory memory;
        decoder::writeExamination(memory, {width, 600, "png", pixels, thumbnail});
        return decoder::readExamination(memory).has_value();
    };
    const QImage pixels = grey(40, 40);
    const QImage thumbnail = grey(128, 96);
    QVERIFY(isTaken(800, pixels, thumbnail));
    QVERIFY(!isTaken(0, pixels, thumbnail));
    QVERIFY(!isTaken(800, grey(39, 40), thumbnail));
    QVERIFY(!isTaken(800, grey(40, 41), thumbnail));
    QVERIFY(!isTaken(800, pixels, grey(1, 1025)));

    for (const auto &[width, height] :
         {std::pair<qint32, qint32>{0x7fffffff, 0x7fffffff}, {8193, 8192}, {-1, 5}, {5, 0}}) {
        Memory memory;
        QVERIFY(!decoder::readPicture(memory));  // the end
        decoder::writeNumber<quint8>(memory, 0); // no format
        decoder::writeNumber(memory, width);
        decoder::writeNumber(memory, height);
        decoder::writeNumber<quint8>(memory, 0);
        QVERIFY(!decoder::readPicture(memory));
    }
}

void DecoderPoolTest::survives_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<int>("lost");
    QTest::addColumn<bool>("answers");
    for (const char *what : {"crash", "abort", "assert", "terminate", "nonsense", "cut", "hang", "trickle"})
        QTest::newRow(what) << QString::fromLatin1(what) << 1 << false;
    QTest::newRow("exhaust") << u"exhaust"_s << 0 << false;
    // These cost nothing: the picture was read, and the next one is not to blame.
    for (const char *what : {"crash afterwards", "crash with the next"})
        QTest::newRow(what) << QString::fromLatin1(what) << 0 << true;
}

void DecoderPoolTest::survives()
{
    QFETCH(const QString, what);
    QFETCH(const int, lost);
    QFETCH(const bool, answers);
    const TestFolder folder;
    const QString good = savePicture(folder, u"good.png"_s, blocks(1));
    const QString bad = savePicture(folder, u"examine\\"_s + what + u".png"_s, blocks(1));
    const QString alsoBad = savePicture(folder, u"picture\\"_s + what + u".png"_s, blocks(1));
    // Only what stays silent or trickles needs patience to end; the others would outlast this test.
    const bool byPatience = what == u"hang"_s || what == u"trickle"_s;
    imaging::DecoderPool pool({doublesProgram(), byPatience ? 3s : 600s});
    QVERIFY(pool.examine(good, {}, m_never));
    QCOMPARE(pool.examine(bad, {}, m_never).has_value(), answers);
    QVERIFY(pool.examine(good, {}, m_never));
    QCOMPARE(pool.picture(alsoBad, m_never).has_value(), answers);
    QVERIFY(pool.examine(good, {}, m_never));
    QCOMPARE(pool.lost(), 2 * lost);
    QVERIFY(!pool.usesThisProcess());
    if (what == u"hang"_s)
        QCOMPARE(QFileInfo(bad + u".asked"_s).size(), 1); // not a second time
}

void DecoderPoolTest::cancelEndsAHangingDecoder()
{
    const TestFolder folder;
    const QString good = savePicture(folder, u"good.png"_s, blocks(1));
    const QString bad = savePicture(folder, u"hang.png"_s, blocks(1));
    imaging::DecoderPool pool({doublesProgram(), 600s});
    QVERIFY(pool.examine(good, {}, m_never));
    core::CancelFlag cancel;
    std::thread soon([&] {
        while (!QFile::exists(bad + u".asked"_s))
            std::this_thread::sleep_for(10ms);
        cancel.set();
    });
    QVERIFY(!pool.examine(bad, {}, cancel));
    soon.join();
    QCOMPARE(pool.lost(), 0);
}

void DecoderPoolTest::waitsForMemoryBeforeItDecodes()
{
    const TestFolder folder;
    const QString path = savePicture(folder, u"a.png"_s, blocks(1));
    imaging::DecoderPool pool({realDecoder(), 2s});
    QVERIFY(pool.examine(path, {}, m_never));
    QList<qint64> asked;
    QVERIFY(pool.examine(
        path,
        [&asked](qint64 bytes) {
            asked.append(bytes);
            std::this_thread::sleep_for(3s);
        },
        m_never));
    QCOMPARE(asked, QList<qint64>({400 * 300 * 4}));
    QCOMPARE(pool.lost(), 0); // the waiting is not held against the decoder
}

void DecoderPoolTest::believesNoImpossibleNeed()
{
    const TestFolder folder;
    imaging::DecoderPool pool({doublesProgram()});
    QList<qint64> needs;
    for (const QString &what : {u"needs less than nothing"_s, u"needs everything"_s}) {
        const QString path = savePicture(folder, what + u".png"_s, blocks(1));
        QVERIFY(pool.examine(
            path, [&needs](qint64 bytes) { needs.append(bytes); }, m_never));
    }
    QCOMPARE(needs, QList<qint64>({0, qint64(imaging::imageAllocationLimit) << 20}));
}

void DecoderPoolTest::decodesOnSeveralThreads()
{
    const TestFolder folder;
    QStringList paths;
    for (unsigned i = 0; i < 12; ++i)
        paths.append(savePicture(folder, (i % 4 == 3 ? u"crash.%1.png"_s : u"p%1.png"_s).arg(i), blocks(i)));
    imaging::DecoderPool pool({doublesProgram()});
    std::atomic_int found = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 3; ++t)
        threads.emplace_back([&, t] {
            for (qsizetype i = t; i < paths.size(); i += 3)
                found += pool.examine(paths.at(i), {}, m_never) ? 1 : 0;
        });
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(found.load(), 9);
    QCOMPARE(pool.lost(), 3);
}

void DecoderPoolTest::withoutADecoderThisProcessDecodes()
{
    const TestFolder folder;
    const QString path = savePicture(folder, u"a.png"_s, blocks(1));
    const QString text = folder.makeFile(u"LarkspurDecoder.exe"_s, "text");
    const QString another = u"C:\\windows\\system32\\hostname.exe"_s;
    for (const QString &program : {folder.path(u"missing.exe"_s), text, another}) {
        imaging::DecoderPool pool({program});
        QVERIFY(pool.examine(path, {}, m_never));
        QVERIFY(pool.picture(path, m_never));
        QVERIFY(pool.usesThisProcess());
    }
}

void DecoderPoolTest::aDecoderThatDoesNotStartIsStartedOnceMore()
{
    const TestFolder folder;
    const QString path = savePicture(folder, u"a.png"_s, blocks(1));
    const QString program = folder.path(u"decoder.exe"_s);
    QVERIFY(QFile::copy(doublesProgram(), program));
    imaging::DecoderPool pool({program});
    for (int start = 0; start < 2; ++start) {
        folder.makeFile(u"broken once"_s);
        QVERIFY(pool.examine(path, {}, m_never));
        QVERIFY(!QFile::exists(folder.path(u"broken once"_s)));
        QCOMPARE(pool.lost(), 0);
        pool.rest();
    }
    // One that has started before costs pictures when it does not any more, and not the protection.
    const QString broken = folder.makeFile(u"broken"_s);
    QVERIFY(!pool.examine(path, {}, m_never));
    QVERIFY(!pool.picture(path, m_never));
    QCOMPARE(pool.lost(), 2);
    QVERIFY(!pool.usesThisProcess());
    requireBelow(folder.path(), broken);
    QVERIFY(QFile::remove(broken));
    QVERIFY(pool.examine(path, {}, m_never));
}

QTEST_GUILESS_MAIN(DecoderPoolTest)
#include "tst_decoder_pool.moc"
