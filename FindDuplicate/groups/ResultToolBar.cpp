// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/groups/ResultToolBar.h"

#include "widgets/Controls.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Theme.h"

#include <QToolButton>
#include <QVBoxLayout>

namespace duplicates
{

ResultToolBar::ResultToolBar(const Tips &tips, QWidget *parent)
    : QToolBar(parent),
      m_back(controls::toolButton(
          this, {"backButton", "ArrowLeft24", tr("Back"), tr("Back to the start page (Alt+Left)")}, true)),
      m_open(controls::toolButton(this, {"openButton", "Activate24", tr("Open File"), tips.open}, true)),
      m_explorer(controls::toolButton(
          this, {"explorerButton", "FolderSearch24", tr("Explorer"), tips.explorer}, true)),
      m_recycleBin(controls::toolButton(
          this, {"RecycleBinButton", "RecycleBin24", tr("Move to Recycle Bin"), tips.recycleBin}, true))
{
    setObjectName(QStringLiteral("toolBar"));
    setMovable(false);
    auto *texts = new QWidget(this);
    m_title = new ElidedLabel(texts, Qt::ElideMiddle);
    m_title->setObjectName(QStringLiteral("resultTitleLabel"));
    m_title->setFont(theme::sectionTitle(font()));
    m_totals = new ElidedLabel(texts);
    m_totals->setObjectName(QStringLiteral("resultTotalsLabel"));
    theme::makeMuted(m_totals);
    auto *column = new QVBoxLayout(texts);
    column->setContentsMargins(theme::spaceSnug, 0, theme::spaceSnug, 0);
    column->setSpacing(0);
    column->addWidget(m_title);
    column->addWidget(m_totals);
    texts->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(m_back);
    addWidget(texts);
    for (QToolButton *button : {m_open, m_explorer, m_recycleBin})
        addWidget(button);
}

void ResultToolBar::setTitle(const QString &title)
{
    m_title->setText(title);
}

void ResultToolBar::setTotals(const QString &totals)
{
    m_totals->setText(totals);
}

void ResultToolBar::enable(bool offered, bool removable)
{
    m_open->setEnabled(offered);
    m_explorer->setEnabled(offered);
    m_recycleBin->setEnabled(removable);
}

} // namespace duplicates
