// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/UnavailablePage.h"

#include "app/ModuleTable.h"
#include "widgets/Theme.h"

#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

namespace
{

constexpr int iconSide = 48;

} // namespace

UnavailablePage::UnavailablePage(const Module &module, QWidget *parent) : FLWidget(parent)
{
    auto *icon = new QLabel;
    icon->setPixmap(QIcon(module.iconPath()).pixmap(QSize(iconSide, iconSide), devicePixelRatio()));
    icon->setAlignment(Qt::AlignCenter);
    auto *title = new QLabel(module.title());
    title->setFont(theme::headline(font()));
    title->setAlignment(Qt::AlignCenter);
    auto *sentence = new QLabel(tr("%1 is not part of this build yet.").arg(module.title()));
    sentence->setObjectName(QStringLiteral("unavailableLabel"));
    sentence->setAlignment(Qt::AlignCenter);
    sentence->setWordWrap(true);
    theme::makeMuted(sentence);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::pageMargin);
    layout->setSpacing(theme::space);
    layout->addStretch(2);
    layout->addWidget(icon);
    layout->addWidget(title);
    layout->addWidget(sentence);
    layout->addStretch(3);
}
