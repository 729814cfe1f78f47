// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/DecoderPool.h"

#include "imaging/decoder/DecoderLoop.h"
#include "imaging/decoder/Messages.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <functional>
#include <utility>

namespace imaging
{

using decoder::Reply;
using decoder::Wish;

namespace
{

using Clock = std::chrono::steady_clock;

enum class Answer { NoReply, Lost, Failed, TooLarge, Done };

// Sends a request and reads up to the start of the result. The decoder may have to wait until memory is free,
// which must not count against its time limit: `begin` restarts the clock.
Answer request(platform::PipedProcess &process, Wish wish, const QString &path,
               const imaging::BeforeDecode &beforeDecode, const std::function<void()> &begin)
{
    begin();
    if (!decoder::writeRequest(process, {wish, path}))
        return Answer::NoReply;
    std::optional<Reply> reply = decoder::readNumber<Reply>(process);
    if (!reply)
        return Answer::NoReply;
    if (reply == Reply::Needs) {
        const auto bytes = decoder::readNumber<qint64>(process);
        if (!bytes)
            return Answer::Lost;
        if (beforeDecode)
            beforeDecode(qBound(qint64(0), *bytes, qint64(imaging::imageAllocationLimit) << 20));
        begin();
        if (!decoder::writeNumber<quint8>(process, 1))
            return Answer::Lost;
        reply = decoder::readNumber<Reply>(process);
    }
    return reply == Reply::Done       ? Answer::Done
           : reply == Reply::Failed   ? Answer::Failed
           : reply == Reply::TooLarge ? Answer::TooLarge
                                      : Answer::Lost;
}

} // namespace

DecoderPool::DecoderPool(Options options) : m_options(std::move(options)) {}

DecoderPool::~DecoderPool() = default;

QString DecoderPool::decoderProgram()
{
    return QDir::toNativeSeparators(QCoreApplication::applicationDirPath()) +
           QStringLiteral("\\LarkspurDecoder.exe");
}

void DecoderPool::rest()
{
    const std::lock_guard lock(m_mutex);
    m_idle.clear();
}

bool DecoderPool::usesThisProcess() const
{
    const std::lock_guard lock(m_mutex);
    return m_usesThisProcess;
}

int DecoderPool::lost() const
{
    const std::lock_guard lock(m_mutex);
    return m_lost;
}

DecoderPool::Taken DecoderPool::take(const QString &path, const core::CancelFlag &cancel)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_usesThisProcess)
            return {};
        while (!m_idle.empty()) {
            Process process = std::move(m_idle.back());
            m_idle.pop_back();
            if (!process->hasEnded())
                return {std::move(process), true};
        }
    }
    return {startFor(path, cancel)};
}

// Null if it cannot be started; then the image is counted as lost, or images are decoded in this process.
DecoderPool::Process DecoderPool::startFor(const QString &path, const core::CancelFlag &cancel)
{
    Process process = start(cancel);
    if (!process && !cancel.isSet()) {
        qDebug() << "The decoder did not start, once more:" << m_options.program;
        process = start(cancel);
    }
    const std::lock_guard lock(m_mutex);
    if (process) {
        m_everStarted = true;
    } else if (!cancel.isSet() && m_everStarted) {
        countLost(path);
    } else if (!cancel.isSet()) {
        m_usesThisProcess = true;
        qDebug() << "The decoder does not start, pictures are decoded without it:" << m_options.program;
    }
    return process;
}

DecoderPool::Process DecoderPool::start(const core::CancelFlag &cancel) const
{
    if (!QFileInfo(m_options.program).isFile())
        return nullptr;
    Process process = platform::PipedProcess::start(m_options.program, m_group);
    if (!process)
        return nullptr;
    const auto end = Clock::now() + m_options.startPatience;
    process->setStopCheck([&cancel, end] { return cancel.isSet() || Clock::now() > end; });
    return decoder::readNumber<quint32>(*process) == decoder::greeting ? std::move(process) : nullptr;
}

// With m_mutex held.
void DecoderPool::countLost(const QString &path)
{
    ++m_lost;
    qDebug() << "Dropped, its decoder ended or did not start:" << path;
}

// Reads the result with `read` once a decoder has finished the request.
template <class Result>
std::optional<Result>
DecoderPool::ask(Taken taken, Wish wish, const QString &path, const imaging::BeforeDecode &beforeDecode,
                 const core::CancelFlag &cancel, std::optional<Result> (*read)(platform::ByteChannel &),
                 bool *isTooLarge)
{
    Process process = std::move(taken.process);
    bool givenUp = false;
    const auto requestOnce = [&] {
        return request(*process, wish, path, beforeDecode, [&] {
            const auto end = Clock::now() + m_options.patience;
            process->setStopCheck(
                [&givenUp, &cancel, end] { return givenUp = cancel.isSet() || Clock::now() > end; });
        });
    };
    Answer answer = requestOnce();
    if (answer == Answer::NoReply && taken.isUsed && !givenUp) {
        // The decoder may have been damaged by the previous image. hasEnded() may miss that, since a process
        // closes its pipes before it ends.
        process = startFor(path, cancel);
        if (!process)
            return std::nullopt;
        answer = requestOnce();
    }
    std::optional<Result> result;
    if (answer == Answer::Done)
        result = read(*process);
    const bool lost = !result && answer != Answer::Failed && answer != Answer::TooLarge;
    if (isTooLarge && answer == Answer::TooLarge)
        *isTooLarge = true;
    process->setStopCheck({}); // its callback refers to this call's arguments
    const std::lock_guard lock(m_mutex);
    if (!lost)
        m_idle.push_back(std::move(process));
    else if (!cancel.isSet())
        countLost(path);
    return result;
}

std::optional<Examination> DecoderPool::examine(const QString &path, const BeforeDecode &beforeDecode,
                                                const core::CancelFlag &cancel)
{
    Taken taken = take(path, cancel);
    if (taken.process)
        return ask<Examination>(std::move(taken), Wish::Examine, path, beforeDecode, cancel,
                                decoder::readExamination);
    if (!usesThisProcess() || cancel.isSet())
        return std::nullopt;
    std::optional<LoadedImage> loaded = decoder::decodeFile(path, beforeDecode);
    return loaded ? imaging::examine(std::move(*loaded)) : std::nullopt;
}

std::optional<imaging::LoadedImage>
DecoderPool::askForImage(Wish wish, const QString &path, const BeforeDecode &beforeDecode,
                         const core::CancelFlag &cancel,
                         std::optional<decoder::Picture> (*read)(platform::ByteChannel &), bool *isTooLarge)
{
    Taken taken = take(path, cancel);
    if (!taken.process) {
        if (!usesThisProcess() || cancel.isSet())
            return std::nullopt;
        std::optional<LoadedImage> loaded = decoder::decodeFile(path, beforeDecode);
        if (isTooLarge && !loaded)
            *isTooLarge = decoder::isTooLarge(path);
        return loaded;
    }
    auto found = ask<decoder::Picture>(std::move(taken), wish, path, beforeDecode, cancel, read, isTooLarge);
    if (!found)
        return std::nullopt;
    return imaging::LoadedImage{std::move(found->image), std::move(found->format)};
}

std::optional<imaging::LoadedImage> DecoderPool::picture(const QString &path, const core::CancelFlag &cancel)
{
    return askForImage(Wish::Picture, path, {}, cancel, decoder::readPicture, nullptr);
}

std::optional<imaging::LoadedImage> DecoderPool::source(const QString &path, const BeforeDecode &beforeDecode,
                                                        const core::CancelFlag &cancel, bool *isTooLarge)
{
    return askForImage(Wish::Source, path, beforeDecode, cancel, decoder::readSource, isTooLarge);
}

} // namespace imaging
