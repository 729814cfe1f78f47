// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Drives.h"

#include "platform/InterruptibleCalls.h"
#include "platform/Text.h"

#include <QDebug>

#include <windows.h>

#include <array>
#include <memory>
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

DriveLister::DriveLister(QObject *parent) : DriveLister(readDrive, parent) {}

DriveLister::DriveLister(Reader reader, QObject *parent) : QObject(parent), m_reader(std::move(reader)) {}

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
    core::LatestAnswer *&answer = m_answers[root];
    if (!answer)
        answer = new core::LatestAnswer(this);
    const auto calls = std::make_shared<InterruptibleCalls>();
    answer->ask(
        [reader = m_reader, calls, root](const core::Asking &) {
            const InterruptibleCalls::Call call(*calls);
            return reader(root);
        },
        [this, root](const Drive &drive) { take(root, drive); },
        [this, root](const QString &error) {
            qDebug() << "Cannot read a drive:" << root << error;
            Drive unread;
            unread.root = root;
            take(root, unread);
        },
        [calls] { calls->interrupt(); });
}

void DriveLister::take(const QString &root, const Drive &drive)
{
    m_pending.removeOne(root);
    emit driveRead(drive);
    if (m_pending.isEmpty())
        emit finished();
}

} // namespace platform
