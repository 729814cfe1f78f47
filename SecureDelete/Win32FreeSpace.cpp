// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/Win32FreeSpace.h"

#include "SecureDelete/WriterTarget.h"
#include "core/FolderWalk.h"
#include "platform/Guard.h"
#include "platform/Paths.h"
#include "platform/Win32Enumerator.h"

#include <QDir>
#include <QRegularExpression>

namespace securedelete
{

namespace
{

constexpr QLatin1String folderName{"Fernlight Larkspur Free Space"};

QString fileName(int number)
{
    return QStringLiteral("free space %1.tmp").arg(number, 6, 10, QLatin1Char('0'));
}

bool isOurFile(const QString &name)
{
    static const QRegularExpression ours(QStringLiteral("^free space [0-9]{6}\\.tmp$"));
    return ours.match(name).hasMatch();
}

} // namespace

Win32FreeSpace::Win32FreeSpace(const QString &place)
    : m_place(core::walkRoot(place)),
      m_path(m_place + u'\\' + folderName)
{
}

Win32FreeSpace::~Win32FreeSpace()
{
    removeAll();
}

bool Win32FreeSpace::make()
{
    return removeLeftOver(m_path) && QDir().mkdir(m_path);
}

quint64 Win32FreeSpace::freeBytes()
{
    return platform::freeBytes(m_path);
}

Target *Win32FreeSpace::newFile(int number)
{
    m_target.reset();
    // Write-through: data that is still cached when its file is deleted would never reach the drive.
    m_file.reset(CreateFileW(platform::apiPath(m_path + u'\\' + fileName(number)).c_str(), GENERIC_WRITE, 0,
                             nullptr, CREATE_NEW, FILE_FLAG_WRITE_THROUGH, nullptr));
    if (!m_file)
        return nullptr;
    m_target = std::make_unique<WriterTarget>(platform::FileWriter(m_file.get()));
    return m_target.get();
}

bool Win32FreeSpace::removeAll()
{
    m_target.reset();
    m_file.reset();
    return removeLeftOver(m_path);
}

bool Win32FreeSpace::removeLeftOver(const QString &path)
{
    const qsizetype cut = path.lastIndexOf(u'\\');
    if (cut <= 0 || path.mid(cut + 1) != folderName)
        return false;
    const QString place = path.left(cut);
    if (!platform::fileExists(path))
        return true;
    core::DirectoryListing listing;
    platform::Win32Enumerator().list(path, listing, {});
    for (std::size_t index = 0; index < listing.size(); ++index) {
        const core::DirectoryEntry entry = listing.at(index);
        const QString name = entry.name.toString();
        // eraseOwn() queries the entry itself: the size in the directory listing of a file that was just
        // written may be out of date.
        if (!entry.isDirectory() && isOurFile(name))
            platform::eraseOwn(place, path + u'\\' + name);
    }
    return platform::eraseOwn(place, path) == platform::Guarded::Done;
}

} // namespace securedelete
