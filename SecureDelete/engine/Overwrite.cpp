// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/engine/Overwrite.h"

#include <QDebug>

#include <algorithm>
#include <charconv>

namespace securedelete
{

namespace
{

constexpr quint64 chunkSize = PassBuffers::size;

void append(QString &text, quint64 number)
{
    char digits[20];
    const char *end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    text += QLatin1String(digits, end - digits);
}

// Built by hand: a large file is written in millions of chunks, and QString formatting of each line took a
// tenth of the time of its write.
void logWrite(int pass, quint64 wanted, quint64 written)
{
    static const QMessageLogContext context;
    QString line;
    constexpr qsizetype maxLength = 80; // the text and three numbers of up to 20 digits
    line.reserve(maxLength);
    line += QLatin1String("WriteFile: ");
    append(line, static_cast<quint64>(pass));
    line += u':';
    append(line, wanted);
    line += u' ';
    append(line, written);
    qt_message_output(QtDebugMsg, context, line);
}

} // namespace

Overwriter::Overwriter(Method method, int randomPasses, PassBuffers &buffers, WriteListener &listener,
                       const core::CancelFlag &cancel)
    : m_method(method),
      m_passes(passCount(method, randomPasses)),
      m_buffers(buffers),
      m_listener(listener),
      m_cancel(cancel)
{
}

bool Overwriter::overwriteContent(Target &target, quint64 size)
{
    if (size == 0)
        return true;
    return overwriteRange(target, size - 1, 1) && overwriteRange(target, 0, size - 1);
}

bool Overwriter::overwriteRange(Target &target, quint64 offset, quint64 length)
{
    if (length > 0 && !target.moveTo(offset))
        return false;
    for (quint64 done = 0; done < length; done += chunkSize) {
        if (!runPasses(target, std::min(chunkSize, length - done)))
            return false;
    }
    return true;
}

bool Overwriter::overwriteRun(Target &target, quint64 offset, quint64 length)
{
    return target.moveTo(offset) && runPasses(target, length);
}

bool Overwriter::runPasses(Target &target, quint64 length)
{
    for (int pass = 1; pass <= m_passes; ++pass) {
        if (m_method == Method::Gutmann && m_cancel.isSet())
            return false;
        if (pass > 1 && !target.moveBack(length))
            return false;
        if (!writePass(target, pass, length))
            return false;
    }
    return true;
}

bool Overwriter::writePass(Target &target, int pass, quint64 length)
{
    const char *data = m_buffers.data(m_method, pass);
    quint64 done = 0;
    while (done < length) {
        const quint64 wanted = std::min(chunkSize, length - done);
        const quint64 written = target.write(data, wanted);
        if (m_method == Method::Dod3 || m_method == Method::Dod7)
            logWrite(pass, wanted, written);
        if (written == 0 || written > wanted)
            return false;
        done += written;
        m_listener.bytesWritten(written);
    }
    return true;
}

} // namespace securedelete
