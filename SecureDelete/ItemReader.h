// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Shred.h"
#include "core/WorkerThread.h"
#include "platform/RawVolume.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace securedelete
{

// What the user should know about an item before it is destroyed.
enum class Remark : unsigned {
    Link = 1 << 0,
    OtherNames = 1 << 1,
    Transformed = 1 << 2, // compressed, encrypted or sparse
    InCloud = 1 << 3,
    CloudFolder = 1 << 4, // in a folder that a cloud store keeps a copy of
    ReadOnly = 1 << 5,
    InUse = 1 << 6,
    Protected = 1 << 7,
    Elsewhere = 1 << 8, // reached through a link
    Unreadable = 1 << 9,
};
Q_DECLARE_FLAGS(Remarks, Remark)
Q_DECLARE_OPERATORS_FOR_FLAGS(Remarks)

// An item of the list.
struct ListRow {
    int id = 0;
    ShredRow row;
    Remarks remarks;
    platform::Medium medium = platform::Medium::Unknown;
    bool counted = false; // file count and size are final (always for a file)
    quint64 files = 1;    // in a folder: all files below it
    quint64 bytes = 0;

    // True if the remarks already show that the item cannot be destroyed, or if the user's settings spare it.
    bool willBeLeft(bool overwritesOtherNames) const
    {
        const Remarks obstacles =
            Remarks(Remark::Protected) | Remark::InCloud | Remark::ReadOnly | Remark::Elsewhere;
        return (remarks & obstacles) || (remarks.testFlag(Remark::OtherNames) && !overwritesOtherNames);
    }
};

class Win32Disk;

// Contents of a folder of the list.
struct FolderCount {
    int id = 0; // of the list row
    quint64 files = 0;
    quint64 bytes = 0;
    bool complete = true; // every subfolder could be read
};

// Does not follow links; returns early when cancelled.
FolderCount countFolder(const QString &path, const core::CancelFlag &cancel);

// Reads the facts of added items, and counts what the folders contain without following links. Rows get ids
// in their order, starting at `firstId`.
class ItemReader : public core::WorkerThread
{
    Q_OBJECT

public:
    using MediumOf = std::function<platform::Medium(const QString &path)>;

    ItemReader(QStringList paths, int firstId, MediumOf mediumOf);

    // After done(): paths that do not exist or are a drive root.
    const QStringList &refused() const { return m_refused; }

signals:
    void rowsRead(const std::vector<securedelete::ListRow> &rows);
    // May report several folders at once.
    void foldersCounted(const std::vector<securedelete::FolderCount> &counts);

protected:
    void work() override;

private:
    std::optional<ListRow> read(Win32Disk &disk, const QString &path);
    Remarks remarksOf(Win32Disk &disk, ListRow &row) const;
    platform::Medium mediumOf(const QString &folder);
    void countAll(const std::vector<ListRow> &folders);

    const QStringList m_paths;
    const int m_firstId;
    const MediumOf m_mediumOf;
    QString m_folder; // folder of the last item read; its medium is cached
    platform::Medium m_medium = platform::Medium::Unknown;
    QStringList m_refused;
};

} // namespace securedelete
