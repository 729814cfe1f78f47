// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProxyStyle>

// The style of the controls: flat shapes with a thin outline, in the colours of theme::colors(). Metrics,
// keys and everything not drawn here come from the Fusion style. A button passed to theme::makePrimary() is
// filled with the accent colour.
class FlatStyle : public QProxyStyle
{
    Q_OBJECT

public:
    FlatStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption *option,
                         const QWidget *widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                           const QWidget *widget) const override;
    // Icons of selected rows keep their colours.
    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap,
                                const QStyleOption *option) const override;
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override;
};
