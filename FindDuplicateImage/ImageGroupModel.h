// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>

#include <vector>

namespace imaging
{
class ThumbnailCache;
}
struct ImageReport;

// The groups of a report, a row each. Texts and pictures are made when a row is painted, so that a list of
// any length opens at once.
class ImageGroupModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        FolderRole = Qt::UserRole, // of the first picture
        DetailRole,                // number and size of the pictures
        GoneRole                   // the first picture was moved or removed
    };

    ImageGroupModel(imaging::ThumbnailCache &thumbnails, QObject *parent);

    // Null for none; must live until the next call. Lists all groups.
    void setReport(const ImageReport *report);
    // The indexes of the groups that are listed, in the order of the rows.
    void setListed(std::vector<int> groups);
    // Something about the pictures of a group, or of all, has changed.
    void refresh(int group);
    void refreshAll();

    int groupAt(int row) const; // -1 for no row
    int rowOf(int group) const; // -1 when it is not listed

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QString detailText(std::size_t group) const;

    imaging::ThumbnailCache &m_thumbnails;
    const ImageReport *m_report = nullptr;
    std::vector<int> m_listed;
    std::vector<int> m_rowOf; // by group
};
