// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QToolBar>

// The main window's tool bar: flat, with one line towards the page.
class ToolStrip : public QToolBar
{
    Q_OBJECT

public:
    using QToolBar::QToolBar;

protected:
    void paintEvent(QPaintEvent *event) override;
};
