// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconListing.h"

#include <QAbstractListModel>
#include <QPixmap>

namespace icons
{

// All icons of the file opened last, with the images decoded so far. There is one list per process; it is
// filled first, and shown when the window is notified. Interface thread.
struct RecordList {
    QString path; // the requested file
    QList<IconRecord> records;
    QList<QImage> thumbnails; // one per record; null until decoded
};
RecordList &recordList();

// The part of that list that is shown.
class IconListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    static constexpr int iconSide = 48; // device-independent pixels
    static constexpr QSize cellSize{iconSide + 36, iconSide + 32};

    using QAbstractListModel::QAbstractListModel;

    // Shows nothing until the next showNew().
    void clear();
    // Appends all records that are not shown yet.
    void showNew();
    // The thumbnails of these rows have been decoded.
    void thumbnailsChanged(int first, int last);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    int m_shown = 0;
};

} // namespace icons
