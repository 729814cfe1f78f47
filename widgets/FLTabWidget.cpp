// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FLTabWidget.h"

#include "widgets/Theme.h"

#include <QPainter>
#include <QStyle>
#include <QTabBar>

namespace
{

constexpr int underline = 3;
constexpr int textFlags = Qt::TextSingleLine | Qt::TextHideMnemonic; // "&&" is one "&"

class FlatTabBar : public QTabBar
{
public:
    explicit FlatTabBar(QWidget *parent) : QTabBar(parent)
    {
        setDrawBase(false);
        setExpanding(false);
        setAttribute(Qt::WA_Hover);
        setElideMode(Qt::ElideNone);
    }

protected:
    QSize tabSizeHint(int index) const override
    {
        const QFontMetrics metrics(currentFont());
        const int icon = tabIcon(index).isNull() ? 0 : iconSize().width() + theme::spaceSnug;
        const int text = metrics.size(textFlags, tabText(index)).width();
        return {text + icon + 2 * theme::space, metrics.height() + 2 * theme::spaceSnug + underline};
    }

    void paintEvent(QPaintEvent *) override
    {
        const theme::Colors colors = theme::colors(this);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(QRect(0, height() - 1, width(), 1), colors.border);
        for (int i = 0; i < count(); ++i)
            paintTab(painter, colors, i);
    }

private:
    QFont currentFont() const
    {
        QFont bold(font());
        bold.setWeight(QFont::DemiBold);
        return bold;
    }

    void paintTab(QPainter &painter, const theme::Colors &colors, int index)
    {
        const QRect tab = tabRect(index);
        const bool current = index == currentIndex();
        const bool hovered = tab.contains(mapFromGlobal(QCursor::pos())) && underMouse();
        QRect text = tab.adjusted(theme::space, 0, -theme::space, -underline);
        if (!tabIcon(index).isNull()) {
            const QRect icon =
                QStyle::alignedRect(layoutDirection(), Qt::AlignLeading | Qt::AlignVCenter, iconSize(), text);
            tabIcon(index).paint(&painter, icon);
            const int used = iconSize().width() + theme::spaceSnug;
            text = layoutDirection() == Qt::LeftToRight ? text.adjusted(used, 0, 0, 0)
                                                        : text.adjusted(0, 0, -used, 0);
        }
        painter.setFont(current ? currentFont() : font());
        painter.setPen(current || hovered ? colors.text : colors.textMuted);
        painter.drawText(text, Qt::AlignCenter | textFlags, tabText(index));
        if (current) {
            const QRectF line(tab.left() + theme::space / 2, tab.bottom() - underline + 1,
                              tab.width() - theme::space, underline);
            theme::paintBar(painter, line, 1, colors.accent, colors.accent);
        }
        if (current && hasFocus())
            theme::paintFocusRing(painter, tab.adjusted(2, 2, -2, -underline), colors, theme::controlRadius);
    }
};

} // namespace

FLTabWidget::FLTabWidget(QWidget *parent) : QTabWidget(parent)
{
    setTabBar(new FlatTabBar(this));
    setDocumentMode(true);
}
