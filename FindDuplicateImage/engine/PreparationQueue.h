// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/FileRecord.h"
#include "FindDuplicateImage/engine/Fingerprint.h"
#include "FindDuplicateImage/engine/ImageRecord.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace lookalikes
{

// A file ready to be compared; without a fingerprint it is dropped.
struct PreparedImage {
    ImageRecord image;
    std::optional<Fingerprint> fingerprint;
};

// Prepares files on a few threads and hands them back in the order in which they were given. All functions
// belong to the thread that made the queue; without threads, files are prepared on that one as they are
// given.
class PreparationQueue
{
public:
    // Called on several threads at once. Must not throw.
    using Prepare = std::function<PreparedImage(duplicates::FileRecord)>;

    // So many files for each thread lie in the queue at most, those in work and those that are ready
    // included.
    static constexpr std::size_t filesPerThread = 4;

    PreparationQueue(int threads, Prepare prepare);
    // Forgets what has not been begun, and waits for what has.
    ~PreparationQueue();
    PreparationQueue(const PreparationQueue &) = delete;
    PreparationQueue &operator=(const PreparationQueue &) = delete;

    bool isEmpty() const { return m_files.empty(); }
    bool isFull() const;
    // Whether takeFirst() would return at once.
    bool firstIsReady() const;

    // Not while it is full.
    void add(duplicates::FileRecord file);
    // Waits for it. Not while it is empty.
    PreparedImage takeFirst();

private:
    struct File {
        duplicates::FileRecord record;
        std::optional<PreparedImage> prepared;
    };

    void work();

    const Prepare m_prepare;
    mutable std::mutex m_mutex; // guards what follows, but for the threads
    std::condition_variable m_toDo;
    std::condition_variable m_ready;
    std::deque<File> m_files; // elements stay where they are until they are taken
    std::size_t m_begun = 0;  // from the front
    bool m_stop = false;
    std::vector<std::thread> m_threads;
};

} // namespace lookalikes
