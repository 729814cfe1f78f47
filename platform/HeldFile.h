// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileProbe.h"
#include "platform/Handle.h"

#include <QString>

#include <optional>

namespace platform
{

// A file or folder that is held open, links followed, without any access to it: one in use, or without
// rights, or in the cloud can be held as well, is not fetched (but for core::AttributeRecallOnOpen), and
// others may still do with it what they like. What it tells is told of one object, whatever happens to the
// path meanwhile, and its identity is not given out again. Windows renames no folder with an open file below
// it: until this goes, nothing else can be put in the place of a folder on its path.
class HeldFile
{
public:
    // Disk.
    explicit HeldFile(const QString &path);

    // False when it could not be opened.
    explicit operator bool() const { return static_cast<bool>(m_file); }

    // Disk. Both empty when it could not be opened or asked.
    std::optional<core::FileFacts> facts() const;
    // Where it lies now; see platform::finalPath(). Not every volume has a drive letter that the system knows
    // of (some of memory disks and of encrypted ones do not), and not every server lets a user read the names
    // of the folders above: then one of the other forms is given. Paths of different forms tell nothing of
    // each other.
    enum class Form { Drive, Device, DeviceAsOpened };
    QString finalPath(Form form = Form::Drive) const;

private:
    FileHandle m_file;
};

// platform::isInside() of an item that is held: tells whether it lies there, and nothing else does.
bool isInside(const QString &root, const QString &item, const HeldFile &held);

} // namespace platform
