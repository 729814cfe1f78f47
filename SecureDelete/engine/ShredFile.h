// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Shred.h"

namespace securedelete
{

// Destroys single files: overwrites the content and all streams, renames 26 times and deletes.
class FileShredder
{
public:
    FileShredder(const ShredOptions &options, Disk &disk, Overwriter &overwriter,
                 const core::CancelFlag &cancel);

    // `item` must not be a folder or link. Path and size in the record are the item's.
    ShredRecord shred(const Item &item);

private:
    Fault overwrite(const Item &item, DoomedFile &file, ShredRecord &record);
    Fault overwriteOpen(Target &target, const Item &item, DoomedFile &file, ShredRecord &record);
    Fault overwriteContent(Target &target, const Item &item, DoomedFile &file);
    Fault overwriteStreams(const std::vector<Stream> &streams, DoomedFile &file, ShredRecord &record);
    bool overwriteClusters(const Item &item, DoomedFile &file);
    Fault eraseNameAndFile(const Item &item, DoomedFile &file, ShredRecord &record);
    bool restoreName(const Item &item, DoomedFile &file);
    Fault writeFault() const;

    const ShredOptions &m_options;
    Disk &m_disk;
    Overwriter &m_overwriter;
    const core::CancelFlag &m_cancel;
};

} // namespace securedelete
