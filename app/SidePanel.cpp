// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SidePanel.h"

#include "app/ModuleTable.h"
#include "app/PanelButton.h"
#include "widgets/SlimScrollBar.h"
#include "widgets/Theme.h"

#include <QIcon>
#include <QScrollArea>
#include <QVBoxLayout>

namespace
{

constexpr int widest = 180;

} // namespace

SidePanel::SidePanel(const ModuleTable &table, QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("sidePanelWidget"));
    m_contents = new QWidget;
    m_contents->setObjectName(QStringLiteral("scrollAreaWidgetContents"));

    m_home =
        makeButton(QStringLiteral("HomeButton"), tr("Home"), QStringLiteral(":/resources/images/Home48.png"));
    m_order.append(m_home);
    for (const Module *module : table.inPanelOrder()) {
        QToolButton *button =
            makeButton(QLatin1StringView(module->buttonName), module->panelTitle(), module->iconPath());
        m_buttons.insert(module->id, button);
        m_order.append(button);
    }
    m_miscTools = makeButton(QStringLiteral("miscToolsButton"), tr("Miscellaneous Tools"),
                             QStringLiteral(":/resources/images/MiscTools48.png"));
    m_order.append(m_miscTools);

    auto *scrollArea = new QScrollArea;
    scrollArea->setObjectName(QStringLiteral("scrollArea"));
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setVerticalScrollBar(new SlimScrollBar);
    scrollArea->setWidgetResizable(true);
    scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollArea->setFocusPolicy(Qt::NoFocus);
    scrollArea->setWidget(m_contents);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scrollArea);
}

void SidePanel::limitWidth()
{
    setMaximumWidth(widest);
    setMinimumWidth(widest);
}

void SidePanel::layOut()
{
    auto *layout = new QVBoxLayout(m_contents);
    layout->setContentsMargins(theme::spaceTight, theme::spaceTight, theme::spaceTight, theme::spaceTight);
    layout->setSpacing(theme::spaceTight / 2);
    layout->setAlignment(Qt::AlignTop);
    for (QToolButton *button : std::as_const(m_order))
        layout->addWidget(button);
}

void SidePanel::showJob(int id, RunningJobs::State state)
{
    if (auto *button = static_cast<PanelButton *>(m_buttons.value(id)))
        button->showJob(state);
}

QToolButton *SidePanel::makeButton(const QString &name, const QString &text, const QString &icon)
{
    auto *button = new PanelButton(m_contents);
    button->setObjectName(name);
    button->setText(text);
    button->setIcon(QIcon(icon));
    button->setAccessibleName(text.simplified());
    button->setToolTip(text.simplified());
    return button;
}
