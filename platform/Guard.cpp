// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Guard.h"

#include "platform/GuardRules.h"
#include "platform/HandleFacts.h"
#include "platform/NtFile.h"
#include "platform/Paths.h"
#include "platform/ProtectedPlaces.h"
#include "platform/Text.h"
#include "platform/Wine.h"

#include <algorithm>

namespace platform
{

namespace
{

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct Opening {
    ACCESS_MASK access;
    ULONG options;
};

Opening openingOf(GuardedFolder::Access access)
{
    constexpr ULONG asItself =
        FILE_OPEN_REPARSE_POINT | FILE_OPEN_FOR_BACKUP_INTENT | FILE_SYNCHRONOUS_IO_NONALERT;
    switch (access) {
    case GuardedFolder::Access::Write:
        return {FILE_GENERIC_WRITE | FILE_READ_ATTRIBUTES,
                asItself | FILE_WRITE_THROUGH | FILE_NON_DIRECTORY_FILE};
    case GuardedFolder::Access::Remove:
        return {DELETE | FILE_READ_ATTRIBUTES | SYNCHRONIZE, asItself};
    case GuardedFolder::Access::Query:
        break;
    }
    return {FILE_READ_ATTRIBUTES | SYNCHRONIZE, asItself};
}

bool isOneComponent(QStringView name)
{
    // A colon would denote a stream of the file.
    return !name.isEmpty() && name != u"." && name != u".." &&
           std::ranges::none_of(name, [](QChar c) { return c == u'\\' || c == u'/' || c == u':'; });
}

ItemKind kindOf(HANDLE file, ULONG attributes)
{
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && isLinkTag(reparseTagOf(file)))
        return ItemKind::Link;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? ItemKind::Folder : ItemKind::File;
}

bool equalTexts(std::wstring_view a, std::wstring_view b)
{
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()),
                                TRUE) == CSTR_EQUAL;
}

std::wstring withSeparator(std::wstring path)
{
    if (!path.ends_with(L'\\'))
        path += L'\\';
    return path;
}

} // namespace

ListedItem ShownItem::listed() const
{
    return {.name = path.mid(path.lastIndexOf(u'\\') + 1),
            .kind = kind,
            .size = size,
            .lastWriteTime = lastWriteTime,
            .identity = identity};
}

// The only place that follows links. Opened without FILE_SHARE_DELETE, so that the folder cannot be replaced.
GuardedRoot::GuardedRoot(const QString &root)
    : m_path(root),
      m_text(withSeparator(apiPath(root))),
      m_folder(CreateFileW(m_text.c_str(), FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES,
                           FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                           FILE_FLAG_BACKUP_SEMANTICS, nullptr))
{
}

GuardedFolder::GuardedFolder(const GuardedRoot &root, const QString &folder)
    : m_path(folder),
      m_folder(CreateFileW(apiPath(folder).c_str(), FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES,
                           FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                           FILE_FLAG_BACKUP_SEMANTICS, nullptr)),
      m_state(m_folder ? check(root) : guardedError(GetLastError()))
{
}

// The final path of the folder must be the final path of the root plus the relative path: then there is no
// link between them. Not every volume supports every form of path (see HeldFile).
Guarded GuardedFolder::check(const GuardedRoot &root)
{
    const std::wstring text = withSeparator(apiPath(m_path));
    if (!root.m_folder || text.size() < root.m_text.size() ||
        !equalTexts(std::wstring_view(text).substr(0, root.m_text.size()), root.m_text))
        return Guarded::Refused;
    using Form = HeldFile::Form;
    for (const Form form : {Form::Drive, Form::Device, Form::DeviceAsOpened}) {
        const std::wstring finalRoot = rawFinalPath(root.m_folder.get(), form);
        m_finalPath = rawFinalPath(m_folder.get(), form);
        if (finalRoot.empty() || m_finalPath.empty())
            continue;
        m_form = form;
        m_finalPath = withSeparator(m_finalPath);
        const std::wstring expected = withSeparator(finalRoot) + text.substr(root.m_text.size());
        return equalTexts(m_finalPath, expected) ? Guarded::Done : Guarded::ThroughLink;
    }
    return Guarded::ThroughLink;
}

GuardedItem GuardedFolder::open(const ListedItem &item, Access access) const
{
    GuardedItem opened;
    opened.m_state = m_state;
    if (m_state != Guarded::Done)
        return opened;
    if (!isOneComponent(item.name)) {
        opened.m_state = Guarded::Refused;
        return opened;
    }
    const Opening opening = openingOf(access);
    const NTSTATUS status =
        openAt(m_folder.get(), item.name, opening.access, shareAll, opening.options, opened.m_file);
    opened.m_state = status < 0 ? guardedStatus(status) : compare(opened.m_file.get(), item, access);
    if (opened.m_state != Guarded::Done) {
        opened.m_file.reset();
        return opened;
    }
    opened.m_folder = m_folder.get();
    opened.m_name = item.name;
    return opened;
}

Guarded GuardedFolder::compare(HANDLE file, const ListedItem &item, Access access) const
{
    const std::optional<QuickFacts> facts = quickFactsOf(file);
    if (!facts)
        return Guarded::Failed;
    // An item that was opened by name in the held folder, and is no link, must be in this folder. Wine
    // however opens the target of a link, and returns the target's facts.
    if (isWine() && !liesHere(file, item.name))
        return Guarded::ThroughLink;
    const Guarded result = judge(item,
                                 {.kind = kindOf(file, facts->attributes),
                                  .attributes = facts->attributes,
                                  .size = facts->size,
                                  .lastWriteTime = facts->lastWriteTime,
                                  .number = item.number ? fileNumberOf(file) : std::nullopt,
                                  .identity = item.identity ? identityOf(file) : std::nullopt},
                                 access);
    if (result != Guarded::Done || access == Access::Query || item.kind != ItemKind::Folder)
        return result;
    const QString path = QString::fromStdWString(rawFinalPath(file, HeldFile::Form::Drive));
    return protectionOf(path.isEmpty() ? m_path + u'\\' + item.name : path, protectedPlaces()) ==
                   Protection::Holds
               ? Guarded::Protected
               : Guarded::Done;
}

std::optional<core::FileIdentity> GuardedFolder::identityOf(const GuardedItem &item) const
{
    return item.state() == Guarded::Done ? identityOf(item.handle()) : std::nullopt;
}

// An item that was opened by name in the held folder, and is no link, is on the folder's volume.
std::optional<core::FileIdentity> GuardedFolder::identityOf(HANDLE file) const
{
    if (!m_identity) {
        const std::optional<core::FileFacts> facts = factsOf(m_folder.get());
        m_identity = facts && facts->identity ? *facts->identity : core::FileIdentity();
    }
    const std::optional<quint64> number = fileNumberOf(file);
    if (number && *m_identity != core::FileIdentity())
        return core::FileIdentity{m_identity->volume, *number};
    const std::optional<core::FileFacts> facts = factsOf(file);
    return facts ? facts->identity : std::nullopt;
}

// Under Wine, only this check protects the target of a link.
bool GuardedFolder::liesHere(HANDLE file, QStringView name) const
{
    wchar_t buffer[1024];
    const DWORD length = GetFinalPathNameByHandleW(file, buffer, static_cast<DWORD>(std::size(buffer)),
                                                   finalPathFlags(m_form));
    std::wstring path;
    std::wstring_view whole(buffer, length);
    if (length == 0)
        return false;
    if (length >= std::size(buffer)) {
        path = rawFinalPath(file, m_form);
        whole = path;
    }
    return whole.size() > m_finalPath.size() &&
           equalTexts(whole.substr(0, m_finalPath.size()), m_finalPath) &&
           equalTexts(whole.substr(m_finalPath.size()),
                      std::wstring_view(reinterpret_cast<const wchar_t *>(name.utf16()),
                                        static_cast<std::size_t>(name.size())));
}

Guarded GuardedFolder::erase(const ListedItem &item) const
{
    return open(item, Access::Remove).erase();
}

// Opened relative to the held file, so no other file can be reached.
FileHandle GuardedItem::openStream(const QString &stream, Guarded &result) const
{
    FileHandle opened;
    const Opening opening = openingOf(GuardedFolder::Access::Write);
    const NTSTATUS status = openAt(m_file.get(), stream, opening.access, shareAll, opening.options, opened);
    result = status < 0 ? guardedStatus(status) : Guarded::Done;
    return opened;
}

Guarded GuardedItem::rename(const QString &name)
{
    if (m_state != Guarded::Done)
        return m_state;
    if (!isOneComponent(name))
        return Guarded::Refused;
    if (name == m_name)
        return Guarded::Done;
    const NTSTATUS status = renameAt(m_file.get(), m_folder, name);
    if (status < 0)
        return guardedStatus(status);
    m_name = name;
    return Guarded::Done;
}

Guarded GuardedItem::erase()
{
    if (m_state != Guarded::Done)
        return m_state;
    const NTSTATUS status = markForRemoval(m_file.get());
    if (status < 0)
        return guardedStatus(status);
    m_file.reset();
    m_state = Guarded::Vanished;
    return Guarded::Done;
}

Guarded GuardedErasure::erase(const ShownItem &item)
{
    const QString folder = item.folder();
    if (!m_root || m_root->path() != item.root) {
        m_folder.reset();
        m_root.emplace(item.root);
    }
    if (!m_folder || m_folder->path() != folder)
        m_folder.emplace(*m_root, folder);
    return m_folder->erase(item.listed());
}

void GuardedErasure::release()
{
    m_folder.reset();
    m_root.reset();
}

std::optional<ShownItem> itemAsItIs(const QString &root, const QString &path)
{
    const std::optional<core::FileFacts> facts = fileFacts(path);
    if (!facts)
        return std::nullopt;
    const bool folder = (facts->attributes & core::AttributeDirectory) != 0;
    return ShownItem{root,
                     path,
                     facts->size,
                     facts->lastWriteTime,
                     facts->identity,
                     folder ? ItemKind::Folder : ItemKind::File};
}

Guarded eraseOwn(const QString &root, const QString &path)
{
    const std::optional<ShownItem> item = itemAsItIs(root, path);
    return item ? GuardedErasure().erase(*item) : Guarded::Vanished;
}

} // namespace platform
