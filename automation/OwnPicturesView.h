// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LatestAnswer.h"
#include "widgets/FLTreeView.h"

#include <QHash>
#include <QPixmap>

#include <memory>

class QPushButton;

namespace automation
{
struct DroppedPictures;
}
namespace imaging
{
class DecoderPool;
}

// The user's own pictures in the order in which they are shown: added by a dialog or by dropping, removed,
// moved up and down; a thumbnail of each, made by the decoder processes. What is not there any more, or is no
// picture, says so.
class OwnPicturesView : public QWidget
{
    Q_OBJECT

public:
    explicit OwnPicturesView(QWidget *parent = nullptr);
    ~OwnPicturesView() override;

    QStringList files() const;
    void setFiles(const QStringList &files);
    // Those that are in the list already are passed over, and those that it has no place for are left out.
    void add(const QStringList &files);
    // Files, and folders of which the pictures are added. They come when the disk has answered.
    void drop(const QStringList &paths);

signals:
    void changed();
    // What was left out, and why: a sentence for the user.
    void leftOut(const QString &text);

private:
    class List;

    void append(const QString &file);
    qsizetype addTo(const QStringList &files);
    void take(const automation::DroppedPictures &dropped);
    void choose();
    void removeSelected();
    void move(int by);
    void showButtons();
    bool showThumbnail(QTreeWidgetItem *item);
    void look();

    List *m_list;
    QPushButton *m_remove;
    QPushButton *m_up;
    QPushButton *m_down;
    std::shared_ptr<imaging::DecoderPool> m_decoders;
    QHash<QString, QPixmap> m_thumbnails; // null for what cannot be used
    QStringList m_dropped;                // not listed yet
    core::LatestAnswer m_listings;
    core::LatestAnswer m_looks;
};
