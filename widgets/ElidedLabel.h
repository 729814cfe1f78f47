// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/TextLabel.h"

// One line of text, elided according to `mode`; use the middle for paths.
class ElidedLabel : public TextLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr, Qt::TextElideMode mode = Qt::ElideRight);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    QString shortenedTip() const override;

private:
    QString shown() const;

    Qt::TextElideMode m_mode;
};
