// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FileIcons.h"

#include "FindDuplicate/engine/FileRecord.h"
#include "platform/Icons.h"

#include <QHash>
#include <QPixmap>

QIcon FileIcons::icon(const QString &fileName)
{
    static QHash<QString, QIcon> bySuffix;
    const QString suffix = duplicates::suffixOf(fileName).toString().toLower();
    const auto known = bySuffix.constFind(suffix);
    if (known != bySuffix.constEnd())
        return *known;
    const QImage image = platform::systemFileIcon(QStringLiteral("file.") + suffix);
    const QIcon icon = image.isNull() ? missing() : QIcon(QPixmap::fromImage(image));
    bySuffix.insert(suffix, icon);
    return icon;
}

QIcon FileIcons::missing()
{
    return QIcon(QStringLiteral(":/resources/images/Default.png"));
}

QIcon FileIcons::removed()
{
    return QIcon(QStringLiteral(":/resources/images/Removed24.png"));
}
