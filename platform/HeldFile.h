// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileProbe.h"
#include "platform/Handle.h"

#include <QString>

#include <optional>

namespace platform
{

// Keeps a file or folder open without asking for any access. Links are followed. Works for files that are in
// use, that the user may not read, or that are in the cloud; these are not downloaded, except with
// core::AttributeRecallOnOpen. Others can still read, write, rename and delete the file. All answers are
// about the same object, whatever happens to its path, and the file system does not reuse its identity
// meanwhile. Windows does not rename a folder that has an open file below it, so no folder on the path can be
// exchanged while this object exists.
class HeldFile
{
public:
    // Does disk I/O.
    explicit HeldFile(const QString &path);

    // False if it could not be opened.
    explicit operator bool() const { return static_cast<bool>(m_file); }

    // Both do disk I/O, and are empty if the file could not be opened or queried.
    std::optional<core::FileFacts> facts() const;
    // Its current location; see platform::finalPath(). Not every volume has a drive letter that the system
    // knows (some RAM disks and encrypted volumes do not), and not every server lets a user read the names of
    // parent folders: then one of the other forms is used. Paths of different forms cannot be compared.
    enum class Form { Drive, Device, DeviceAsOpened };
    QString finalPath(Form form = Form::Drive) const;

private:
    FileHandle m_file;
};

// platform::isInside() for an item that is held: says only whether it is there.
bool isInside(const QString &root, const QString &item, const HeldFile &held);

} // namespace platform
