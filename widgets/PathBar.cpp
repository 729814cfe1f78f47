// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/PathBar.h"

#include "widgets/FLPopupMenu.h"
#include "widgets/Theme.h"

#include <QPainter>
#include <QStyle>
#include <QToolButton>

namespace
{

constexpr int separatorWidth = 16;
constexpr int widestPart = 220;

} // namespace

PathBar::PathBar(QWidget *parent) : QWidget(parent), m_more(new QToolButton(this))
{
    m_more->setText(QStringLiteral("\u2026"));
    m_more->setAutoRaise(true);
    m_more->setToolTip(tr("Folders above"));
    m_more->setAccessibleName(tr("Folders above"));
    m_more->hide();
    connect(m_more, &QToolButton::clicked, this, &PathBar::showHiddenParts);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PathBar::setPath(const QStringList &parts)
{
    if (parts == m_parts)
        return;
    m_parts = parts;
    setAccessibleName(tr("Folder: %1").arg(parts.join(QLatin1Char('\\'))));
    while (m_buttons.size() > parts.size()) {
        // Deleted later: this may run in the click handler of the button itself.
        m_buttons.last()->hide();
        m_buttons.takeLast()->deleteLater();
    }
    while (m_buttons.size() < parts.size())
        m_buttons.append(makeButton(static_cast<int>(m_buttons.size())));
    for (int i = 0; i < parts.size(); ++i) {
        QToolButton *button = m_buttons.at(i);
        QFont partFont(font());
        partFont.setWeight(i + 1 == parts.size() ? QFont::DemiBold : QFont::Normal);
        button->setFont(partFont);
        const QString text = QFontMetrics(partFont).elidedText(parts.at(i), Qt::ElideMiddle, widestPart);
        // A single "&" would become a keyboard mnemonic.
        button->setText(QString(text).replace(QLatin1Char('&'), QLatin1String("&&")));
        button->setToolTip(text == parts.at(i) ? QString() : parts.at(i));
        button->setAccessibleName(parts.at(i));
    }
    arrange();
}

QToolButton *PathBar::makeButton(int index)
{
    auto *button = new QToolButton(this);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, [this, index] { emit partActivated(index); });
    return button;
}

QSize PathBar::sizeHint() const
{
    return {4 * widestPart, m_more->sizeHint().height()};
}

QSize PathBar::minimumSizeHint() const
{
    return {m_more->sizeHint().width() * 3, m_more->sizeHint().height()};
}

void PathBar::resizeEvent(QResizeEvent *)
{
    arrange();
}

void PathBar::arrange()
{
    // From the right: the last part is always shown, followed by as many as fit beside the "more" button.
    const int moreWidth = m_more->sizeHint().width() + separatorWidth;
    int used = 0;
    m_firstShown = static_cast<int>(m_buttons.size());
    while (m_firstShown > 0) {
        const int partWidth = m_buttons.at(m_firstShown - 1)->sizeHint().width() + separatorWidth;
        const bool last = m_firstShown == m_buttons.size();
        const int kept = m_firstShown > 1 ? moreWidth : 0;
        if (!last && used + partWidth + kept > width() + separatorWidth)
            break;
        used += partWidth;
        --m_firstShown;
    }
    m_more->setVisible(m_firstShown > 0);
    int x = 0;
    const auto place = [this, &x](QToolButton *button) {
        const int buttonWidth = qMin(button->sizeHint().width(), qMax(0, width() - x));
        button->setGeometry(QStyle::visualRect(layoutDirection(), rect(), {x, 0, buttonWidth, height()}));
        x += buttonWidth + separatorWidth;
    };
    if (m_firstShown > 0)
        place(m_more);
    for (int i = 0; i < m_buttons.size(); ++i) {
        m_buttons.at(i)->setVisible(i >= m_firstShown);
        if (i >= m_firstShown)
            place(m_buttons.at(i));
    }
    update();
}

void PathBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(theme::colors(this).textMuted);
    const QString separator =
        layoutDirection() == Qt::LeftToRight ? QStringLiteral("\u203a") : QStringLiteral("\u2039");
    for (int i = qMax(1, m_firstShown); i < m_buttons.size(); ++i) {
        const QRect part = m_buttons.at(i)->geometry();
        const QRect gap = layoutDirection() == Qt::LeftToRight
                              ? QRect(part.left() - separatorWidth, 0, separatorWidth, height())
                              : QRect(part.right() + 1, 0, separatorWidth, height());
        painter.drawText(gap, Qt::AlignCenter, separator);
    }
}

void PathBar::showHiddenParts()
{
    auto *menu = new FLPopupMenu(this);
    for (int i = 0; i < m_firstShown; ++i) {
        QAction *action =
            menu->addAction(QString(m_parts.at(i)).replace(QLatin1Char('&'), QLatin1String("&&")));
        connect(action, &QAction::triggered, this, [this, i] { emit partActivated(i); });
    }
    menu->popup(m_more->mapToGlobal(QPoint(0, m_more->height())));
}
