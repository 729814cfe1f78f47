// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/ProblemDelegate.h"

#include "SystemInfo/PageModel.h"
#include "widgets/Theme.h"

namespace systeminfo
{

void ProblemDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(problemRole).toBool())
        option->palette.setColor(QPalette::Text, theme::colors(option->palette).danger);
}

} // namespace systeminfo
