// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// A card that contains other widgets, with the theme's rounded background and border.
class CardFrame : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *event) override;
};
