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
struct ImageGroup;
struct ImageRecord;
} // namespace lookalikes

// The images of one group, one row each, the group's first image first.
class ImageMemberModel : public duplicates::MemberListModel
{
    Q_OBJECT

public:
    enum Role {
        FolderRole = Qt::UserRole,
        FactsRole,    // dimensions, format and size
        DateRole,     // last write time
        NoteRole,     // what the user should know before removing it
        NoteKindRole, // a NoteKind
        FirstRole,    // the image to which the others are similar
        GoneRole      // the file does not exist any more
    };
    enum NoteKind { NoNote, Proposal, Warning, Gone };

    ImageMemberModel(imaging::ThumbnailCache &thumbnails, QObject *parent);

    // A group of the report, or none.
    void setGroup(const ImageReport *report, int group);

    const lookalikes::ImageRecord *record(int row) const;
    bool isGone(int row) const;
    // Bytes freed by keeping only the suggested image, as far as the files are known.
    quint64 spareBytes() const;

    QVariant data(const QModelIndex &index, int role) const override;

protected:
    int memberCount() const override;
    // Considers only images that still exist and have not changed since they were compared.
    void updateProposal() override;

private:
    struct Note {
        NoteKind kind = NoNote;
        QString text;
    };
    // The group, with the images checked that are gone or are not the ones that were compared.
    lookalikes::ImageGroup imagesLeft() const;
    Note note(int row) const;
    QStringList warnings(int row) const;
    QString toolTip(int row) const;
    QString accessibleText(int row) const;

    imaging::ThumbnailCache &m_thumbnails;
    const ImageReport *m_report = nullptr;
    int m_proposal = -1; // the row suggested to be kept; -1 if there is nothing to choose from
};
