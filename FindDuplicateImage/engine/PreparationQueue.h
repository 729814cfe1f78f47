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

// A file ready for comparison; without a fingerprint it is dropped.
struct PreparedImage {
    ImageRecord image;
    std::optional<Fingerprint> fingerprint;
};

// Prepares files on a few threads and returns them in input order. All functions must be called on the thread
// that created the queue; if no threads are available, add() prepares the file itself.
class PreparationQueue
{
public:
    // Called on several threads at once. Must not throw.
    using Prepare = std::function<PreparedImage(duplicates::FileRecord)>;

    // Limit for the files in the queue per thread, including those in progress and finished ones.
    static constexpr std::size_t filesPerThread = 4;

    PreparationQueue(int threads, Prepare prepare);
    // Drops files that have not been started, and waits for the others.
    ~PreparationQueue();
    PreparationQueue(const PreparationQueue &) = delete;
    PreparationQueue &operator=(const PreparationQueue &) = delete;

    bool isEmpty() const { return m_files.empty(); }
    bool isFull() const;
    // Whether takeFirst() would return without waiting.
    bool firstIsReady() const;

    // Must not be called when the queue is full.
    void add(duplicates::FileRecord file);
    // Waits for the first file. Must not be called when the queue is empty.
    PreparedImage takeFirst();

private:
    struct File {
        duplicates::FileRecord record;
        std::optional<PreparedImage> prepared;
    };

    void work();

    const Prepare m_prepare;
    mutable std::mutex m_mutex; // guards the following members except the threads
    std::condition_variable m_toDo;
    std::condition_variable m_ready;
    std::deque<File> m_files; // elements stay where they are until they are taken
    std::size_t m_begun = 0;  // number of started files, from the front
    bool m_stop = false;
    std::vector<std::thread> m_threads;
};

} // namespace lookalikes
