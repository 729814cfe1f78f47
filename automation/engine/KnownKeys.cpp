// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/KnownKeys.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace automation
{

namespace
{

constexpr int ctrl = 1 << static_cast<int>(Modifier::Ctrl);
constexpr int shift = 1 << static_cast<int>(Modifier::Shift);
constexpr int windows = 1 << static_cast<int>(Modifier::Windows);

struct KnownKeys {
    int modifiers;
    const char *keys;
    const char *use;
};

constexpr KnownKeys table[] = {
    {windows, "ABCDEFGHIKLMNOPQRSTUVWXZ0123456789,.;+-",
     QT_TRANSLATE_NOOP("automation", "Windows uses this combination itself.")},
    {windows | shift, "CMRSV0123456789",
     QT_TRANSLATE_NOOP("automation", "Windows uses this combination itself.")},
    {windows | ctrl, "CDFNOQSV0123456789",
     QT_TRANSLATE_NOOP("automation", "Windows uses this combination itself.")},
    {ctrl, "ACFNOPSVWXYZ",
     QT_TRANSLATE_NOOP("automation", "Nearly every program uses this combination (copy, paste, save ...); "
                                     "it would no longer work there.")},
    {shift, "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789",
     QT_TRANSLATE_NOOP("automation",
                       "This is how a capital letter or a sign is typed; it could no longer be.")},
};

} // namespace

QString knownUse(Modifier first, Modifier second, const QString &key)
{
    const int modifiers = (1 << static_cast<int>(first)) | (1 << static_cast<int>(second));
    const auto found = std::find_if(std::begin(table), std::end(table), [&](const KnownKeys &known) {
        return known.modifiers == modifiers && !key.isEmpty() &&
               QLatin1String(known.keys).contains(key.toUpper());
    });
    return found == std::end(table) ? QString() : QCoreApplication::translate("automation", found->use);
}

} // namespace automation
