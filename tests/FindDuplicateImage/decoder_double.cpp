// SPDX-License-Identifier: GPL-3.0-or-later

// Decodes as the real decoder does, but for files whose names say what is to happen instead.
#include "FindDuplicateImage/decoder/DecoderLoop.h"
#include "FindDuplicateImage/decoder/Messages.h"
#include "core/ImageLoader.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QThread>

#include <cstdlib>
#include <new>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

platform::ByteChannel *application = nullptr;

void misbehave(const QString &what)
{
    if (what == u"crash"_s) {
        volatile int *volatile nowhere = nullptr;
        *nowhere = 1;
    } else if (what == u"abort"_s) {
        std::abort();
    } else if (what == u"hang"_s) {
        QThread::sleep(600);
    } else if (what == u"exhaust"_s) {
        throw std::bad_alloc();
    } else if (what == u"lie"_s) {
        // A picture of two billion by two billion pixels.
        decoder::writeNumber(*application, decoder::Reply::Done);
        for (int i = 0; i < 64; ++i)
            decoder::writeNumber<quint8>(*application, 0x7f);
    }
}

std::optional<core::LoadedImage> decode(const QString &path, const core::BeforeDecode &beforeDecode)
{
    misbehave(QFileInfo(path).baseName());
    return core::readImage(path, beforeDecode);
}

} // namespace

int main(int argc, char *argv[])
{
    platform::ParentChannel channel;
    application = &channel;
    const QCoreApplication qt(argc, argv);
    decoder::serve(channel, decode);
    return 0;
}
