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
    bool ready = false; // false if there is no medium or it is not reachable; the fields below are empty then
    QString label;
    QString fileSystem;     // "NTFS"
    quint64 totalBytes = 0; // available to the user: less than the volume's size if quotas are set
    quint64 freeBytes = 0;  // of the whole volume; with a quota it may exceed `totalBytes`

    // The used part of `totalBytes`; 0 if more than that is free.
    quint64 usedBytes() const { return totalBytes - qMin(freeBytes, totalBytes); }

    bool operator==(const Drive &) const = default;
};

// The roots of all drive letters in use, in alphabetical order. Returns immediately.
QStringList driveRoots();

// Call at program start: from then on Windows shows no "insert a disk" prompt for an empty drive; the call
// just fails.
void neverAskForDisks();

// May block for any time: seconds for a sleeping disk, a minute for an absent server. Not for the interface
// thread.
Drive readDrive(const QString &root);

// Reads all drives in parallel, so that an unresponsive one does not delay the others, and reports each on
// the thread this object lives in. A drive for which no thread can be started is reported as not ready. Can
// be destroyed at any time without waiting.
class DriveLister : public QObject
{
    Q_OBJECT

public:
    using Reader = std::function<Drive(const QString &root)>;

    explicit DriveLister(QObject *parent = nullptr);
    DriveLister(Reader reader, QObject *parent = nullptr);

    // Starts reading these drives. A drive that is still being read is not queried again.
    void refresh(const QStringList &roots = driveRoots());
    bool isBusy() const { return !m_pending.isEmpty(); }

signals:
    void driveRead(const platform::Drive &drive);
    void finished(); // all drives have been read

private:
    void read(const QString &root);
    void take(const QString &root, const Drive &drive);

    Reader m_reader;
    QHash<QString, core::LatestAnswer *> m_answers; // one per drive, so that they do not replace each other
    QStringList m_pending;
};

} // namespace platform

Q_DECLARE_METATYPE(platform::Drive)
