// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstddef>
#include <functional>
#include <memory>

namespace platform
{

// A byte stream to and from the other end of a conversation. Functions return false once it has ended.
class ByteChannel
{
public:
    virtual ~ByteChannel() = default;
    // Reads or writes all bytes, or returns false.
    virtual bool read(void *to, std::size_t bytes) = 0;
    virtual bool write(const void *from, std::size_t bytes) = 0;

    // For large data that both ends expect. Between two processes it is placed in shared memory, since a pipe
    // would copy it several times; the writer could still modify it after the reader has it. Null if the
    // conversation has ended or memory is exhausted.
    virtual std::shared_ptr<std::byte> readLarge(std::size_t bytes);
    virtual bool writeLarge(const void *from, std::size_t bytes) { return write(from, bytes); }
};

// Processes that share one memory limit. They are killed with this object, and with this process however it
// ends.
class ProcessGroup
{
public:
    // Memory limits in bytes, per process and for all together; beyond them, allocations in the processes
    // fail.
    ProcessGroup(quint64 memoryOfOne, quint64 memoryOfAll);
    ~ProcessGroup();

private:
    friend class PipedProcess;
    struct Job;
    std::unique_ptr<Job> m_job;
};

// A helper process of this suite that runs hidden and communicates over its standard input and output. It
// runs at lower priority, and is killed with this object or its group. One thread at a time.
class PipedProcess : public ByteChannel
{
public:
    // Called for every piece that is read or written, and every 50 ms while waiting. Returning true kills the
    // process and ends the conversation.
    using StopCheck = std::function<bool()>;

    // Null if it cannot be started.
    static std::unique_ptr<PipedProcess> start(const QString &program, const ProcessGroup &group);
    ~PipedProcess() override;

    // For any reason. A process that is just about to end may still return false here.
    bool hasEnded() const;
    void setStopCheck(StopCheck stopCheck) { m_stopCheck = std::move(stopCheck); }
    bool read(void *to, std::size_t bytes) override;
    bool write(const void *from, std::size_t bytes) override;
    std::shared_ptr<std::byte> readLarge(std::size_t bytes) override;

private:
    struct Handles;
    explicit PipedProcess(std::unique_ptr<Handles> handles);

    std::unique_ptr<Handles> m_handles;
    StopCheck m_stopCheck;
};

// The other end, in the process that was started.
class ParentChannel : public ByteChannel
{
public:
    // From here on a crash, abort() or unhandled exception ends the process at once, without a message box or
    // debugger.
    ParentChannel();

    bool read(void *to, std::size_t bytes) override;
    bool write(const void *from, std::size_t bytes) override;
    bool writeLarge(const void *from, std::size_t bytes) override;
};

} // namespace platform
