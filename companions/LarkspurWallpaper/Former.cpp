// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/LarkspurWallpaper/Former.h"

#include "automation/engine/Texts.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using automation::tr;

namespace wallpaper
{

namespace
{

const QString positionName = QStringLiteral("position");
const QString slideshowName = QStringLiteral("slideshow");
const QString imagesName = QStringLiteral("pictures");
const QString pathName = QStringLiteral("path");
const QString copyName = QStringLiteral("copy");

// The original file, or our copy of it: Windows overwrites the files in its own theme folder.
QString usable(const QJsonObject &entry)
{
    const QString path = entry.value(pathName).toString();
    const QString copy = entry.value(copyName).toString();
    if (path.isEmpty())
        return {};
    const bool ofWindows =
        path.contains(QLatin1StringView("\\Microsoft\\Windows\\Themes\\"), Qt::CaseInsensitive);
    return (ofWindows || !QFileInfo(path).isFile()) && !copy.isEmpty() ? copy : path;
}

QStringList filesOf(const QJsonObject &pictures)
{
    QStringList files;
    for (const QJsonValue &entry : pictures)
        files += {entry[pathName].toString(), entry[copyName].toString()};
    return files;
}

} // namespace

QStringList Former::monitors() const
{
    const QStringList found = m_desktop.monitors();
    return found.isEmpty() ? QStringList{QString()} : found;
}

bool Former::note()
{
    QJsonObject note = QJsonDocument::fromJson(m_folder.read(file)).object();
    QJsonObject pictures = note.value(imagesName).toObject();
    const QStringList formerFiles = filesOf(pictures);
    bool changed = false, showsOurs = false;
    for (const QString &monitor : monitors()) {
        const QString path = m_desktop.picture(monitor);
        if (m_folder.holds(path)) {
            showsOurs = true;
            continue;
        }
        pictures.insert(
            monitor,
            QJsonObject{{pathName, path}, {copyName, path.isEmpty() ? QString() : m_folder.preserve(path)}});
        changed = true;
    }
    if (!changed)
        return true;
    note.insert(imagesName, pictures);
    // These apply to all monitors. They are only stored if no monitor shows one of our images, since
    // otherwise they are our own settings (for example after a monitor was added).
    if (!showsOurs || !note.contains(positionName)) {
        note.insert(positionName, m_desktop.position());
        note.insert(slideshowName, m_desktop.slideshowFolder());
    }
    if (!m_folder.write(file, QJsonDocument(note).toJson()))
        return false;
    const QStringList needed = filesOf(pictures);
    for (const QString &before : formerFiles) {
        if (!needed.contains(before, Qt::CaseInsensitive))
            m_folder.removePreserved(before);
    }
    return true;
}

QString Former::restore(bool &done)
{
    done = true;
    const QJsonObject note = QJsonDocument::fromJson(m_folder.read(file)).object();
    const QJsonObject pictures = note.value(imagesName).toObject();
    if (pictures.isEmpty())
        return tr("there was nothing to put back");
    int restored = 0, left = 0;
    for (const QString &monitor : monitors()) {
        if (!m_folder.holds(m_desktop.picture(monitor))) {
            ++left;
            continue;
        }
        // A monitor that was added later gets the wallpaper of another one.
        const QJsonValue entry = pictures.contains(monitor) ? pictures.value(monitor) : *pictures.begin();
        if (m_desktop.setPicture(monitor, usable(entry.toObject())))
            ++restored;
        else
            done = false;
    }
    if (!done)
        return tr("Windows refused the former wallpaper");
    if (restored > 0) {
        m_desktop.setPosition(note.value(positionName).toInt(-1));
        const QString slideshow = note.value(slideshowName).toString();
        if (!slideshow.isEmpty())
            m_desktop.setSlideshowFolder(slideshow);
    }
    m_folder.remove(file);
    return restored == 0 ? tr("the wallpaper that you have chosen since stays")
           : left > 0    ? tr("the former wallpaper is back where you have not chosen another since")
                         : tr("the former wallpaper is back");
}

} // namespace wallpaper
