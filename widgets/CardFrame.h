// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// A card that holds other widgets: the rounded ground and border of the theme behind them.
class CardFrame : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *event) override;
};
