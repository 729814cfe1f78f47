// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/WallpaperJob.h"

#include <QWidget>

class QVBoxLayout;

// The current wallpapers, each with thumbnail, title, credit and a link to its page.
class ShownImagePanel : public QWidget
{
    Q_OBJECT

public:
    explicit ShownImagePanel(QWidget *parent = nullptr);

    // Does disk I/O: reloads the result of the last change if it is new.
    void refresh();

private:
    void show(const QList<automation::ShownImage> &pictures);
    QWidget *row(const automation::ShownImage &picture, bool alone);

    QString m_folder;
    QByteArray m_read;
    QVBoxLayout *m_rows;
    QWidget *m_content = nullptr;
};
