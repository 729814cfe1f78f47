// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/groups/GroupListModel.h"

namespace imaging
{
class ThumbnailCache;
}
struct ImageReport;

// The groups of a report. Texts and images are created when a row is painted.
class ImageGroupModel : public duplicates::GroupListModel
{
    Q_OBJECT

public:
    enum Role {
        FolderRole = Qt::UserRole, // of the first image
        DetailRole,                // number and size of the images
        GoneRole                   // the first image was moved or removed
    };

    ImageGroupModel(imaging::ThumbnailCache &thumbnails, QObject *parent);

    // Null for none; must live until the next call. Lists all groups.
    void setReport(const ImageReport *report);

    QVariant data(const QModelIndex &index, int role) const override;

private:
    QString detailText(std::size_t group) const;

    imaging::ThumbnailCache &m_thumbnails;
    const ImageReport *m_report = nullptr;
};
