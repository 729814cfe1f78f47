// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/WrappedLabel.h"

#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace
{

constexpr int maxLines = 6;
constexpr int minimumCharacters = 8;
constexpr int widestHint = 60; // characters
constexpr int widestTip = 100;

QStringList wrapped(const QString &text, const QFont &font, int width)
{
    QStringList lines;
    for (const QString &paragraph : text.split(QLatin1Char('\n'))) {
        QTextLayout layout(paragraph, font);
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            lines.append(paragraph.mid(line.textStart(), line.textLength()));
        }
        layout.endLayout();
    }
    return lines;
}

} // namespace

WrappedLabel::WrappedLabel(QWidget *parent) : TextLabel(parent)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QStringList WrappedLabel::lines(int width) const
{
    const int lineWidth = std::max(1, width);
    QStringList lines = wrapped(text(), font(), lineWidth);
    // How much room a line wastes at its end depends on the words.
    for (int room = maxLines * lineWidth; lines.size() > maxLines && room > lineWidth; room -= lineWidth / 2)
        lines = wrapped(fontMetrics().elidedText(text(), Qt::ElideMiddle, room), font(), lineWidth);
    return lines;
}

int WrappedLabel::heightForWidth(int width) const
{
    return static_cast<int>(lines(width).size()) * fontMetrics().lineSpacing();
}

QSize WrappedLabel::sizeHint() const
{
    const int width = std::min(fontMetrics().boundingRect(text()).width() + fontMetrics().averageCharWidth(),
                               fontMetrics().averageCharWidth() * widestHint);
    return {width, heightForWidth(width)};
}

QSize WrappedLabel::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * minimumCharacters, fontMetrics().lineSpacing()};
}

void WrappedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    const QStringList shown = lines(width());
    const int lineHeight = fontMetrics().lineSpacing();
    QRect place(0, std::max(0, (height() - static_cast<int>(shown.size()) * lineHeight) / 2), width(),
                lineHeight);
    for (const QString &line : shown) {
        painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine, line);
        place.translate(0, lineHeight);
    }
}

// Tool tips do not wrap such texts either.
QString WrappedLabel::shortenedTip() const
{
    if (wrapped(text(), font(), std::max(1, width())).size() <= maxLines)
        return {};
    return wrapped(text(), font(), fontMetrics().averageCharWidth() * widestTip).join(QLatin1Char('\n'));
}
