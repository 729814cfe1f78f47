// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateNoResultFoundForm.h"

#include "widgets/Controls.h"
#include "widgets/EmptyState.h"
#include "widgets/Theme.h"

#include <QIcon>
#include <QPushButton>
#include <QVBoxLayout>

FindDuplicateNoResultFoundForm::FindDuplicateNoResultFoundForm(const QString &details, QWidget *parent)
    : QWidget(parent),
      m_message(new EmptyState(this)),
      m_back(new QPushButton(controls::image("ArrowLeft24"), tr("Back"), this))
{
    m_message->setObjectName(QStringLiteral("noResultLabel"));
    m_message->setContent(controls::image("FileDuplicate48"), tr("No Duplicate Files Found"), details);
    m_message->setAccessibleName(tr("No Duplicate Files Found"));
    m_back->setObjectName(QStringLiteral("backButton"));
    m_back->setShortcut(Qt::ALT | Qt::Key_Left);
    m_back->setToolTip(tr("Back to the start page (Alt+Left)"));
    m_back->setDefault(true);
    connect(m_back, &QAbstractButton::clicked, this, &FindDuplicateNoResultFoundForm::noResult_backToMain);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::pageMargin);
    layout->addStretch(2);
    layout->addWidget(m_message);
    layout->addWidget(m_back, 0, Qt::AlignHCenter);
    layout->addStretch(3);
}

void FindDuplicateNoResultFoundForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_back->setFocus();
}
