// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ModuleCard.h"

#include "app/ModuleTable.h"
#include "app/StarButton.h"
#include "widgets/Theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace
{

constexpr int gap = theme::space; // between two cards; each card has half of it
constexpr int padding = 14;
constexpr int iconSide = 40;
constexpr int iconGap = 10;
constexpr int titleGap = theme::spaceTight / 2;
constexpr int jobDot = 7;
constexpr int jobIndent = jobDot + theme::spaceTight;
constexpr int maxWidthsKept = 8;
constexpr int titleFlags = Qt::TextWordWrap | Qt::AlignLeading | Qt::AlignTop;

// The width at which three columns fit beside the toolbar in the smallest main window, with Windows' default
// font; larger fonts give wider cards.
constexpr int narrowestAtDefault = 268;
constexpr double defaultPointSize = 9;

int heightOf(const QFont &font, const QString &text, int width)
{
    return QFontMetrics(font).boundingRect(0, 0, width, 10000, titleFlags, text).height();
}

} // namespace

ModuleCard::ModuleCard(const Module &module, QWidget *parent)
    : QAbstractButton(parent),
      m_id(module.id),
      m_description(module.descriptionText()),
      m_star(new StarButton(this))
{
    setText(module.title());
    setAccessibleName(module.title());
    setAccessibleDescription(m_description);
    setIcon(QIcon(module.iconPath()));
    setIconSize({iconSide, iconSide});
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setStarred(false, false);
}

QAbstractButton *ModuleCard::starButton() const
{
    return m_star;
}

void ModuleCard::setStarred(bool starred, bool lastStar)
{
    m_star->setStarred(starred, text(), lastStar);
}

void ModuleCard::showJob(RunningJobs::State state)
{
    m_job = state;
    const QString job = RunningJobs::text(state);
    setAccessibleDescription(job.isEmpty() ? m_description
                                           : QStringLiteral("%1. %2").arg(job, m_description));
    m_places.clear();
    updateGeometry();
    update();
}

int ModuleCard::narrowest(const QFont &font)
{
    const double points = font.pointSizeF() > 0 ? font.pointSizeF() : defaultPointSize;
    return qRound(narrowestAtDefault * std::max(1.0, points / defaultPointSize));
}

int ModuleCard::heightForWidth(int width) const
{
    const TextPlaces &places = textPlaces(width);
    const int bottom = std::max(places.description.bottom(), places.job.bottom());
    const int content = std::max(iconSide, bottom + 1 - places.title.top());
    return content + 2 * padding + gap;
}

QSize ModuleCard::sizeHint() const
{
    const int width = narrowest(font());
    return {width, heightForWidth(width)};
}

QSize ModuleCard::minimumSizeHint() const
{
    return {narrowest(font()), iconSide + 2 * padding + gap};
}

QRect ModuleCard::frame() const
{
    return rect().adjusted(gap / 2, gap / 2, -gap / 2, -gap / 2);
}

const ModuleCard::TextPlaces &ModuleCard::textPlaces(int cardWidth) const
{
    // Cached, since a layout queries the heights for two or three widths many times.
    const auto known = m_places.constFind(cardWidth);
    if (known != m_places.constEnd())
        return *known;
    if (m_places.size() >= maxWidthsKept)
        m_places.clear();
    const QFont titleFont = theme::sectionTitle(font());
    const int left = gap / 2 + padding + iconSide + iconGap;
    const int top = gap / 2 + padding;
    const int width = std::max(1, cardWidth - gap / 2 - padding - left);
    // The title may use the padding around the star's image.
    const int titleWidth = std::max(1, width - m_star->sizeHint().width() + padding - theme::spaceTight);

    TextPlaces &places = m_places[cardWidth];
    places.title = QRect(left, top, titleWidth, heightOf(titleFont, text(), titleWidth));
    places.description =
        QRect(left, places.title.bottom() + 1 + titleGap, width, heightOf(font(), m_description, width));
    if (m_job != RunningJobs::State::None)
        places.job = QRect(left + jobIndent, places.description.bottom() + 1 + titleGap, width - jobIndent,
                           heightOf(font(), RunningJobs::text(m_job), width - jobIndent));
    return places;
}

bool ModuleCard::hitButton(const QPoint &position) const
{
    return frame().contains(position);
}

void ModuleCard::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
        emit moveRequested(event->key());
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        click();
        return;
    case Qt::Key_S:
        if (event->modifiers() == Qt::NoModifier && !event->isAutoRepeat())
            m_star->click();
        return;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}

void ModuleCard::focusInEvent(QFocusEvent *event)
{
    m_focusVisible = event->reason() != Qt::MouseFocusReason;
    QAbstractButton::focusInEvent(event);
}

void ModuleCard::resizeEvent(QResizeEvent *event)
{
    const QRect corner = frame().adjusted(0, theme::spaceSnug, -theme::spaceSnug, 0);
    m_star->setGeometry(
        QStyle::alignedRect(layoutDirection(), Qt::AlignRight | Qt::AlignTop, m_star->sizeHint(), corner));
    QAbstractButton::resizeEvent(event);
}

void ModuleCard::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange) {
        m_places.clear();
        updateGeometry();
    }
    QAbstractButton::changeEvent(event);
}

void ModuleCard::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const theme::Colors colors = theme::colors(this);
    const theme::CardState state = isDown() ? theme::CardState::Pressed
                                   : underMouse() && hitButton(mapFromGlobal(QCursor::pos()))
                                       ? theme::CardState::Hover
                                       : theme::CardState::Rest;
    theme::paintCard(painter, frame(), colors, state, hasFocus() && m_focusVisible);

    const auto mirrored = [this](const QRect &place) {
        return QStyle::visualRect(layoutDirection(), rect(), place);
    };
    icon().paint(&painter, mirrored({gap / 2 + padding, gap / 2 + padding, iconSide, iconSide}));
    const TextPlaces &places = textPlaces(width());
    painter.setFont(theme::sectionTitle(font()));
    painter.setPen(colors.text);
    painter.drawText(mirrored(places.title), titleFlags, text());
    painter.setFont(font());
    painter.setPen(colors.textMuted);
    painter.drawText(mirrored(places.description), titleFlags, m_description);
    if (m_job == RunningJobs::State::None)
        return;
    const QColor running = m_job == RunningJobs::State::Running ? colors.accent : colors.good;
    const QColor color = theme::readable(running, colors.card, 4.5);
    painter.setPen(color);
    painter.drawText(mirrored(places.job), titleFlags, RunningJobs::text(m_job));
    // Drawn, since not every font has the character.
    QRect dot(0, 0, jobDot, jobDot);
    dot.moveCenter({places.job.left() - theme::spaceTight - jobDot / 2, places.job.center().y()});
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(mirrored(dot));
}
