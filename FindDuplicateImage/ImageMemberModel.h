// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/Members.h"

#include <QAbstractListModel>
#include <QStringList>

#include <optional>
#include <vector>

namespace imaging
{
class ThumbnailCache;
}
struct ImageReport;

namespace lookalikes
{
struct ImageRecord;
}

// The pictures of one group: a row each, the first one first.
class ImageMemberModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role {
        FolderRole = Qt::UserRole,
        FactsRole,    // dimensions, format and size
        DateRole,     // of the last write
        NoteRole,     // what the user should know before removing it
        NoteKindRole, // a NoteKind
        FirstRole,    // the picture that the others are alike to
        GoneRole      // it is not there any more
    };
    enum NoteKind { NoNote, Proposal, Warning, Gone };

    ImageMemberModel(imaging::ThumbnailCache &thumbnails, QObject *parent);

    // A group of the report, or none.
    void setGroup(const ImageReport *report, int group);
    int group() const { return m_group; }
    // What the disk says about the pictures now, one each.
    void setFacts(std::vector<duplicates::MemberFacts> facts);
    // Empty until it is known.
    std::optional<duplicates::MemberFacts> facts(int row) const;
    // The picture was moved to the recycle bin.
    void refresh();

    const lookalikes::ImageRecord *record(int row) const;
    bool isGone(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    struct Note {
        NoteKind kind = NoNote;
        QString text;
    };
    Note note(int row) const;
    QStringList warnings(int row) const;
    QString toolTip(int row) const;
    QString accessibleText(int row) const;
    void findProposal();

    imaging::ThumbnailCache &m_thumbnails;
    const ImageReport *m_report = nullptr;
    int m_group = -1;
    int m_proposal = -1; // the row that is proposed to be kept; -1 when there is nothing to choose from
    std::vector<duplicates::MemberFacts> m_facts;
};
