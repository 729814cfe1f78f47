// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/Theme.h"

class QPainter;
class QStyleOption;
class QStyleOptionButton;
class QStyleOptionComboBox;
class QStyleOptionHeader;
class QStyleOptionProgressBar;
class QStyleOptionSlider;
class QStyleOptionSpinBox;
class QStyleOptionTab;
class QWidget;

// Draws the controls of FlatStyle for one widget, in the widget's colours. Short-lived: keeps the pointers.
class FlatPainter
{
public:
    FlatPainter(QPainter *painter, const QWidget *widget);

    static bool enabled(const QStyleOption *option);
    static bool focused(const QStyleOption *option); // and enabled

    // An invalid colour leaves out the fill or the line.
    void box(const QRectF &rect, const QColor &fill, const QColor &line, qreal width = 1) const;
    void pushButton(const QStyleOptionButton *option) const;
    void toolButton(const QStyleOption *option) const;
    // Line edits, spin boxes and combo boxes.
    void field(const QStyleOption *option, const QColor &fill) const;
    void indicator(const QStyleOption *option, bool round) const;
    void slider(const QStyleOptionSlider *option) const;
    void comboBox(const QStyleOptionComboBox *option) const;
    void spinBox(const QStyleOptionSpinBox *option) const;
    void tab(const QStyleOptionTab *option) const;
    void headerSection(const QStyleOptionHeader *option) const;
    void progressBar(const QStyleOptionProgressBar *option) const;

private:
    QColor fillOf(const QStyleOption *option) const;
    QColor lineOf(const QStyleOption *option) const;
    void chevron(const QRectF &rect, const QColor &color, bool up) const;
    void checkMark(const QRectF &rect, const QColor &color) const;

    QPainter *m_painter;
    const QWidget *m_widget;
    theme::Colors m_colors;
};
