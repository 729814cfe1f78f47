// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/groups/MemberListModel.h"

#include <QStringList>

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
class ImageMemberModel : public duplicates::MemberListModel
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

    const lookalikes::ImageRecord *record(int row) const;
    bool isGone(int row) const;

    QVariant data(const QModelIndex &index, int role) const override;

protected:
    int memberCount() const override;
    // Of the pictures that are still there, and still those that were compared.
    void updateProposal() override;

private:
    struct Note {
        NoteKind kind = NoNote;
        QString text;
    };
    Note note(int row) const;
    QStringList warnings(int row) const;
    QString toolTip(int row) const;
    QString accessibleText(int row) const;

    imaging::ThumbnailCache &m_thumbnails;
    const ImageReport *m_report = nullptr;
    int m_proposal = -1; // the row that is proposed to be kept; -1 when there is nothing to choose from
};
