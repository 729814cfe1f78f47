// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/WallpaperJob.h"

#include <QWidget>

class QVBoxLayout;

// The pictures that are on the desktop: thumbnail, title, credit and the way to its page, for each.
class ShownPicturePanel : public QWidget
{
    Q_OBJECT

public:
    explicit ShownPicturePanel(QWidget *parent = nullptr);

    // Disk: reads what the last change has left, where it is another one than before.
    void refresh();

private:
    void show(const QList<automation::ShownPicture> &pictures);
    QWidget *row(const automation::ShownPicture &picture, bool alone);

    QString m_folder;
    QByteArray m_read;
    QVBoxLayout *m_rows;
    QWidget *m_content = nullptr;
};
