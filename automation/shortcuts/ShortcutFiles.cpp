// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/shortcuts/ShortcutFiles.h"

#include "platform/FileReader.h"
#include "platform/GuardedText.h"
#include "platform/Icons.h"
#include "platform/KnownFolders.h"
#include "platform/NewFile.h"
#include "platform/Paths.h"
#include "platform/VersionText.h"
#include "platform/Win32Enumerator.h"

#include <QCoreApplication>

#include <algorithm>

namespace automation
{

namespace
{

constexpr quint64 maxBytes = 256 * 1024; // per shortcut; real ones have 2 to 3 KB
constexpr qsizetype maxFound = 2000;
constexpr int maxDepth = 8; // of Start menu folders
const QString ending = QStringLiteral(".lnk");

QString tr(const char *text)
{
    return QCoreApplication::translate("automation", text);
}

QString folderOf(const QString &path)
{
    return path.left(path.lastIndexOf(u'\\'));
}

QStringView fileNameOf(QStringView path)
{
    return path.mid(path.lastIndexOf(u'\\') + 1);
}

QByteArray read(const QString &path)
{
    const auto device = platform::openShared(path);
    return device ? device->read(maxBytes) : QByteArray();
}

// A program counts as existing even if its disk cannot be reached now.
SmartShortcut describe(const platform::ShownItem &item, platform::ShortcutFile file, const QString &starter)
{
    SmartShortcut shortcut;
    shortcut.item = item;
    shortcut.name = fileNameOf(item.path).chopped(ending.size()).toString();
    shortcut.start = parseStart(file.arguments);
    shortcut.file = std::move(file);
    shortcut.starterIsThere = shortcut.file.target.compare(starter, Qt::CaseInsensitive) == 0;
    if (shortcut.start) {
        shortcut.programIsThere = platform::fileExists(shortcut.start->program);
        if (shortcut.programIsThere)
            shortcut.icon = platform::smallIconOf(shortcut.start->program);
    }
    if (shortcut.icon.isNull()) // keeps the names aligned
        shortcut.icon = platform::systemFileIcon(shortcut.file.target);
    return shortcut;
}

class Search
{
public:
    Search(const QString &starter, const core::CancelFlag &cancel, ShortcutSearch &result)
        : m_starter(starter),
          m_cancel(cancel),
          m_result(result)
    {
    }

    void walk(const ShortcutPlace &place, const QString &folder, int depth)
    {
        core::DirectoryListing listing;
        m_enumerator.list(folder, listing, m_cancel);
        if (!listing.readable && depth == 0 && !m_cancel.isSet())
            m_result.unreadable.append(folder);
        for (std::size_t index = 0; index < listing.size() && !m_cancel.isSet(); ++index) {
            const core::DirectoryEntry entry = listing.at(index);
            const QString path = folder + u'\\' + entry.name.toString();
            if (!entry.isDirectory())
                look(place, path, entry);
            else if (place.deep && depth < maxDepth && !entry.mayBeLink())
                walk(place, path, depth + 1);
        }
    }

private:
    void look(const ShortcutPlace &place, const QString &path, const core::DirectoryEntry &entry)
    {
        if (!entry.name.endsWith(ending, Qt::CaseInsensitive) || entry.size > maxBytes ||
            core::isPlaceholder(entry.attributes) || m_result.found.size() >= maxFound)
            return;
        auto file = platform::readShortcut(read(path));
        if (!file || fileNameOf(file->target).compare(starterName, Qt::CaseInsensitive) != 0)
            return;
        const platform::ShownItem item{.root = place.folder,
                                       .path = path,
                                       .size = entry.size,
                                       .lastWriteTime = entry.lastWriteTime,
                                       .identity = {}};
        m_result.found.append(describe(item, std::move(*file), m_starter));
        m_result.found.last().place = place.title;
    }

    platform::Win32Enumerator m_enumerator;
    const QString &m_starter;
    const core::CancelFlag &m_cancel;
    ShortcutSearch &m_result;
};

// Builds the content of a shortcut file. An icon that the user chose is kept.
platform::ShortcutFile contentFor(const ShortcutWish &wish, const QString &starter,
                                  const platform::ShortcutFile &earlier, const QString &earlierProgram)
{
    platform::ShortcutFile file = earlier;
    file.target = starter;
    file.arguments = startText(wish.start);
    file.workingFolder = wish.workingFolder.isEmpty() ? folderOf(wish.start.program) : wish.workingFolder;
    file.description = wish.description;
    file.window = wish.window;
    if (file.iconPath.isEmpty() || file.iconPath.compare(earlierProgram, Qt::CaseInsensitive) == 0) {
        file.iconPath = wish.start.program;
        file.iconIndex = 0;
    }
    return file;
}

QString write(const QString &path, const platform::ShortcutFile &content, const QByteArray &earlier)
{
    const QByteArray bytes =
        content.arguments.isEmpty() ? QByteArray() : platform::shortcutBytes(content, earlier);
    if (bytes.isEmpty())
        return tr("Windows cannot make a shortcut of this.");
    platform::NewFile file(path);
    QString problem;
    file.write(bytes);
    switch (file.place(!earlier.isEmpty(), problem)) {
    case platform::NewFile::Placed::Done:
        return {};
    case platform::NewFile::Placed::NameTaken:
        return tr("There is already a shortcut of this name.");
    case platform::NewFile::Placed::Failed:
        break;
    }
    return problem;
}

// The guarded file is released before its content is replaced, which checks it again.
QString rename(const SmartShortcut &shortcut, const QString &name)
{
    const platform::GuardedFolder folder(platform::GuardedRoot(shortcut.item.root), shortcut.item.folder());
    platform::GuardedItem item = folder.open(shortcut.item.listed(), platform::GuardedFolder::Access::Remove);
    platform::Guarded result = item.state();
    if (result == platform::Guarded::Done && item.name() != name)
        result = item.rename(name);
    if (result == platform::Guarded::NameTaken)
        return tr("There is already a shortcut of this name.");
    return result == platform::Guarded::Done
               ? QString()
               : tr("The shortcut was left as it is: %1.").arg(platform::guardedText(result));
}

} // namespace

QList<ShortcutPlace> shortcutPlaces(const QString &ownFolder)
{
    using platform::KnownFolder;
    QList<ShortcutPlace> places{
        {tr("Desktop"), platform::knownFolder(KnownFolder::Desktop)},
        {tr("Start menu"), platform::knownFolder(KnownFolder::StartMenuPrograms), true},
        {tr("Own folder"), ownFolder}};
    for (ShortcutPlace &place : places) { // handles "C:\\Tools\\" and drive roots
        while (place.folder.endsWith(u'\\'))
            place.folder.chop(1);
    }
    const auto isDouble = [&places](const ShortcutPlace &place) {
        const auto first = std::find_if(places.cbegin(), places.cend(), [&place](const ShortcutPlace &other) {
            return other.folder.compare(place.folder, Qt::CaseInsensitive) == 0;
        });
        return place.folder.isEmpty() || &*first != &place;
    };
    QList<ShortcutPlace> single;
    for (const ShortcutPlace &place : std::as_const(places)) {
        if (!isDouble(place))
            single.append(place);
    }
    return single;
}

ShortcutSearch findSmartShortcuts(const QList<ShortcutPlace> &places, const QString &starter,
                                  const core::CancelFlag &cancel)
{
    ShortcutSearch result;
    Search search(starter, cancel, result);
    for (const ShortcutPlace &place : places)
        search.walk(place, place.folder, 0);
    // The user's own folder may be inside the Start menu.
    std::ranges::sort(result.found, {},
                      [](const SmartShortcut &shortcut) { return shortcut.item.path.toLower(); });
    const auto doubles = std::ranges::unique(
        result.found, {}, [](const SmartShortcut &shortcut) { return shortcut.item.path.toLower(); });
    result.found.erase(doubles.begin(), doubles.end());
    std::ranges::stable_sort(result.found, {},
                             [](const SmartShortcut &shortcut) { return shortcut.name.toLower(); });
    return result;
}

QString makeShortcut(const QString &folder, const ShortcutWish &wish, const QString &starter)
{
    return write(folder + u'\\' + wish.name + ending, contentFor(wish, starter, {}, {}), {});
}

QString changeShortcut(const SmartShortcut &shortcut, const ShortcutWish &wish, const QString &starter)
{
    const QByteArray earlier = read(shortcut.item.path);
    if (earlier.isEmpty())
        return tr("The shortcut cannot be read any more.");
    const QString name = wish.name + ending;
    if (const QString problem = rename(shortcut, name); !problem.isEmpty())
        return problem;
    const QString program = shortcut.start ? shortcut.start->program : QString();
    return write(shortcut.item.folder() + u'\\' + name, contentFor(wish, starter, shortcut.file, program),
                 earlier);
}

ShortcutWish wishFor(const QString &path)
{
    ShortcutWish wish;
    QString description;
    if (path.endsWith(ending, Qt::CaseInsensitive)) {
        if (const auto file = platform::readShortcut(read(path))) {
            wish.start.program = file->target;
            wish.start.arguments = file->arguments;
            wish.workingFolder = file->workingFolder;
            wish.description = file->description;
            wish.window = file->window;
            description = fileNameOf(path).chopped(ending.size()).toString();
        }
    } else {
        wish.start.program = path;
    }
    if (!isStartable(wish.start.program) || !platform::fileExists(wish.start.program) ||
        fileNameOf(wish.start.program).compare(starterName, Qt::CaseInsensitive) == 0)
        return {};
    if (description.isEmpty())
        description = platform::versionText(wish.start.program, u"FileDescription");
    wish.name = proposedName(description, wish.start.program, wish.start.priority);
    return wish;
}

} // namespace automation
