// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Disk.h"
#include "SecureDelete/engine/Method.h"
#include "core/CancelFlag.h"

namespace securedelete
{

// Told on the thread of the work.
class WriteListener
{
public:
    virtual ~WriteListener() = default;
    virtual void bytesWritten(quint64 bytes) = 0; // passes counted one by one
};

// Runs the passes of one method over parts of a target. The chunks get all their passes one after the other.
class Overwriter
{
public:
    Overwriter(Method method, int randomPasses, PassBuffers &buffers, WriteListener &listener,
               const core::CancelFlag &cancel);

    int passes() const { return m_passes; }

    // A whole content: its last byte first, then the rest from its beginning in chunks of at most 64 KiB.
    // False when a write failed, or, with the method of 35 passes, when it was cancelled; the others finish
    // the content that they have begun.
    bool overwriteContent(Target &target, quint64 size);
    // A part, in chunks of at most 64 KiB.
    bool overwriteRange(Target &target, quint64 offset, quint64 length);
    // A part as one chunk, however long.
    bool overwriteRun(Target &target, quint64 offset, quint64 length);

private:
    bool runPasses(Target &target, quint64 length);
    bool writePass(Target &target, int pass, quint64 length);

    Method m_method;
    int m_passes;
    PassBuffers &m_buffers;
    WriteListener &m_listener;
    const core::CancelFlag &m_cancel;
};

} // namespace securedelete
