// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconListing.h"

#include <QAbstractListModel>
#include <QPixmap>

namespace icons
{

// Every icon of the file that was opened last, with the pictures as far as they are decoded. The whole
// process has one list; it is filled first and shown when the window hears of it. Interface thread.
struct RecordList {
    QString path; // of the file, as it was asked for
    QList<IconRecord> records;
    QList<QImage> thumbnails; // one a record; null until it is decoded
};
RecordList &recordList();

// What is shown of that list.
class IconListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    static constexpr int iconSide = 48; // shown, device-independent
    static constexpr QSize cellSize{iconSide + 36, iconSide + 32};

    using QAbstractListModel::QAbstractListModel;

    // Shows nothing until the next showNew().
    void clear();
    // Appends every record that is not shown yet.
    void showNew();
    // The pictures of those rows have been decoded.
    void thumbnailsChanged(int first, int last);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    int m_shown = 0;
};

} // namespace icons
