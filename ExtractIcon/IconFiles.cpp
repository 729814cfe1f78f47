// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/IconFiles.h"

#include "ExtractIcon/engine/IconListing.h"
#include "platform/KnownFolders.h"
#include "platform/NewFile.h"
#include "platform/ResourceLibrary.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace icons
{

namespace
{

// A usual icon file contains a dozen images of at most 256 KB.
constexpr qint64 maxIconFile = qint64(256) << 20;

class ModuleSource final : public IconSource
{
public:
    explicit ModuleSource(const QString &path) : m_library(path)
    {
        if (!m_library.isLoaded()) // the same text for every module
            qDebug().noquote() << QString::asprintf("Could not load fmapi.dll, Error #%d.\n",
                                                    static_cast<int>(m_library.error()));
    }

    QList<quint32> iconIds() override { return m_library.iconGroupIds(); }
    std::optional<IconDirectory> directory(quint32 id) override
    {
        const std::optional<QByteArrayView> group = m_library.iconGroup(id);
        return group ? parseGroup(*group) : std::nullopt;
    }
    std::optional<QByteArrayView> image(const DirectoryEntry &entry) override
    {
        return m_library.icon(entry.place);
    }

private:
    platform::ResourceLibrary m_library;
};

bool isBelow(const QString &path, const QString &folder)
{
    return !folder.isEmpty() &&
           QDir::fromNativeSeparators(path).startsWith(QDir::fromNativeSeparators(folder) + QLatin1Char('/'),
                                                       Qt::CaseInsensitive);
}

} // namespace

QStringList libraryNames()
{
    return QStringLiteral("imageres.dll shell32.dll ddores.dll pifmgr.dll explorer.exe accessibilitycpl.dll "
                          "moricons.dll mmcndmgr.dll mmres.dll netcenter.dll netshell.dll "
                          "networkexplorer.dll pnidui.dll sensorscpl.dll setupapi.dll wmploc.dll "
                          "wpdshext.dll compstui.dll ieframe.dll dmdskres.dll dsuiext.dll mstscax.dll "
                          "wiashext.dll comres.dll mstsc.exe")
        .split(QLatin1Char(' '));
}

QString libraryPath(const QString &name)
{
    const auto folder = name == QLatin1String("explorer.exe") ? platform::KnownFolder::Windows
                                                              : platform::KnownFolder::System;
    return platform::knownFolder(folder) + QLatin1Char('\\') + name;
}

std::unique_ptr<IconSource> openIcons(const QString &path, const QString &windowsFolder)
{
    QFile file(path);
    QByteArray bytes;
    if (file.open(QIODevice::ReadOnly)) {
        if (file.peek(2) != "MZ" && file.size() <= maxIconFile)
            bytes = file.readAll();
        else
            bytes = file.peek(2);
    }
    file.close();
    if (!bytes.startsWith("MZ"))
        return std::make_unique<IconFileSource>(bytes);
    auto source = std::make_unique<ModuleSource>(path);
    if (!isBelow(path, windowsFolder) || !source->iconIds().isEmpty())
        return source;
    const QString resources = windowsFolder + QStringLiteral("\\SystemResources\\") +
                              QFileInfo(path).fileName() + QStringLiteral(".mun");
    if (QFileInfo::exists(resources))
        return std::make_unique<ModuleSource>(resources);
    return source;
}

std::unique_ptr<IconSource> openIcons(const QString &path)
{
    return openIcons(path, platform::knownFolder(platform::KnownFolder::Windows));
}

QList<IconImage> readImages(const QString &path, quint32 id)
{
    const std::unique_ptr<IconSource> source = openIcons(path);
    const std::optional<StoredIcon> icon = readIcon(*source, id);
    return icon ? decodeIcon(*icon) : QList<IconImage>();
}

QString writeFile(const QString &path, const QByteArray &bytes)
{
    return platform::NewFile::save(path, bytes);
}

} // namespace icons
