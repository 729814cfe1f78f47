// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/ItemRow.h"

#include "TrackCleaner/TraceTexts.h"
#include "widgets/Controls.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

namespace tracks
{

ItemRow::ItemRow(const CatalogueRow &row, QWidget *parent)
    : QWidget(parent),
      m_item(row.item),
      m_check(new QCheckBox(label(row), this)),
      m_found(new QLabel(this)),
      m_view(controls::pushButton(this, {"", "", tr("View")})),
      m_text(new WrappedLabel(this)),
      m_note(new WrappedLabel(this))
{
    const QString stem = QLatin1String(row.stem);
    m_check->setObjectName(stem + QStringLiteral("CheckBox"));
    m_found->setObjectName(stem + QStringLiteral("Label"));
    m_view->setObjectName(stem + QStringLiteral("Button"));
    m_note->setObjectName(stem + QStringLiteral("Note"));
    m_view->setAccessibleName(tr("View: %1").arg(label(row)));
    m_check->setAccessibleDescription(itemText(row.item));
    m_text->setText(itemText(row.item));
    theme::makeMuted(m_text);
    m_note->hide();
    m_view->setEnabled(false);

    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(theme::space);
    layout->setVerticalSpacing(theme::spaceTight);
    layout->setColumnStretch(1, 1);
    // Aligns the texts with the check box's text.
    layout->setColumnMinimumWidth(0, style()->pixelMetric(QStyle::PM_IndicatorWidth) +
                                         style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing) -
                                         theme::space);
    layout->addWidget(m_check, 0, 0, 1, 2);
    layout->addWidget(m_found, 0, 2);
    layout->addWidget(m_view, 0, 3);
    layout->addWidget(m_text, 1, 1, 1, 3);
    layout->addWidget(m_note, 2, 1, 1, 3);
    connect(m_check, &QCheckBox::toggled, this, &ItemRow::checkedChanged);
    connect(m_view, &QPushButton::clicked, this, [this] { emit viewRequested(m_item); });
}

bool ItemRow::isChecked() const
{
    return m_check->isChecked();
}

void ItemRow::setChecked(bool checked)
{
    m_check->setChecked(checked);
}

void ItemRow::showFound(const QString &text, const QString &note, bool canView)
{
    m_found->setText(text);
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
    m_canView = canView;
    m_view->setEnabled(m_canView && m_check->isEnabled());
}

void ItemRow::setBusy(bool busy)
{
    m_check->setEnabled(!busy);
    m_view->setEnabled(m_canView && !busy);
}

} // namespace tracks
