// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageClearRamForm.h"

#include "widgets/Theme.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace
{
constexpr int barWidth = 320;
}

DiskUsageClearRamForm::DiskUsageClearRamForm(QWidget *parent) : QWidget(parent), m_bar(new QProgressBar(this))
{
    auto *what = new QLabel(tr("Clearing RAM back to the system in progress."), this);
    what->setObjectName(QStringLiteral("clearRamLabel"));
    what->setFont(theme::sectionTitle(font()));
    what->setAlignment(Qt::AlignCenter);
    what->setWordWrap(true);
    auto *wait = new QLabel(tr("Please wait ..."), this);
    wait->setObjectName(QStringLiteral("pleaseWaitLabel"));
    wait->setAlignment(Qt::AlignCenter);
    theme::makeMuted(wait);
    m_bar->setTextVisible(false);
    m_bar->setFixedWidth(barWidth);
    m_bar->setAccessibleName(what->text());

    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(theme::space);
    layout->addStretch();
    layout->addWidget(what);
    layout->addWidget(wait);
    layout->addWidget(m_bar, 0, Qt::AlignHCenter);
    layout->addStretch();
}

void DiskUsageClearRamForm::begin(int steps)
{
    m_bar->setRange(0, steps);
    m_bar->setValue(0);
}

void DiskUsageClearRamForm::addStep()
{
    m_bar->setValue(m_bar->value() + 1);
}
