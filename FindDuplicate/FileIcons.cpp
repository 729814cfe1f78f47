// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FileIcons.h"

#include "FindDuplicate/engine/FileRecord.h"
#include "platform/Icons.h"
#include "widgets/Controls.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QPointer>

#include <utility>

namespace duplicates
{

namespace
{

// As large as the system's icons, so that a row does not change when its icon arrives.
QIcon emptyIcon()
{
    constexpr int side = 32;
    QPixmap empty(side, side);
    empty.fill(Qt::transparent);
    return empty;
}

} // namespace

FileIcons &FileIcons::instance()
{
    static QPointer<FileIcons> icons;
    if (!icons)
        icons = new FileIcons(QCoreApplication::instance());
    return *icons;
}

QIcon FileIcons::icon(const QString &fileName)
{
    const QString suffix = suffixOf(fileName).toString().toLower();
    const auto known = m_bySuffix.constFind(suffix);
    if (known != m_bySuffix.constEnd())
        return *known;
    m_unknown.append(suffix);
    if (!m_answer.isWaiting())
        ask();
    return *m_bySuffix.insert(suffix, emptyIcon());
}

void FileIcons::ask()
{
    using Images = QHash<QString, QImage>;
    m_answer.ask(
        [suffixes = std::exchange(m_unknown, {})](const core::Asking &asking) {
            Images images;
            for (const QString &suffix : suffixes) {
                if (!asking.isCancelled())
                    images.insert(suffix, platform::systemFileIcon(QStringLiteral("file.") + suffix));
            }
            return images;
        },
        [this](const Images &images) {
            for (const auto &[suffix, image] : images.asKeyValueRange())
                m_bySuffix.insert(suffix, image.isNull() ? missing() : QIcon(QPixmap::fromImage(image)));
            if (!m_unknown.isEmpty())
                ask();
            emit arrived();
        });
}

QIcon FileIcons::missing()
{
    return controls::image("Default");
}

QIcon FileIcons::removed()
{
    return controls::image("Removed24");
}

} // namespace duplicates
