// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/PanelButton.h"

#include "widgets/Theme.h"

#include <QPainter>
#include <QStyle>

namespace
{

constexpr int iconSide = 24;
constexpr int barWidth = 3;
constexpr int dotSide = 11; // including a ring in the panel's colour
constexpr int textFlags = Qt::AlignLeading | Qt::AlignVCenter | Qt::TextWordWrap;

int textLeft()
{
    return theme::space + iconSide + theme::spaceSnug;
}

} // namespace

PanelButton::PanelButton(QWidget *parent) : QToolButton(parent)
{
    setCheckable(true);
    setAutoRaise(true);
    setAttribute(Qt::WA_Hover);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setIconSize({iconSide, iconSide});
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PanelButton::showJob(RunningJobs::State state)
{
    m_job = state;
    const QString name = text().simplified();
    const QString job = RunningJobs::text(state);
    setAccessibleName(job.isEmpty() ? name : QStringLiteral("%1: %2").arg(name, job));
    setToolTip(accessibleName());
    update();
}

QSize PanelButton::sizeHint() const
{
    const QSize textSize = fontMetrics().size(0, text());
    return {textLeft() + textSize.width() + theme::spaceSnug,
            qMax(iconSide, textSize.height()) + theme::space};
}

QSize PanelButton::minimumSizeHint() const
{
    return {textLeft() + iconSide, sizeHint().height()};
}

void PanelButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const theme::Colors colors = theme::colors(this);
    const QRectF area = QRectF(rect()).adjusted(1, 1, -1, -1);
    if (isEnabled() && (isChecked() || isDown() || underMouse())) {
        const double strength = isDown() ? 0.12 : underMouse() && !isChecked() ? 0.05 : 0.08;
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme::mix(colors.window, colors.text, strength));
        painter.drawRoundedRect(area, theme::controlRadius, theme::controlRadius);
    }
    if (isChecked()) {
        const QRectF bar(area.left(), area.center().y() - area.height() / 4, barWidth, area.height() / 2);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colors.accent);
        painter.drawRoundedRect(QStyle::visualRect(layoutDirection(), rect(), bar.toRect()), 1.5, 1.5);
    }

    const QRect iconPlace(theme::space, (height() - iconSide) / 2, iconSide, iconSide);
    icon().paint(&painter, QStyle::visualRect(layoutDirection(), rect(), iconPlace), Qt::AlignCenter,
                 isEnabled() ? QIcon::Normal : QIcon::Disabled);
    if (m_job != RunningJobs::State::None) {
        const QRect dot(iconPlace.right() - dotSide + 2, iconPlace.bottom() - dotSide + 2, dotSide, dotSide);
        painter.setPen(QPen(colors.window, 2));
        painter.setBrush(m_job == RunningJobs::State::Running ? colors.accent : colors.good);
        painter.drawEllipse(QStyle::visualRect(layoutDirection(), rect(), dot));
    }
    const QRect textPlace = rect().adjusted(textLeft(), 0, -theme::spaceTight, 0);
    painter.setPen(isEnabled() ? colors.text : palette().color(QPalette::Disabled, QPalette::WindowText));
    painter.drawText(QStyle::visualRect(layoutDirection(), rect(), textPlace), textFlags, text());
    if (hasFocus())
        theme::paintFocusRing(painter, area, colors, theme::controlRadius);
}
