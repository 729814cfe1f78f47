// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LatestAnswer.h"
#include "widgets/FLTreeView.h"

#include <QHash>
#include <QPixmap>

#include <memory>

class QPushButton;

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
    // Those that are in the list already, or above its limit, are passed over.
    void add(const QStringList &files);

signals:
    void changed();

private:
    class List;

    void append(const QString &file);
    void choose();
    void removeSelected();
    void move(int by);
    void showButtons();
    QStringList showThumbnails();
    void look();

    List *m_list;
    QPushButton *m_remove;
    QPushButton *m_up;
    QPushButton *m_down;
    std::shared_ptr<imaging::DecoderPool> m_decoders;
    QHash<QString, QPixmap> m_thumbnails; // null for what cannot be used
    core::LatestAnswer m_looks;
};
