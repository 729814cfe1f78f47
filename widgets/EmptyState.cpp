// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/EmptyState.h"

#include "widgets/Theme.h"

#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

namespace
{
constexpr int iconSize = 48;
}

EmptyState::EmptyState(QWidget *parent)
    : QWidget(parent),
      m_icon(new QLabel(this)),
      m_title(new QLabel(this)),
      m_text(new QLabel(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::pageMargin);
    layout->setSpacing(theme::spaceSnug);
    layout->addStretch();
    for (QLabel *label : {m_icon, m_title, m_text}) {
        label->setAlignment(Qt::AlignCenter);
        label->setTextFormat(Qt::PlainText);
        layout->addWidget(label);
    }
    layout->addStretch();
    m_title->setFont(theme::sectionTitle(font()));
    m_title->setWordWrap(true);
    m_text->setWordWrap(true);
    theme::makeMuted(m_text);
}

void EmptyState::setContent(const QIcon &icon, const QString &title, const QString &text)
{
    m_icon->setPixmap(icon.pixmap(QSize(iconSize, iconSize), devicePixelRatio()));
    m_icon->setVisible(!icon.isNull());
    m_title->setText(title);
    m_text->setText(text);
    m_text->setVisible(!text.isEmpty());
}
