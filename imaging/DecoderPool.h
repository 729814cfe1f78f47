// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"
#include "imaging/decoder/Messages.h"
#include "imaging/engine/Examination.h"
#include "platform/PipedProcess.h"

#include <QString>

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace imaging
{

// Decodes images in separate processes, so that a file which crashes its decoder or keeps it busy forever
// costs only that file. There are as many processes as threads decoding at a time; a process that has ended
// is replaced for the next image. If one ends before it replies, the previous image may be to blame: then
// another process is tried, once. A failed start is also retried once. If not even the first process can be
// started, images are decoded in this process, within the limits of imaging::readImage(), and cancelling
// waits for the current image. Any thread.
class DecoderPool
{
public:
    // The largest image allowed takes 1.2 GiB as AVIF, and about half of that in other formats.
    static constexpr quint64 memoryOfOne = quint64(3) << 29;
    // Limit for all decoders together, for files crafted to use much memory. Normal files stay below it
    // through the job's MemoryBudget.
    static constexpr quint64 memoryOfAll = quint64(4) << 30;

    struct Options {
        QString program;                            // decoderProgram(), or a test program
        std::chrono::milliseconds patience{60'000}; // time limit per image
        std::chrono::milliseconds startPatience{20'000};
    };

    explicit DecoderPool(Options options);
    ~DecoderPool();

    // Located beside the application's executable.
    static QString decoderProgram();

    // examine() of the result of readImage(), and readImage() itself. Returns soon after `cancel` is set,
    // without a result.
    std::optional<Examination> examine(const QString &path, const imaging::BeforeDecode &beforeDecode,
                                       const core::CancelFlag &cancel);
    std::optional<imaging::LoadedImage> picture(const QString &path, const core::CancelFlag &cancel);
    // The same with everything that is stored: colour table, up to 16 bits per channel, resolution and colour
    // profile. Sets `isTooLarge` if the header states an image above the limit.
    std::optional<imaging::LoadedImage> source(const QString &path, const BeforeDecode &beforeDecode,
                                               const core::CancelFlag &cancel, bool *isTooLarge = nullptr);

    // Ends idle decoders; the next image starts one again.
    void rest();

    // Whether images are decoded in this process because no decoder could be started.
    bool usesThisProcess() const;
    // Images that were dropped because their decoder ended, was terminated or could not be restarted;
    // excluding cancelled ones.
    int lost() const;

private:
    using Process = std::unique_ptr<platform::PipedProcess>;

    struct Taken {
        Process process;     // null if none is available for this image
        bool isUsed = false; // it has answered a request before
    };

    template <class Result>
    std::optional<Result> ask(Taken taken, decoder::Wish wish, const QString &path,
                              const imaging::BeforeDecode &beforeDecode, const core::CancelFlag &cancel,
                              std::optional<Result> (*read)(platform::ByteChannel &),
                              bool *isTooLarge = nullptr);
    std::optional<imaging::LoadedImage>
    askForImage(decoder::Wish wish, const QString &path, const BeforeDecode &beforeDecode,
                const core::CancelFlag &cancel,
                std::optional<decoder::Picture> (*read)(platform::ByteChannel &), bool *isTooLarge);
    Taken take(const QString &path, const core::CancelFlag &cancel);
    Process startFor(const QString &path, const core::CancelFlag &cancel);
    Process start(const core::CancelFlag &cancel) const;
    void countLost(const QString &path);

    const Options m_options;
    const platform::ProcessGroup m_group{memoryOfOne, memoryOfAll};
    mutable std::mutex m_mutex; // guards the following members
    std::vector<Process> m_idle;
    bool m_everStarted = false;
    bool m_usesThisProcess = false;
    int m_lost = 0;
};

} // namespace imaging
