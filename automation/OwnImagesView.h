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
struct DroppedImages;
}
namespace imaging
{
class DecoderPool;
}

// The user's own images in display order: added by a dialog or by dropping, removed, and moved up and down;
// with thumbnails made by the decoder processes. Files that are missing or not images are marked.
class OwnImagesView : public QWidget
{
    Q_OBJECT

public:
    explicit OwnImagesView(QWidget *parent = nullptr);
    ~OwnImagesView() override;

    QStringList files() const;
    void setFiles(const QStringList &files);
    // Skips files that are already in the list, and ignores those beyond the limit.
    void add(const QStringList &files);
    // Adds files, and the images in folders, once they have been read from disk.
    void drop(const QStringList &paths);

signals:
    void changed();
    // Some files were not added; a sentence for the user says why.
    void leftOut(const QString &text);

private:
    class List;

    void append(const QString &file);
    qsizetype addTo(const QStringList &files);
    void take(const automation::DroppedImages &dropped);
    void choose();
    void removeSelected();
    void move(int by);
    void showButtons();
    bool showThumbnail(QTreeWidgetItem *item);
    void loadThumbnails();

    List *m_list;
    QPushButton *m_remove;
    QPushButton *m_up;
    QPushButton *m_down;
    std::shared_ptr<imaging::DecoderPool> m_decoders;
    QHash<QString, QPixmap> m_thumbnails; // null for files that cannot be used
    QStringList m_dropped;                // waiting to be read
    core::LatestAnswer m_listings;
    core::LatestAnswer m_loading;
};
