// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>

class ThumbnailCache;
struct ImageReport;

// The groups of a report, in its order: a row a group.
class ImageGroupModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        FolderRole = Qt::UserRole, // of the first picture
        DetailRole,                // number and size of the pictures
        GoneRole,                  // the first picture was moved or removed
        SearchRole                 // what a search by name looks at: the names of all pictures, a line each
    };

    ImageGroupModel(ThumbnailCache &thumbnails, QObject *parent);

    // Null for none; must live until the next call.
    void setReport(const ImageReport *report);
    // Something about the pictures of a group has changed.
    void refresh(int group);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    QString detailText(std::size_t group) const;
    QString searchText(std::size_t group) const;

    ThumbnailCache &m_thumbnails;
    const ImageReport *m_report = nullptr;
};
