// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LatestAnswer.h"

#include <QHash>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

namespace platform
{

struct Drive {
    enum class Type { Unknown, Removable, Fixed, Network, Optical, RamDisk };

    QString root; // "C:\"
    Type type = Type::Unknown;
    bool ready = false; // false: no medium, or not reachable; the fields below are then empty
    QString label;
    QString fileSystem;     // "NTFS"
    quint64 totalBytes = 0; // that the user may have: less than the volume holds where quotas are set
    quint64 freeBytes = 0;  // of the whole volume; beside a quota it may be more than `totalBytes`

    // What is taken of `totalBytes`; none when more than that is free.
    quint64 usedBytes() const { return totalBytes - qMin(freeBytes, totalBytes); }

    bool operator==(const Drive &) const = default;
};

// The roots of the drive letters in use, in alphabetical order. Immediate.
QStringList driveRoots();

// For the program's start: from then on Windows asks for no disk when a drive turns out to be empty, whoever
// looks at it; the call fails, and nothing else happens.
void neverAskForDisks();

// May take as long as the device likes: seconds for a sleeping disk, a minute for an absent server. Not for
// the interface thread.
Drive readDrive(const QString &root);

// Reads all drives side by side on threads of its own, so that one that does not answer delays no other, and
// tells the thread it lives in; a drive for which no thread can be started is reported as not ready. It can
// be destroyed at any moment and waits for nothing.
class DriveLister : public QObject
{
    Q_OBJECT

public:
    using Reader = std::function<Drive(const QString &root)>;

    explicit DriveLister(QObject *parent = nullptr);
    DriveLister(Reader reader, QObject *parent = nullptr);

    // Starts reading these drives. A drive that is still being read is not asked a second time.
    void refresh(const QStringList &roots = driveRoots());
    bool isBusy() const { return !m_pending.isEmpty(); }

signals:
    void driveRead(const platform::Drive &drive);
    void finished(); // nothing is being read any more

private:
    void read(const QString &root);
    void take(const QString &root, const Drive &drive);

    Reader m_reader;
    QHash<QString, core::LatestAnswer *> m_answers; // one a drive, so that they do not replace each other
    QStringList m_pending;
};

} // namespace platform

Q_DECLARE_METATYPE(platform::Drive)
