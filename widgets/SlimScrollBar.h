// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QScrollBar>

// A vertical scroll bar that only shows its rounded handle; it behaves like any other.
class SlimScrollBar : public QScrollBar
{
    Q_OBJECT

public:
    explicit SlimScrollBar(QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
