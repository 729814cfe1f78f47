// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QScrollBar>

// A vertical scroll bar that shows nothing but its rounded handle; it works as any other.
class SlimScrollBar : public QScrollBar
{
    Q_OBJECT

public:
    explicit SlimScrollBar(QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
