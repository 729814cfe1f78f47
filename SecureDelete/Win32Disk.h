// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Disk.h"
#include "SecureDelete/engine/Method.h"
#include "platform/Guard.h"
#include "platform/RawVolume.h"
#include "platform/Win32Enumerator.h"

#include <map>

namespace securedelete
{

// The disks of this computer, every verb behind the guard. One thread.
class Win32Disk : public Disk
{
public:
    std::optional<Item> find(const QString &root, const QString &folder, const QString &name) override;
    void list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &cancel) override;
    std::unique_ptr<DoomedFile> file(const Item &item) override;
    Fault checkFolder(const Item &item) override;
    Fault eraseLink(const Item &item) override;
    Fault eraseFolder(const Item &item) override;
    bool isProtected(const Item &item) override;
    void pause() override;

    // For its files. The folder is the one asked for last, held until another one is.
    const platform::GuardedFolder &folder(const Item &item);
    // Opened once for each volume and kept; see RawVolume.
    platform::RawVolume &volume(const QString &path);

private:
    Fault erase(const Item &item, platform::ItemKind kind);

    platform::Win32Enumerator m_enumerator;
    std::optional<platform::GuardedRoot> m_root;
    std::optional<platform::GuardedFolder> m_folder;
    std::map<QString, platform::RawVolume> m_volumes; // by name
    QString m_protectionRoot;
    QString m_finalRoot; // of m_protectionRoot
};

// The generator of the C library, and the computer's clock.
class CRandomness : public Randomness
{
public:
    quint32 seconds() override;
    void seed(quint32 value) override;
    quint8 byte() override;
};

// The buffers of this process; one job uses them at a time.
PassBuffers &processBuffers();

} // namespace securedelete
