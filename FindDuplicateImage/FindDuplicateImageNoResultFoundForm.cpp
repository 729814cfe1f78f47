// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageNoResultFoundForm.h"

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
    showScan({}, 0);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::pageMargin);
    layout->addStretch(2);
    layout->addWidget(m_state);
    layout->addWidget(m_back, 0, Qt::AlignHCenter);
    layout->addStretch(3);
}

void FindDuplicateImageNoResultFoundForm::showScan(const QString &root, std::size_t imagesCompared)
{
    m_state->setContent(
        QIcon(QStringLiteral(":/resources/images/FindDuplicateImage48.png")), tr("No Duplicate Files Found"),
        imagesCompared == 0
            ? tr("%1 holds no pictures that can be compared.").arg(root)
            : tr("%1 pictures in %2 were compared.").arg(QString::number(imagesCompared), root));
}

void FindDuplicateImageNoResultFoundForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_back->setFocus();
}
