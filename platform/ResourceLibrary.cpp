// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ResourceLibrary.h"

#include "platform/Paths.h"

#include <QDir>

namespace platform
{

namespace
{

BOOL CALLBACK collectId(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR parameter)
{
    if (IS_INTRESOURCE(name)) {
        auto &ids = *reinterpret_cast<QList<quint32> *>(parameter);
        ids.append(static_cast<quint32>(reinterpret_cast<ULONG_PTR>(name)));
    }
    return TRUE;
}

// Whether the whole range is readable and in the same mapping as its start.
bool isReadable(const void *data, std::size_t size)
{
    const auto *at = static_cast<const char *>(data);
    const char *const end = at + size;
    const void *mapping = nullptr;
    while (at < end) {
        MEMORY_BASIC_INFORMATION memory;
        if (!VirtualQuery(at, &memory, sizeof memory) || memory.State != MEM_COMMIT ||
            (memory.Protect & (PAGE_NOACCESS | PAGE_GUARD)) != 0)
            return false;
        if (mapping && memory.AllocationBase != mapping)
            return false;
        mapping = memory.AllocationBase;
        at = static_cast<const char *>(memory.BaseAddress) + memory.RegionSize;
    }
    return true;
}

} // namespace

ResourceLibrary::ResourceLibrary(const QString &path)
{
    if (!QDir::isAbsolutePath(path)) {
        m_error = ERROR_BAD_PATHNAME;
        return;
    }
    m_library.reset(LoadLibraryExW(apiPath(path).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
    if (!m_library)
        m_error = GetLastError();
}

QList<quint32> ResourceLibrary::iconGroupIds() const
{
    QList<quint32> ids;
    if (m_library)
        EnumResourceNamesW(m_library.get(), RT_GROUP_ICON, collectId, reinterpret_cast<LONG_PTR>(&ids));
    return ids;
}

std::optional<QByteArrayView> ResourceLibrary::iconGroup(quint32 id) const
{
    return resource(id, RT_GROUP_ICON);
}

std::optional<QByteArrayView> ResourceLibrary::icon(quint32 id) const
{
    return resource(id, RT_ICON);
}

std::optional<QByteArrayView> ResourceLibrary::resource(quint32 id, const wchar_t *type) const
{
    if (!m_library || id > 0xffff)
        return std::nullopt;
    const HRSRC found = FindResourceW(m_library.get(), MAKEINTRESOURCEW(id), type);
    const HGLOBAL loaded = found ? LoadResource(m_library.get(), found) : nullptr;
    const void *data = loaded ? LockResource(loaded) : nullptr;
    const DWORD size = found ? SizeofResource(m_library.get(), found) : 0;
    if (!data || size == 0 || !isReadable(data, size))
        return std::nullopt;
    return QByteArrayView(static_cast<const char *>(data), static_cast<qsizetype>(size));
}

} // namespace platform
