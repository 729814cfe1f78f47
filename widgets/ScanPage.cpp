// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ScanPage.h"

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
constexpr int widest = 560;

QString timeText(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / 1000;
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

ScanPage::ScanPage(QWidget *parent)
    : QWidget(parent),
      m_title(new QLabel(this)),
      m_path(new ElidedLabel(this, Qt::ElideMiddle)),
      m_bar(new QProgressBar(this)),
      m_items{new QLabel(this), tr("Items")},
      m_time{new QLabel(this), tr("Elapsed time")},
      m_rate{new QLabel(this), tr("Items a second")},
      m_cancel(new QPushButton(tr("Cancel"), this))
{
    buildLayout();
    m_ticker.setInterval(tickInterval);
    connect(&m_ticker, &QTimer::timeout, this, &ScanPage::showTimes);
    connect(&m_ticker, &QTimer::timeout, this, &ScanPage::showOnTaskbar);
    m_stepTimer.setSingleShot(true);
    m_stepTimer.setInterval(0);
    connect(&m_stepTimer, &QTimer::timeout, this, &ScanPage::showSteps);
    connect(m_cancel, &QAbstractButton::clicked, this, &ScanPage::scanCancel);
}

void ScanPage::Figure::show(const QString &text) const
{
    value->setText(text);
    value->setAccessibleName(tr("%1: %2").arg(name, text));
}

void ScanPage::buildLayout()
{
    m_title->setObjectName(QStringLiteral("scanTitleLabel"));
    m_title->setFont(theme::headline(font()));
    m_title->setWordWrap(true);
    m_path->setObjectName(QStringLiteral("scanPathLabel"));
    theme::makeMuted(m_path);
    m_bar->setObjectName(QStringLiteral("scanProgressBar"));
    m_bar->setTextVisible(false);
    m_bar->setFixedHeight(2 * theme::barHeight);
    m_bar->setAccessibleName(tr("Progress of the scan"));
    m_items.value->setObjectName(QStringLiteral("itemsLabel"));
    m_time.value->setObjectName(QStringLiteral("timeLabel"));
    m_rate.value->setObjectName(QStringLiteral("rateLabel"));
    m_cancel->setObjectName(QStringLiteral("cancelButton"));
    m_cancel->setShortcut(Qt::Key_Escape);

    auto *numbers = new QGridLayout;
    numbers->setHorizontalSpacing(theme::spaceSection);
    numbers->setVerticalSpacing(0);
    int column = 0;
    for (const Figure &figure : {m_items, m_time, m_rate}) {
        auto *name = new QLabel(figure.name, this);
        theme::makeMuted(name);
        figure.value->setFont(theme::sectionTitle(font()));
        numbers->addWidget(name, 0, column);
        numbers->addWidget(figure.value, 1, column);
        numbers->setColumnStretch(column++, 1);
    }

    auto *center = new QWidget(this);
    center->setMaximumWidth(widest);
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

void ScanPage::begin(const QString &title, const QString &root)
{
    m_clock.start();
    m_stepTimer.stop();
    m_steps = 0;
    m_title->setText(title);
    m_path->setText(root);
    m_bar->setRange(0, 0); // the number of steps is not known yet
    m_cancel->setEnabled(true);
    setItems(0);
    showTimes();
    m_cancel->setFocus();
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
    m_steps = 0;
    // A single step says nothing until everything is done, which may take long: the bar goes on as it began.
    m_bar->setRange(0, total > 1 ? total : 0);
    m_bar->setValue(0);
}

void ScanPage::addStep()
{
    ++m_steps;
    if (!m_stepTimer.isActive())
        m_stepTimer.start();
}

// The bar draws itself at every new value, before anything else gets its turn: not thirty thousand times in a
// row.
void ScanPage::showSteps()
{
    m_bar->setValue(m_steps);
}

void ScanPage::setItems(int items)
{
    m_itemCount = items;
    m_items.show(QString::number(items));
}

void ScanPage::showStopping(const QString &title)
{
    m_title->setText(title);
    m_cancel->setEnabled(false);
}

void ScanPage::complete()
{
    m_stepTimer.stop();
    m_bar->setRange(0, 1);
    m_bar->setValue(1);
    showTimes();
}

void ScanPage::showTimes()
{
    const qint64 milliseconds = m_clock.isValid() ? m_clock.elapsed() : 0;
    m_time.show(timeText(milliseconds));
    m_rate.show(milliseconds < tickInterval ? QStringLiteral("-")
                                            : QString::number(m_itemCount * qint64(1000) / milliseconds));
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
    // A minimised window goes on being told of on the task bar.
    if (!event->spontaneous()) {
        m_ticker.stop();
        platform::shell().clearTaskbarProgress(window()->winId());
    }
    QWidget::hideEvent(event);
}
