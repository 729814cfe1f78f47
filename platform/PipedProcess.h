// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstddef>
#include <functional>
#include <memory>

namespace platform
{

// Bytes to and from the other end of a conversation. False when it has ended.
class ByteChannel
{
public:
    virtual ~ByteChannel() = default;
    // All of them or false.
    virtual bool read(void *to, std::size_t bytes) = 0;
    virtual bool write(const void *from, std::size_t bytes) = 0;

    // The same for many bytes, which both ends have to expect. Between two processes they lie in memory of
    // both, since a pipe copies them several times; the writer may still change them after the reader has
    // them. Null when the conversation has ended or there is no memory.
    virtual std::shared_ptr<std::byte> readLarge(std::size_t bytes);
    virtual bool writeLarge(const void *from, std::size_t bytes) { return write(from, bytes); }
};

// Programs that share one memory limit. They end with this object, and with this process however that ends.
class ProcessGroup
{
public:
    // The bytes that one of the programs, and all of them together, may take; where that ends, a program
    // finds that there is no memory left.
    ProcessGroup(quint64 memoryOfOne, quint64 memoryOfAll);
    ~ProcessGroup();

private:
    friend class PipedProcess;
    struct Job;
    std::unique_ptr<Job> m_job;
};

// A program of this suite that runs hidden beside this one, spoken with over its standard input and output.
// It yields to this one where processors are scarce, and ends with this object or its group. One thread at a
// time.
class PipedProcess : public ByteChannel
{
public:
    // Asked for every piece that is read or written, and every 50 ms while one is waited for: neither a
    // silent nor a talkative program escapes it. True ends the other program, and the conversation.
    using GiveUp = std::function<bool()>;

    // Null when it cannot be started.
    static std::unique_ptr<PipedProcess> start(const QString &program, const ProcessGroup &group);
    ~PipedProcess() override;

    // Whatever the reason. One that is just ending may say false and answer nothing any more.
    bool hasEnded() const;
    void setGiveUp(GiveUp giveUp) { m_giveUp = std::move(giveUp); }
    bool read(void *to, std::size_t bytes) override;
    bool write(const void *from, std::size_t bytes) override;
    std::shared_ptr<std::byte> readLarge(std::size_t bytes) override;

private:
    struct Handles;
    explicit PipedProcess(std::unique_ptr<Handles> handles);

    std::unique_ptr<Handles> m_handles;
    GiveUp m_giveUp;
};

// The other side, in the program that was started.
class ParentChannel : public ByteChannel
{
public:
    // A crash, an abort() or an exception that nobody catches ends the process at once from here on, without
    // a box and without a debugger.
    ParentChannel();

    bool read(void *to, std::size_t bytes) override;
    bool write(const void *from, std::size_t bytes) override;
    bool writeLarge(const void *from, std::size_t bytes) override;
};

} // namespace platform
