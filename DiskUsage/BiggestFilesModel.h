// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"

#include <QStandardItemModel>

// The twenty biggest files of a scan, largest first, with the columns of diskusage::FileColumn. Sorts by
// numbers and times rather than their texts.
class BiggestFilesModel : public QStandardItemModel
{
    Q_OBJECT

public:
    explicit BiggestFilesModel(QObject *parent = nullptr);

    // Any thread, while no view is attached.
    void setFiles(const std::vector<diskusage::BiggestFile> &files);
    QString filePath(int row) const;
};
