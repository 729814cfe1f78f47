// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ScanPage.h"

#include "core/SizeText.h"
#include "platform/Shell.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Theme.h"

#include <QGridLayout>
#include <QHideEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr int tickInterval = 250; // ms
constexpr int maxWidth = 560;
constexpr int barSteps = 1000;    // range of a bar that shows bytes
constexpr double minShare = 0.01; // minimum share before the remaining time is estimated
constexpr QLatin1String unknown("-");

QString timeText(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / 1000;
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QLatin1String objectNameOf(ScanPage::Figure figure)
{
    switch (figure) {
    case ScanPage::Figure::Items:
        return QLatin1String("itemsLabel");
    case ScanPage::Figure::Steps:
        return QLatin1String("stepsLabel");
    case ScanPage::Figure::Bytes:
        return QLatin1String("bytesLabel");
    case ScanPage::Figure::Time:
        return QLatin1String("timeLabel");
    case ScanPage::Figure::Rate:
        return QLatin1String("rateLabel");
    case ScanPage::Figure::TimeLeft:
        break;
    }
    return QLatin1String("timeLeftLabel");
}

QString nameOf(ScanPage::Figure figure, bool bytes)
{
    switch (figure) {
    case ScanPage::Figure::Items:
        return ScanPage::tr("Items");
    case ScanPage::Figure::Steps:
        return ScanPage::tr("Done");
    case ScanPage::Figure::Bytes:
        return ScanPage::tr("Size");
    case ScanPage::Figure::Time:
        return ScanPage::tr("Elapsed time");
    case ScanPage::Figure::Rate:
        return bytes ? ScanPage::tr("Speed") : ScanPage::tr("Items a second");
    case ScanPage::Figure::TimeLeft:
        break;
    }
    return ScanPage::tr("Time left");
}

} // namespace

ScanPage::ScanPage(QWidget *parent, const QList<Figure> &figures)
    : QWidget(parent),
      m_title(new QLabel(this)),
      m_path(new ElidedLabel(this, Qt::ElideMiddle)),
      m_bar(new QProgressBar(this)),
      m_cancel(new QPushButton(tr("Cancel"), this))
{
    buildLayout(figures);
    m_ticker.setInterval(tickInterval);
    connect(&m_ticker, &QTimer::timeout, this, &ScanPage::showFigures);
    connect(&m_ticker, &QTimer::timeout, this, &ScanPage::showOnTaskbar);
    connect(m_cancel, &QAbstractButton::clicked, this, &ScanPage::scanCancel);
}

void ScanPage::Shown::show(const QString &text) const
{
    value->setText(text);
    value->setAccessibleName(tr("%1: %2").arg(name, text));
}

void ScanPage::buildLayout(const QList<Figure> &figures)
{
    m_title->setObjectName(QStringLiteral("scanTitleLabel"));
    m_title->setFont(theme::headline(font()));
    m_title->setWordWrap(true);
    m_path->setObjectName(QStringLiteral("scanPathLabel"));
    theme::makeMuted(m_path);
    m_bar->setObjectName(QStringLiteral("scanProgressBar"));
    m_bar->setTextVisible(false);
    m_bar->setFixedHeight(2 * theme::barHeight);
    m_bar->setAccessibleName(tr("Progress"));
    m_cancel->setObjectName(QStringLiteral("cancelButton"));
    m_cancel->setShortcut(Qt::Key_Escape);

    auto *numbers = new QGridLayout;
    numbers->setHorizontalSpacing(theme::spaceSection);
    numbers->setVerticalSpacing(0);
    for (int column = 0; column < figures.size(); ++column) {
        const Figure figure = figures.at(column);
        const Shown shown{figure, new QLabel(this), nameOf(figure, figures.contains(Figure::Bytes))};
        shown.value->setObjectName(objectNameOf(figure));
        shown.value->setFont(theme::sectionTitle(font()));
        auto *name = new QLabel(shown.name, this);
        theme::makeMuted(name);
        numbers->addWidget(name, 0, column);
        numbers->addWidget(shown.value, 1, column);
        numbers->setColumnStretch(column, 1);
        m_figures.append(shown);
    }

    auto *center = new QWidget(this);
    center->setMaximumWidth(maxWidth);
    auto *box = new QVBoxLayout(center);
    box->setSpacing(theme::space);
    box->addWidget(m_title);
    box->addWidget(m_path);
    box->addWidget(m_bar);
    box->addLayout(numbers);
    box->addSpacing(theme::space);
    box->addWidget(m_cancel, 0, Qt::AlignLeft);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::pageMargin);
    layout->addStretch(2);
    auto *row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(center, 8);
    row->addStretch(1);
    layout->addLayout(row);
    layout->addStretch(3);
}

void ScanPage::begin(const QString &title, const QString &subject)
{
    m_clock.start();
    m_running = true;
    m_progress = {};
    m_title->setText(title);
    m_path->setText(subject);
    m_cancel->setEnabled(true);
    showBar();
    showFigures();
    m_cancel->setFocus();
}

void ScanPage::showProgress(const core::ScanProgress &progress)
{
    if (!progress.path.isEmpty())
        m_path->setText(progress.path);
    m_progress = progress;
    showBar();
    showFigures();
}

void ScanPage::setTitle(const QString &title)
{
    m_title->setText(title);
}

void ScanPage::setPath(const QString &path)
{
    m_path->setText(path);
}

void ScanPage::setTotalSteps(int total)
{
    m_progress.totalSteps = total;
    showBar();
}

void ScanPage::setSteps(int steps)
{
    m_progress.steps = steps;
    showBar();
}

void ScanPage::setItems(int items)
{
    m_progress.items = items;
    showFigures();
}

void ScanPage::showStopping(const QString &title)
{
    if (!title.isEmpty())
        m_title->setText(title);
    m_cancel->setEnabled(false);
}

void ScanPage::complete()
{
    m_running = false;
    if (!isVisible())
        leaveTaskbar();
    m_bar->setRange(0, 1);
    m_bar->setValue(1);
    showFigures();
}

void ScanPage::showBar()
{
    if (m_progress.totalBytes > 0) {
        m_bar->setRange(0, barSteps);
        m_bar->setValue(static_cast<int>(m_progress.fraction() * barSteps));
        return;
    }
    // With a single step there is no meaningful progress until the end, so the bar stays indeterminate.
    m_bar->setRange(0, m_progress.totalSteps > 1 ? m_progress.totalSteps : 0);
    m_bar->setValue(m_progress.steps);
}

void ScanPage::showFigures()
{
    for (const Shown &shown : std::as_const(m_figures))
        shown.show(figureText(shown.figure));
}

bool ScanPage::shows(Figure figure) const
{
    return std::any_of(m_figures.cbegin(), m_figures.cend(),
                       [figure](const Shown &shown) { return shown.figure == figure; });
}

QString ScanPage::figureText(Figure figure) const
{
    const qint64 milliseconds = m_clock.isValid() ? m_clock.elapsed() : 0;
    switch (figure) {
    case Figure::Items:
        return QString::number(m_progress.items);
    case Figure::Steps:
        return m_progress.totalSteps > 0
                   ? tr("%1 of %2")
                         .arg(QString::number(m_progress.steps), QString::number(m_progress.totalSteps))
                   : QString::number(m_progress.steps);
    case Figure::Bytes:
        return m_progress.totalBytes > 0
                   ? tr("%1 of %2")
                         .arg(core::sizeText(m_progress.bytes), core::sizeText(m_progress.totalBytes))
                   : core::sizeText(m_progress.bytes);
    case Figure::Time:
        return timeText(milliseconds);
    case Figure::Rate:
        return rateText(milliseconds);
    case Figure::TimeLeft:
        break;
    }
    return timeLeftText(milliseconds);
}

QString ScanPage::rateText(qint64 milliseconds) const
{
    if (milliseconds < tickInterval)
        return unknown;
    if (shows(Figure::Bytes))
        return tr("%1/s").arg(core::sizeText(m_progress.bytes * 1000 / static_cast<quint64>(milliseconds)));
    return QString::number(m_progress.items * qint64(1000) / milliseconds);
}

QString ScanPage::timeLeftText(qint64 milliseconds) const
{
    const double share = m_progress.fraction();
    if (share < minShare || milliseconds < 4 * tickInterval)
        return unknown;
    return timeText(static_cast<qint64>(static_cast<double>(milliseconds) * (1 - share) / share));
}

void ScanPage::showOnTaskbar()
{
    platform::shell().showTaskbarProgress(window()->winId(), std::max(0, m_bar->value()), m_bar->maximum());
}

void ScanPage::showEvent(QShowEvent *event)
{
    m_ticker.start();
    QWidget::showEvent(event);
}

void ScanPage::hideEvent(QHideEvent *event)
{
    // The taskbar button keeps showing a job whose window is minimised, or whose user is on another page.
    if (!event->spontaneous() && !m_running)
        leaveTaskbar();
    QWidget::hideEvent(event);
}

void ScanPage::leaveTaskbar()
{
    m_ticker.stop();
    platform::shell().clearTaskbarProgress(window()->winId());
}
