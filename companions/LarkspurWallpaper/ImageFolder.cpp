// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/LarkspurWallpaper/ImageFolder.h"

#include "automation/engine/Texts.h"
#include "platform/FileReader.h"
#include "platform/Guard.h"
#include "platform/NewFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

using automation::ShownImage;
using automation::tr;

namespace wallpaper
{

namespace
{

constexpr int jpegQuality = 95;
constexpr qint64 maxPreserved = 256 << 20;

// Names that add() creates; tidy() removes no other files.
const QRegularExpression &ours()
{
    static const QRegularExpression form(
        QStringLiteral("\\A((?:bing|nasa|own)-[0-9a-f-]{1,64})\\.(?:jpg|png|bmp|thumb\\.png)\\z"));
    return form;
}

// The suffix if Windows can show the format directly.
QString shownSuffix(const QByteArray &bytes)
{
    const QString suffix = automation::imageSuffix(bytes);
    return suffix.isEmpty() && bytes.startsWith("BM") ? QStringLiteral("bmp") : suffix;
}

} // namespace

ImageFolder::ImageFolder(QString folder, imaging::DecoderPool &decoders)
    : m_folder(std::move(folder)),
      m_decoders(decoders)
{
    QDir().mkpath(m_folder);
    platform::NewFile::clearLeftovers(m_folder);
}

QString ImageFolder::pathOf(QStringView name) const
{
    return m_folder + u'\\' + name.toString();
}

bool ImageFolder::holds(const QString &path) const
{
    const qsizetype end = path.lastIndexOf(u'\\');
    return path.left(end).compare(m_folder, Qt::CaseInsensitive) == 0 &&
           ours().match(path.mid(end + 1)).hasMatch();
}

// Decoded in a separate process, which a malicious file may crash.
bool ImageFolder::check(const QString &file, const QSize &minSize, ShownImage &picture, QString &problem)
{
    const auto examined = m_decoders.examine(file, {}, m_cancel);
    if (!examined) {
        problem = tr("it is no picture that can be read");
        return false;
    }
    if (examined->width < minSize.width() || examined->height < minSize.height()) {
        problem = tr("it has only %1 by %2 pixels").arg(examined->width).arg(examined->height);
        return false;
    }
    const QString name = picture.key + QStringLiteral(".thumb.png");
    if (place(name, [&](QFile &to) { return examined->thumbnail.save(&to, "PNG"); }))
        picture.thumbnail = pathOf(name);
    return true;
}

std::optional<ShownImage> ImageFolder::find(const QString &key)
{
    for (const QLatin1StringView suffix :
         {QLatin1StringView("jpg"), QLatin1StringView("png"), QLatin1StringView("bmp")}) {
        ShownImage picture{.key = key, .file = pathOf(key + u'.' + suffix)};
        QString problem;
        if (QFileInfo(picture.file).isFile() && check(picture.file, {}, picture, problem))
            return picture;
    }
    return {};
}

std::optional<ShownImage> ImageFolder::add(const QString &key, const QByteArray &bytes, const QSize &minSize,
                                           QString &problem)
{
    ShownImage picture{.key = key};
    const QString suffix = shownSuffix(bytes);
    const QString name = key + u'.' + (suffix.isEmpty() ? QStringLiteral("jpg") : suffix);
    picture.file = pathOf(name);
    bool usable = false;
    const bool placed = place(name, [&](QFile &to) {
        if (to.write(bytes) != bytes.size() || !to.flush())
            return false;
        const QString file = QDir::toNativeSeparators(to.fileName());
        usable = check(file, minSize, picture, problem);
        if (!usable || !suffix.isEmpty())
            return usable;
        const auto decoded = m_decoders.picture(file, m_cancel);
        usable = decoded && to.resize(0) && to.seek(0) &&
                 decoded->image.convertToFormat(QImage::Format_RGB32).save(&to, "JPEG", jpegQuality);
        return usable;
    });
    if (placed)
        return picture;
    if (problem.isEmpty())
        problem = tr("it cannot be stored");
    return {};
}

bool ImageFolder::place(QStringView name, const std::function<bool(QFile &)> &fill) const
{
    platform::NewFile file(pathOf(name));
    QString problem;
    return file.file().isOpen() && fill(file.file()) &&
           file.place(true, problem) == platform::NewFile::Placed::Done;
}

QByteArray ImageFolder::read(QStringView name) const
{
    QFile file(pathOf(name));
    return file.open(QIODevice::ReadOnly) ? file.read(automation::maxJobFileBytes) : QByteArray();
}

bool ImageFolder::write(QStringView name, const QByteArray &bytes) const
{
    return place(name, [&](QFile &to) { return to.write(bytes) == bytes.size(); });
}

void ImageFolder::remove(QStringView name) const
{
    platform::eraseOwn(m_folder, pathOf(name));
}

QString ImageFolder::preserve(const QString &file) const
{
    const auto from = platform::openShared(file);
    if (!from || from->size() > maxPreserved)
        return {};
    const QByteArray bytes = from->readAll();
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).left(8).toHex();
    // Windows' own copy has no suffix, and is a JPEG.
    const QString known = shownSuffix(bytes);
    const QString suffix = known.isEmpty() ? QFileInfo(file).suffix() : known;
    const QString name =
        QStringLiteral("former-%1.%2")
            .arg(QString::fromLatin1(hash), suffix.isEmpty() ? QStringLiteral("jpg") : suffix);
    return write(name, bytes) ? pathOf(name) : QString();
}

void ImageFolder::removePreserved(const QString &file) const
{
    const QString name = file.mid(file.lastIndexOf(u'\\') + 1);
    if (name.startsWith(QLatin1StringView("former-")) && pathOf(name).compare(file, Qt::CaseInsensitive) == 0)
        remove(name);
}

void ImageFolder::tidy(const QList<ShownImage> &onDesktop)
{
    QStringList kept;
    for (const ShownImage &picture : onDesktop)
        kept.append(picture.key);
    const qsizetype limit = kept.size() + maxKept;
    const QDir folder(m_folder);
    for (const QString &name : folder.entryList(QDir::Files, QDir::Time)) {
        const QRegularExpressionMatch match = ours().match(name);
        if (!match.hasMatch() || kept.contains(match.captured(1)))
            continue;
        if (kept.size() < limit)
            kept.append(match.captured(1));
        else
            remove(name);
    }
}

} // namespace wallpaper
