// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/engine/Drawing.h"

#include <QBuffer>

using namespace Qt::StringLiterals;

namespace qr
{

namespace
{

QString number(double value)
{
    return QString::number(value, 'g', 6);
}

QString point(const QPainterPath::Element &element)
{
    return number(element.x) + ' '_L1 + number(element.y);
}

QString pathData(const QPainterPath &path)
{
    QString data;
    bool open = false;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element &element = path.elementAt(i);
        switch (element.type) {
        case QPainterPath::MoveToElement:
            data += (open ? "ZM"_L1 : "M"_L1) + point(element);
            open = true;
            break;
        case QPainterPath::LineToElement:
            data += 'L'_L1 + point(element);
            break;
        case QPainterPath::CurveToElement:
            data += 'C'_L1 + point(element);
            break;
        case QPainterPath::CurveToDataElement:
            data += ' '_L1 + point(element);
            break;
        }
    }
    return open ? data + 'Z'_L1 : data;
}

QString stops(const Style &style)
{
    return u"<stop offset=\"0\" stop-color=\"%1\"/><stop offset=\"1\" stop-color=\"%2\"/>"_s.arg(
        style.color.name(), style.color2.name());
}

} // namespace

// The fill of the modules; adds the elements that it references to the definitions.
QString Drawing::svgPaint(QString &definitions) const
{
    if (m_style.fill == Fill::Solid)
        return m_style.color.name();
    const QString side = number(m_matrix.size());
    const QString middle = number(m_matrix.size() / 2.0);
    if (m_style.fill == Fill::Radial) {
        definitions =
            u"<radialGradient id=\"f\" gradientUnits=\"userSpaceOnUse\" cx=\"%1\" cy=\"%1\" r=\"%1\">%2"
            "</radialGradient>"_s.arg(middle, stops(m_style));
    } else {
        const QString x = m_style.fill == Fill::Vertical ? u"0"_s : side;
        const QString y = m_style.fill == Fill::Horizontal ? u"0"_s : side;
        definitions = u"<linearGradient id=\"f\" gradientUnits=\"userSpaceOnUse\" x1=\"0\" y1=\"0\" "
                      u"x2=\"%1\" y2=\"%2\">"
                      "%3</linearGradient>"_s.arg(x, y, stops(m_style));
    }
    return u"url(#f)"_s;
}

QString Drawing::svgLogo() const
{
    QString text;
    if (m_logo.isEmpty())
        return text;
    if (!m_logoBack.isEmpty() && !m_style.transparent)
        text += u"<path fill=\"%1\" d=\"%2\"/>\n"_s.arg(logoBackColor().name(), pathData(m_logoBack));
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    m_style.logo.image.save(&buffer, "png");
    return text +
           u"<image x=\"%1\" y=\"%2\" width=\"%3\" height=\"%4\" xlink:href=\"data:image/png;base64,%5\"/>\n"_s
               .arg(number(m_logo.x()), number(m_logo.y()), number(m_logo.width()), number(m_logo.height()),
                    QString::fromLatin1(png.toBase64()));
}

QByteArray Drawing::svg() const
{
    QString definitions;
    const QString paint = svgPaint(definitions);
    const QString pixels = QString::number(m_style.imageSize);
    const QString all = QString::number(side());
    QString text = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                   "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
                   "width=\"%1\" height=\"%1\" viewBox=\"0 0 %2 %2\">\n"_s.arg(pixels, all);
    if (!definitions.isEmpty())
        text += "<defs>"_L1 + definitions + "</defs>\n"_L1;
    if (!m_style.transparent)
        text += u"<rect width=\"%1\" height=\"%1\" fill=\"%2\"/>\n"_s.arg(all, m_style.background.name());
    QString modules;
    for (const QPainterPath &piece : m_outline)
        modules += pathData(piece);
    text += u"<g transform=\"translate(%1 %1)\">\n<path fill=\"%2\" d=\"%3\"/>\n"_s.arg(
        QString::number(m_style.margin), paint, modules);
    text += svgLogo() + "</g>\n</svg>\n"_L1;
    return text.toUtf8();
}

} // namespace qr
