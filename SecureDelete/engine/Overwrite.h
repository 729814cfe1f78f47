// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Disk.h"
#include "SecureDelete/engine/Method.h"
#include "core/CancelFlag.h"

namespace securedelete
{

// Called on the worker thread.
class WriteListener
{
public:
    virtual ~WriteListener() = default;
    virtual void bytesWritten(quint64 bytes) = 0; // counts every pass
};

// Writes the passes of one method to parts of a target, all passes of a chunk before the next chunk.
class Overwriter
{
public:
    Overwriter(Method method, int randomPasses, PassBuffers &buffers, WriteListener &listener,
               const core::CancelFlag &cancel);

    int passes() const { return m_passes; }

    // Overwrites a whole content: its last byte first, then from the start in chunks of up to 64 KiB. False
    // if a write failed or, with the 35-pass method, on cancel; the other methods finish the content that
    // they have begun.
    bool overwriteContent(Target &target, quint64 size);
    // Overwrites a range in chunks of up to 64 KiB.
    bool overwriteRange(Target &target, quint64 offset, quint64 length);
    // Overwrites a range as a single chunk of any length.
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
