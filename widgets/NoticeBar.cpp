// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/NoticeBar.h"

#include "widgets/Controls.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QAccessible>
#include <QAction>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

namespace notice
{

namespace
{

constexpr int iconSize = 16;
constexpr int stripe = 3; // stripe in the colour of the kind at the leading edge

const char *imageOf(NoticeBar::Kind kind)
{
    switch (kind) {
    case NoticeBar::Kind::Success:
        return "Checkmark16";
    case NoticeBar::Kind::Warning:
        return "Warning16";
    case NoticeBar::Kind::Error:
        return "Error16";
    default:
        return "Info16";
    }
}

QColor colorOf(NoticeBar::Kind kind, const theme::Colors &colors)
{
    switch (kind) {
    case NoticeBar::Kind::Success:
        return colors.good;
    case NoticeBar::Kind::Warning:
        return colors.warning;
    case NoticeBar::Kind::Error:
        return colors.danger;
    default:
        return colors.accent;
    }
}

// Adds the kind in words, for users who do not see icon and colour.
QString spoken(NoticeBar::Kind kind, const QString &text)
{
    switch (kind) {
    case NoticeBar::Kind::Warning:
        return NoticeBar::tr("Warning: %1").arg(text);
    case NoticeBar::Kind::Error:
        return NoticeBar::tr("Error: %1").arg(text);
    default:
        return text;
    }
}

} // namespace

} // namespace notice

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

void NoticeBar::showNotice(Kind kind, const QString &text, QAction *action)
{
    m_kind = kind;
    if (QAction *last = m_action->defaultAction(); last && last != action)
        m_action->removeAction(last);
    if (action)
        m_action->setDefaultAction(action);
    m_action->setVisible(action != nullptr);
    const QSize size(notice::iconSize, notice::iconSize);
    m_icon->setPixmap(controls::image(notice::imageOf(kind)).pixmap(size, devicePixelRatio()));
    m_text->setText(text);
    const QString spoken = notice::spoken(kind, text);
    setAccessibleName(spoken);
    show();
    update();
    QAccessibleAnnouncementEvent announcement(this, spoken);
    announcement.setPoliteness(kind == Kind::Error ? QAccessible::AnnouncementPoliteness::Assertive
                                                   : QAccessible::AnnouncementPoliteness::Polite);
    QAccessible::updateAccessibility(&announcement);
}

void NoticeBar::showNotice(const QIcon &icon, const QString &text, QAction *action)
{
    showNotice(Kind::Info, text, action);
    m_icon->setPixmap(icon.pixmap(QSize(notice::iconSize, notice::iconSize), devicePixelRatio()));
}

QString NoticeBar::text() const
{
    return isHidden() ? QString() : m_text->text();
}

void NoticeBar::paintEvent(QPaintEvent *)
{
    const theme::Colors colors = theme::colors(this);
    const QColor color = notice::colorOf(m_kind, colors);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme::isHighContrast() ? QPen(colors.border) : QPen(Qt::NoPen));
    painter.setBrush(theme::isHighContrast() ? colors.card : theme::mix(colors.card, color, 0.14));
    painter.drawRoundedRect(rect(), theme::controlRadius, theme::controlRadius);
    QRect edge(0, theme::spaceTight, notice::stripe, height() - 2 * theme::spaceTight);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(QStyle::visualRect(layoutDirection(), rect(), edge), 1.5, 1.5);
}
