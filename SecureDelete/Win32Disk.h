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

// The disks of this computer; every modifying call goes through the guard. Used on one thread.
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

    // The folder of the item's files. Only the last folder is held open.
    const platform::GuardedFolder &folder(const Item &item);
    // Opened once per volume and cached; see RawVolume.
    platform::RawVolume &volume(const QString &path);

private:
    Fault erase(const Item &item, platform::ItemKind kind);

    platform::Win32Enumerator m_enumerator;
    std::optional<platform::GuardedRoot> m_root;
    std::optional<platform::GuardedFolder> m_folder;
    std::map<QString, platform::RawVolume> m_volumes; // by volume name
    QString m_protectionRoot;
    QString m_finalRoot; // final path of m_protectionRoot
};

// rand() of the C library and the system clock.
class CRandomness : public Randomness
{
public:
    quint32 seconds() override;
    void seed(quint32 value) override;
    quint8 byte() override;
};

// The pass buffers of this process; only one job may use them at a time.
PassBuffers &processBuffers();

} // namespace securedelete
