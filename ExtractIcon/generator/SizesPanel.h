// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LatestAnswer.h"

#include <QImage>
#include <QList>
#include <QRect>
#include <QTimer>
#include <QWidget>

class IconPreview;
class QCheckBox;
class QLayout;

namespace icons
{

// The sizes of the icon to choose from, sharpening, and a preview of the chosen sizes, which is made on a
// worker thread.
class SizesPanel : public QWidget
{
    Q_OBJECT

public:
    explicit SizesPanel(QWidget *parent = nullptr);

    QList<int> sizes() const; // the chosen ones, in the order of usualSizes
    bool sharpens() const;

    // What is previewed; a null image clears the preview.
    void setPicture(const QImage &picture, const QRect &square);
    // While the user drags: the preview follows a moment later.
    void setSquare(const QRect &square);

signals:
    void sizesChanged();

private:
    QLayout *buildBoxes();
    void updatePreview();

    IconPreview *m_preview;
    QList<QCheckBox *> m_boxes; // in the order of usualSizes
    QCheckBox *m_sharpen;
    QImage m_picture;
    QRect m_square;
    QTimer m_pause;
    core::LatestAnswer m_making;
};

} // namespace icons
