// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/DiskUsageForm.h"
#include "DiskUsage/engine/Scan.h"
#include "tests/support/MemoryEnumerator.h"

#include <QAbstractItemModel>
#include <QModelIndex>
#include <QStringList>

#include <memory>

namespace tests
{

class QuietListener : public diskusage::ScanListener
{
public:
    void totalSubFolders(int) override {}
    void folderEntered(const QString &) override {}
    void itemSeen(int) override {}
};

inline std::shared_ptr<diskusage::ScanResult>
scanned(const QString &root, core::DirectoryEnumerator &disk,
        const core::FileTypeTable &types = core::defaultFileTypes())
{
    diskusage::ScanOptions options;
    options.fileTypes = types;
    QuietListener listener;
    const core::CancelFlag never;
    return std::make_shared<diskusage::ScanResult>(
        diskusage::scanFolder(root, options, disk, listener, never));
}

inline DiskUsageForm::EnumeratorFactory lending(core::DirectoryEnumerator &disk)
{
    return [&disk] { return std::make_unique<BorrowedEnumerator>(disk); };
}

inline platform::Drive noDrive(const QString &root)
{
    platform::Drive drive;
    drive.root = root;
    return drive;
}

// The texts of a column of a model's rows below `parent`.
inline QStringList column(const QAbstractItemModel &model, int section, const QModelIndex &parent = {})
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(parent); ++row)
        texts.append(model.index(row, section, parent).data().toString());
    return texts;
}

} // namespace tests
