// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Drives.h"

#include "platform/DetachedThread.h"
#include "platform/Text.h"

#include <QDebug>

#include <windows.h>

#include <array>
#include <mutex>
#include <system_error>
#include <utility>

namespace platform
{

namespace
{

Drive::Type driveType(UINT type)
{
    switch (type) {
    case DRIVE_REMOVABLE:
        return Drive::Type::Removable;
    case DRIVE_FIXED:
        return Drive::Type::Fixed;
    case DRIVE_REMOTE:
        return Drive::Type::Network;
    case DRIVE_CDROM:
        return Drive::Type::Optical;
    case DRIVE_RAMDISK:
        return Drive::Type::RamDisk;
    default:
        return Drive::Type::Unknown;
    }
}

} // namespace

QStringList driveRoots()
{
    QStringList roots;
    const DWORD letters = GetLogicalDrives();
    for (char16_t index = 0; index < 26; ++index) {
        if (letters & (1u << index))
            roots.append(QChar(static_cast<char16_t>(u'A' + index)) + QStringLiteral(":\\"));
    }
    return roots;
}

void neverAskForDisks()
{
    SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

Drive readDrive(const QString &root)
{
    Drive drive;
    drive.root = root;
    drive.type = driveType(GetDriveTypeW(wide(root)));
    std::array<wchar_t, MAX_PATH + 1> label = {};
    std::array<wchar_t, MAX_PATH + 1> fileSystem = {};
    ULARGE_INTEGER forCaller = {};
    ULARGE_INTEGER total = {};
    ULARGE_INTEGER free = {};
    if (GetVolumeInformationW(wide(root), label.data(), static_cast<DWORD>(label.size()), nullptr, nullptr,
                              nullptr, fileSystem.data(), static_cast<DWORD>(fileSystem.size())) &&
        GetDiskFreeSpaceExW(wide(root), &forCaller, &total, &free)) {
        drive.ready = true;
        drive.label = fromWide(label.data());
        drive.fileSystem = fromWide(fileSystem.data());
        drive.totalBytes = total.QuadPart;
        drive.freeBytes = free.QuadPart;
    }
    return drive;
}

// What the lister and its threads have in common. It outlives the lister as long as a thread hangs.
struct DriveLister::Shared {
    Reader reader;
    std::mutex mutex;
    DriveLister *lister = nullptr; // null when it is gone
};

DriveLister::DriveLister(QObject *parent) : DriveLister(readDrive, parent) {}

DriveLister::DriveLister(Reader reader, QObject *parent)
    : QObject(parent),
      m_shared(std::make_shared<Shared>())
{
    m_shared->reader = std::move(reader);
    m_shared->lister = this;
}

DriveLister::~DriveLister()
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->lister = nullptr;
}

bool DriveLister::isBusy() const
{
    return !m_pending.isEmpty();
}

void DriveLister::refresh(const QStringList &roots)
{
    for (const QString &root : roots) {
        if (!m_pending.contains(root)) {
            m_pending.append(root);
            read(root);
        }
    }
}

void DriveLister::read(const QString &root)
{
    try {
        // Detached: a call on an absent server cannot be interrupted, and nobody may wait for it.
        runDetached([shared = m_shared, root] {
            const Drive drive = shared->reader(root);
            // With the lock held, the lister cannot go before the answer stands in its queue.
            const std::lock_guard lock(shared->mutex);
            if (DriveLister *lister = shared->lister)
                QMetaObject::invokeMethod(
                    lister, [lister, root, drive] { lister->take(root, drive); }, Qt::QueuedConnection);
        });
    } catch (const std::system_error &error) {
        qDebug() << "No thread to read a drive:" << root << error.what();
        Drive unread;
        unread.root = root;
        // Later, as every answer.
        QMetaObject::invokeMethod(
            this, [this, unread] { take(unread.root, unread); }, Qt::QueuedConnection);
    }
}

void DriveLister::take(const QString &root, const Drive &drive)
{
    m_pending.removeOne(root);
    emit driveRead(drive);
    if (m_pending.isEmpty())
        emit finished();
}

} // namespace platform
