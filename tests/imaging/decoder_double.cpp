// SPDX-License-Identifier: GPL-3.0-or-later

// Decodes as the real decoder does, but for files whose names say what is to happen instead.
#include "imaging/decoder/DecoderLoop.h"
#include "imaging/decoder/Messages.h"
#include "imaging/engine/ImageLoader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <cstdlib>
#include <exception>
#include <limits>
#include <new>
#include <optional>
#include <utility>

#undef NDEBUG
#include <cassert>

using namespace Qt::StringLiterals;
using decoder::Reply;
using decoder::writeNumber;

namespace
{

platform::ByteChannel *application = nullptr;
QString decoded; // the name of the last picture

void end(const QString &how)
{
    if (how == u"crash"_s) {
        volatile int *volatile nowhere = nullptr;
        *nowhere = 1;
    } else if (how == u"abort"_s) {
        std::abort();
    } else if (how == u"assert"_s) {
        assert(how.isEmpty());
    } else if (how == u"terminate"_s) {
        std::terminate();
    }
}

// Comes down only after the answer to a picture is out: at once, or when the next request comes.
class Channel : public platform::ParentChannel
{
public:
    bool read(void *to, std::size_t bytes) override
    {
        if (decoded == u"crash afterwards"_s)
            end(u"crash"_s);
        const bool got = ParentChannel::read(to, bytes);
        if (decoded == u"crash with the next"_s)
            end(u"crash"_s);
        return got;
    }
};

// The beginning of an answer to either wish, as far as the size of the first picture.
void beginAnswer(decoder::Wish wish)
{
    constexpr qint32 side = 40;
    writeNumber(*application, Reply::Done);
    if (wish == decoder::Wish::Examine) {
        writeNumber<qint32>(*application, 800);
        writeNumber<qint32>(*application, 600);
    }
    writeNumber<quint8>(*application, 0); // no format
    writeNumber(*application, side);
    writeNumber(*application, side);
    writeNumber<quint8>(*application, 0); // no transparency
}

void stall(const QString &path, const QString &how, decoder::Wish wish)
{
    if (how == u"hang"_s) {
        QFile asked(path + u".asked"_s); // a byte for each time
        if (asked.open(QFile::Append) && asked.putChar('!'))
            asked.close();
        QThread::sleep(600);
    }
    if (how != u"trickle"_s)
        return;
    beginAnswer(wish);
    // More often than a silence is noticed.
    while (writeNumber<quint8>(*application, 0))
        QThread::msleep(20);
}

void lie(const QString &how, decoder::Wish wish)
{
    if (how == u"nonsense"_s) {
        for (int i = 0; i < 64; ++i)
            writeNumber<quint8>(*application, 0x7f);
    } else if (how == u"cut"_s) {
        beginAnswer(wish);
        for (int i = 0; i < 800; ++i)
            writeNumber<quint32>(*application, 0);
        std::exit(0);
    }
}

// The bytes that a picture is said to need.
void ask(const QString &how)
{
    const bool huge = how == u"needs everything"_s;
    if (!huge && how != u"needs less than nothing"_s)
        return;
    writeNumber(*application, Reply::Needs);
    writeNumber(*application, huge ? std::numeric_limits<qint64>::max() : std::numeric_limits<qint64>::min());
    decoder::readNumber<quint8>(*application);
}

std::optional<imaging::LoadedImage> decode(const QString &path, const imaging::BeforeDecode &beforeDecode)
{
    // "crash.2.png"; the folder names the wish where it matters.
    const QFileInfo file(path);
    const QString what = file.baseName();
    const auto wish = file.dir().dirName() == u"picture"_s ? decoder::Wish::Picture : decoder::Wish::Examine;
    if (what == u"exhaust"_s)
        throw std::bad_alloc();
    end(what);
    stall(path, what, wish);
    lie(what, wish);
    ask(what);
    auto loaded =
        decoder::decodeFile(path, what.startsWith(u"needs"_s) ? imaging::BeforeDecode() : beforeDecode);
    decoded = what;
    return loaded;
}

// A program beside which a file of this name lies does not start: the first time, or ever.
bool startsBadly()
{
    const QString folder = QCoreApplication::applicationDirPath() + u'/';
    return QFile::exists(folder + u"broken"_s) || QFile::remove(folder + u"broken once"_s);
}

} // namespace

int main(int argc, char *argv[])
{
    Channel channel;
    application = &channel;
    const QCoreApplication qt(argc, argv);
    if (startsBadly())
        return 1;
    decoder::serve(channel, decode);
    return 0;
}
