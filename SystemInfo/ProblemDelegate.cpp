// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/ProblemDelegate.h"

#include "SystemInfo/PageModel.h"
#include "widgets/Theme.h"

namespace systeminfo
{

namespace
{

constexpr double textContrast = 4.5; // the theme's danger colour is meant for areas and lines, not for text

} // namespace

void ProblemDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(problemRole).toBool())
        option->palette.setColor(QPalette::Text,
                                 theme::readable(theme::colors(option->palette).danger,
                                                 option->palette.color(QPalette::Base), textContrast));
}

} // namespace systeminfo
