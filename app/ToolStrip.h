// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QToolBar>

// The main window's toolbar: flat, with a line at the edge towards the page.
class ToolStrip : public QToolBar
{
    Q_OBJECT

public:
    using QToolBar::QToolBar;

protected:
    void paintEvent(QPaintEvent *event) override;
};
