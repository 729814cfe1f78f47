// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/PageHead.h"

#include "widgets/PageHeader.h"
#include "widgets/Theme.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace icons
{

PageHead::PageHead(const QString &title, const QString &text, QWidget *parent)
    : QWidget(parent),
      m_row(new QHBoxLayout)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(theme::space);
    auto *header = new PageHeader(PageHeader::Kind::Start, this);
    header->setTitle(title);
    header->setText(text);
    column->addWidget(header);
    column->addLayout(m_row);
}

} // namespace icons
