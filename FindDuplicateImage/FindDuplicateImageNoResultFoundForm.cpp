// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageNoResultFoundForm.h"

#include "FindDuplicateImage/ImageReport.h"
#include "core/CountText.h"
#include "widgets/Controls.h"
#include "widgets/EmptyState.h"
#include "widgets/Theme.h"

#include <QIcon>
#include <QPushButton>
#include <QVBoxLayout>

FindDuplicateImageNoResultFoundForm::FindDuplicateImageNoResultFoundForm(QWidget *parent)
    : QWidget(parent),
      m_state(new EmptyState(this)),
      m_back(new QPushButton(tr("Back"), this))
{
    m_back->setObjectName(QStringLiteral("noResultBackButton"));
    m_back->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Left));
    m_back->setToolTip(tr("Back to the start page (Alt+Left)"));
    connect(m_back, &QAbstractButton::clicked, this,
            &FindDuplicateImageNoResultFoundForm::noResult_backToMain);
    showScan({});

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::pageMargin);
    layout->addStretch(2);
    layout->addWidget(m_state);
    layout->addWidget(m_back, 0, Qt::AlignHCenter);
    layout->addStretch(3);
}

void FindDuplicateImageNoResultFoundForm::showScan(const ImageReport &report, const QString &notice)
{
    QString text = report.imagesCompared == 0
                       ? tr("%1 holds no pictures that can be compared.").arg(report.root)
                       : core::countText(report.imagesCompared, tr("1 picture in %2 was compared."),
                                         tr("%1 pictures in %2 were compared."))
                             .arg(report.root);
    for (const QString &remark : remarks(report))
        text += QLatin1Char('\n') + remark;
    if (!notice.isEmpty())
        text += QLatin1Char('\n') + notice;
    m_state->setContent(controls::image("FindDuplicateImage48"), tr("No Duplicate Files Found"), text);
}

void FindDuplicateImageNoResultFoundForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_back->setFocus();
}
