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

// Decodes pictures in processes of their own, so that a file that brings its decoder down, or keeps it busy
// for ever, costs that one file. There are as many of these processes as threads decode at a time; one that
// ended is replaced when the next picture comes. One that ends before it replies may have been brought down
// by what it decoded before: then another one is asked, once. What does not start is started once more. Where
// not even the first can be started, pictures are decoded in this process, behind the limits of
// imaging::readImage(), and cancelling waits for the picture that is being decoded. Any thread.
class DecoderPool
{
public:
    // The largest picture that is allowed takes 1.2 GiB as AVIF, and about half of that in other formats.
    static constexpr quint64 memoryOfOne = quint64(3) << 29;
    // Files that are made to take much take no more than this at a time, however many there are. Others stay
    // below by the MemoryBudget of the job.
    static constexpr quint64 memoryOfAll = quint64(4) << 30;

    struct Options {
        QString program;                            // decoderProgram(), or a test's own
        std::chrono::milliseconds patience{60'000}; // for one picture
        std::chrono::milliseconds startPatience{20'000};
    };

    explicit DecoderPool(Options options);
    ~DecoderPool();

    // Beside the application's executable.
    static QString decoderProgram();

    // As examine() of what readImage() gives, and readImage() itself. Ends soon after `cancel` is set,
    // without a result.
    std::optional<Examination> examine(const QString &path, const imaging::BeforeDecode &beforeDecode,
                                       const core::CancelFlag &cancel);
    std::optional<imaging::LoadedImage> picture(const QString &path, const core::CancelFlag &cancel);
    // The same with all that is stored: colour table, up to 16 bits a channel, resolution and colour profile.
    // `isTooLarge` becomes true where the header states a picture above the limit.
    std::optional<imaging::LoadedImage> source(const QString &path, const BeforeDecode &beforeDecode,
                                               const core::CancelFlag &cancel, bool *isTooLarge = nullptr);

    // Ends the decoders that have nothing to do; the next picture starts one again.
    void rest();

    // Whether pictures are decoded here because no decoder could be started.
    bool usesThisProcess() const;
    // Pictures that were dropped because their decoder ended, was ended or could not be started again;
    // cancelled ones not counted.
    int lost() const;

private:
    using Process = std::unique_ptr<platform::PipedProcess>;

    struct Taken {
        Process process;     // null when there is none for this picture
        bool isUsed = false; // it has answered before
    };

    template <class Result>
    std::optional<Result> ask(Taken taken, decoder::Wish wish, const QString &path,
                              const imaging::BeforeDecode &beforeDecode, const core::CancelFlag &cancel,
                              std::optional<Result> (*read)(platform::ByteChannel &),
                              bool *isTooLarge = nullptr);
    std::optional<imaging::LoadedImage>
    askForPicture(decoder::Wish wish, const QString &path, const BeforeDecode &beforeDecode,
                  const core::CancelFlag &cancel,
                  std::optional<decoder::Picture> (*read)(platform::ByteChannel &), bool *isTooLarge);
    Taken take(const QString &path, const core::CancelFlag &cancel);
    Process startFor(const QString &path, const core::CancelFlag &cancel);
    Process start(const core::CancelFlag &cancel) const;
    void countLost(const QString &path);

    const Options m_options;
    const platform::ProcessGroup m_group{memoryOfOne, memoryOfAll};
    mutable std::mutex m_mutex; // guards what follows
    std::vector<Process> m_idle;
    bool m_everStarted = false;
    bool m_usesThisProcess = false;
    int m_lost = 0;
};

} // namespace imaging
