// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/ConvertProgressForm.h"

#include "core/SizeText.h"
#include "platform/Shell.h"
#include "widgets/Controls.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Theme.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>

namespace
{

constexpr int contentWidth = 560;

QString timeText(qint64 seconds)
{
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

ConvertProgressForm::ConvertProgressForm(QWidget *parent)
    : QWidget(parent),
      m_title(new QLabel(tr("Converting pictures ..."), this)),
      m_file(new ElidedLabel(this, Qt::ElideMiddle)),
      m_bar(new QProgressBar(this)),
      m_facts(new QLabel(this)),
      m_cancel(controls::pushButton(this, {.objectName = "cancelButton", .text = tr("Cancel")}))
{
    setObjectName(QStringLiteral("convertProgressForm"));
    m_title->setFont(theme::headline(font()));
    m_file->setObjectName(QStringLiteral("currentFileLabel"));
    m_facts->setObjectName(QStringLiteral("factsLabel"));
    m_bar->setAccessibleName(tr("Pictures converted"));
    theme::makeMuted(m_facts);
    auto *content = new QWidget(this);
    content->setMaximumWidth(contentWidth);
    auto *column = new QVBoxLayout(content);
    column->setSpacing(theme::space);
    column->addWidget(m_title);
    column->addWidget(m_file);
    column->addWidget(m_bar);
    column->addWidget(m_facts);
    column->addWidget(m_cancel, 0, Qt::AlignRight);
    auto *page = new QVBoxLayout(this);
    page->addStretch();
    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(content, 1);
    row->addStretch();
    page->addLayout(row);
    page->addStretch();
    connect(m_cancel, &QPushButton::clicked, this, &ConvertProgressForm::cancelRequested);
}

void ConvertProgressForm::begin(int files)
{
    m_files = files;
    m_clock.start();
    m_title->setText(tr("Converting pictures ..."));
    m_bar->setRange(0, files);
    m_cancel->setEnabled(true);
    m_cancel->setFocus();
    showProgress({}, 0, 0);
}

void ConvertProgressForm::showProgress(const QString &file, int done, qint64 bytesSaved)
{
    m_file->setText(file);
    m_bar->setValue(done);
    platform::shell().showTaskbarProgress(window()->winId(), done, m_files);
    QStringList facts{tr("%1 of %2").arg(done).arg(m_files)};
    const double seconds = double(m_clock.elapsed()) / 1000.0;
    if (done > 0 && seconds > 0.5) {
        const double rate = done / seconds;
        facts.append(tr("%1 a second").arg(QString::number(rate, 'f', 1)));
        facts.append(tr("%1 left").arg(timeText(std::lround((m_files - done) / rate))));
    }
    if (bytesSaved > 0)
        facts.append(tr("%1 saved").arg(core::sizeText(static_cast<quint64>(bytesSaved))));
    else if (bytesSaved < 0)
        facts.append(tr("%1 more than before").arg(core::sizeText(static_cast<quint64>(-bytesSaved))));
    m_facts->setText(facts.join(QStringLiteral("   ")));
}

void ConvertProgressForm::showStopping()
{
    m_title->setText(tr("Stopping ..."));
    m_cancel->setEnabled(false);
}

void ConvertProgressForm::hideEvent(QHideEvent *event)
{
    platform::shell().clearTaskbarProgress(window()->winId());
    QWidget::hideEvent(event);
}
