// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/NoticeBar.h"

#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QAction>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QToolButton>

namespace
{
constexpr int iconSize = 16;
}

NoticeBar::NoticeBar(QWidget *parent)
    : QFrame(parent),
      m_icon(new QLabel(this)),
      m_text(new WrappedLabel(this)),
      m_close(new QToolButton(this)),
      m_action(new QToolButton(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(theme::space, theme::spaceTight, theme::spaceTight, theme::spaceTight);
    layout->setSpacing(theme::spaceSnug);
    layout->addWidget(m_icon);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_action);
    layout->addWidget(m_close);
    m_action->setObjectName(QStringLiteral("noticeActionButton"));
    m_action->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_action->setFocusPolicy(Qt::StrongFocus);
    m_action->hide();
    setTabOrder(m_action, m_close);
    m_close->setAutoRaise(true);
    m_close->setText(QStringLiteral("\u00d7"));
    m_close->setFont(theme::sectionTitle(font()));
    m_close->setToolTip(tr("Dismiss"));
    m_close->setAccessibleName(tr("Dismiss"));
    connect(m_close, &QToolButton::clicked, this, &QWidget::hide);
    hide();
}

void NoticeBar::showNotice(const QIcon &icon, const QString &text, QAction *action)
{
    if (QAction *last = m_action->defaultAction(); last && last != action)
        m_action->removeAction(last);
    if (action)
        m_action->setDefaultAction(action);
    m_action->setVisible(action != nullptr);
    m_icon->setPixmap(icon.pixmap(QSize(iconSize, iconSize), devicePixelRatio()));
    m_text->setText(text);
    setAccessibleName(text);
    show();
}

QString NoticeBar::text() const
{
    return isHidden() ? QString() : m_text->text();
}

void NoticeBar::paintEvent(QPaintEvent *)
{
    const theme::Colors colors = theme::colors(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.accentSoft);
    painter.drawRoundedRect(rect(), theme::controlRadius, theme::controlRadius);
}
