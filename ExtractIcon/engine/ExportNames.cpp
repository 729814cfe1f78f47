// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/engine/ExportNames.h"

#include <QSet>

#include <algorithm>

namespace icons
{

namespace
{

constexpr qsizetype maxNameLength = 200; // of 255 in the file system; leaves room for size, depth and suffix

} // namespace

QStringList pngNames(const QString &name, const QList<ImageFacts> &images)
{
    QStringList names;
    QSet<QString> given;
    for (const ImageFacts &facts : images) {
        const QString stem = name + QStringLiteral("_%1x%1_%2bits").arg(facts.width).arg(facts.depth);
        QString unique = stem;
        for (int again = 2; given.contains(unique); ++again)
            unique = stem + QStringLiteral(" (%1)").arg(again);
        given.insert(unique);
        names.append(unique + QLatin1String(".png"));
    }
    return names;
}

QString iconName(const QString &name, quint32 id)
{
    return id == 0 ? name + QLatin1String(".ico") : name + QStringLiteral("_%1.ico").arg(id);
}

bool isUsableName(const QString &name)
{
    // Device names need no check, since size and depth, or a number, always follow.
    static const QString forbidden = QStringLiteral("<>:\"/\\|?*");
    return !name.trimmed().isEmpty() && name.size() <= maxNameLength &&
           std::ranges::none_of(name, [](QChar c) { return c.unicode() < 32 || forbidden.contains(c); });
}

} // namespace icons
