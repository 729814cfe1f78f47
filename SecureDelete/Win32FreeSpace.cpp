// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/Win32FreeSpace.h"

#include "core/FolderWalk.h"
#include "platform/FileWriter.h"
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

class OpenFile : public Target
{
public:
    explicit OpenFile(QFile &file) : m_file(file) {}
    bool moveTo(quint64 position) override { return m_file.seek(static_cast<qint64>(position)); }
    bool moveBack(quint64 bytes) override { return m_file.seek(m_file.pos() - static_cast<qint64>(bytes)); }
    quint64 write(const char *data, quint64 bytes) override
    {
        return static_cast<quint64>(qMax<qint64>(m_file.write(data, static_cast<qint64>(bytes)), 0));
    }

private:
    QFile &m_file;
};

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
    m_file.close();
    m_file.setFileName(m_path + u'\\' + fileName(number));
    // Unbuffered: what is counted is on its way to the drive.
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return nullptr;
    m_target = std::make_unique<OpenFile>(m_file);
    return m_target.get();
}

bool Win32FreeSpace::removeAll()
{
    m_target.reset();
    m_file.close();
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
    {
        const platform::GuardedRoot root(place);
        const platform::GuardedFolder folder(root, path);
        for (std::size_t index = 0; index < listing.size(); ++index) {
            const core::DirectoryEntry entry = listing.at(index);
            const QString name = entry.name.toString();
            if (!entry.isDirectory() && isOurFile(name))
                folder.erase({name, platform::ItemKind::File, entry.size, entry.lastWriteTime});
        }
    }
    return platform::eraseOwn(place, path) == platform::Guarded::Done;
}

} // namespace securedelete
