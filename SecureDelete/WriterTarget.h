// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Disk.h"
#include "platform/FileWriter.h"

namespace securedelete
{

// A Target for an open file or volume that is owned by someone else.
class WriterTarget : public Target
{
public:
    explicit WriterTarget(platform::FileWriter writer) : m_writer(writer) {}
    bool moveTo(quint64 position) override { return m_writer.moveTo(position); }
    bool moveBack(quint64 bytes) override { return m_writer.moveBack(bytes); }
    quint64 write(const char *data, quint64 bytes) override { return m_writer.write(data, bytes); }

private:
    platform::FileWriter m_writer;
};

} // namespace securedelete
