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

// What a user should know of an item before it is destroyed.
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
    bool counted = false; // a folder's figures are complete
    quint64 files = 1;    // in a folder
    quint64 bytes = 0;

    // Already known by its remarks; a file with other names by the user's choice.
    bool willBeLeft(bool overwritesOtherNames) const
    {
        const Remarks obstacles =
            Remarks(Remark::Protected) | Remark::InCloud | Remark::ReadOnly | Remark::Elsewhere;
        return (remarks & obstacles) || (remarks.testFlag(Remark::OtherNames) && !overwritesOtherNames);
    }
};

class Win32Disk;

// What a folder of the list holds.
struct FolderCount {
    int id = 0; // of its row
    quint64 files = 0;
    quint64 bytes = 0;
    bool complete = true; // no folder in it was left out
};

// Without entering links; ends early when it is cancelled.
FolderCount countFolder(const QString &path, const core::CancelFlag &cancel);

// Reads what was added, and counts what the folders hold, without entering links. Rows keep the ids that they
// are given in their order, from `firstId`.
class ItemReader : public core::WorkerThread
{
    Q_OBJECT

public:
    using MediumOf = std::function<platform::Medium(const QString &path)>;

    ItemReader(QStringList paths, int firstId, MediumOf mediumOf);

    // After done(): paths that no item has, or that is a drive.
    const QStringList &refused() const { return m_refused; }

signals:
    void rowsRead(const std::vector<securedelete::ListRow> &rows);
    // Several at a time when they come fast.
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
    QString m_folder; // of the item that was read last, and its medium
    platform::Medium m_medium = platform::Medium::Unknown;
    QStringList m_refused;
};

} // namespace securedelete
