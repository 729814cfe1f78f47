// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <concepts>

namespace core
{

// "1 file" or "12 files"; `many` contains %1 for the number.
template <std::integral Count>
QString countText(Count count, const QString &one, const QString &many)
{
    return count == 1 ? one : many.arg(QString::number(count));
}

} // namespace core
