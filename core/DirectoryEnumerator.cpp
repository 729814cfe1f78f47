// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/DirectoryEnumerator.h"

#include <bit>

namespace core
{

void DirectoryListing::add(const DirectoryEntry &entry)
{
    Record record;
    record.nameOffset = m_names.size();
    record.nameLength = static_cast<quint32>(entry.name.size());
    record.attributes = entry.attributes;
    record.reparseTag = entry.reparseTag;
    record.size = entry.size;
    record.creationTime = entry.creationTime;
    record.lastAccessTime = entry.lastAccessTime;
    record.lastWriteTime = entry.lastWriteTime;
    m_names.insert(m_names.end(), entry.name.utf16(), entry.name.utf16() + entry.name.size());
    m_records.push_back(record);
}

void DirectoryListing::clear()
{
    m_names.clear();
    m_records.clear();
    readable = false;
    brokenOff = false;
}

void DirectoryListing::assign(const DirectoryListing &other)
{
    m_names.reserve(std::bit_ceil(other.m_names.size()));
    m_records.reserve(std::bit_ceil(other.m_records.size()));
    m_names = other.m_names;
    m_records = other.m_records;
    readable = other.readable;
    brokenOff = other.brokenOff;
}

DirectoryEntry DirectoryListing::at(std::size_t index) const
{
    const Record &record = m_records[index];
    DirectoryEntry entry;
    entry.name = QStringView(m_names.data() + record.nameOffset, qsizetype{record.nameLength});
    entry.attributes = record.attributes;
    entry.reparseTag = record.reparseTag;
    entry.size = record.size;
    entry.creationTime = record.creationTime;
    entry.lastAccessTime = record.lastAccessTime;
    entry.lastWriteTime = record.lastWriteTime;
    return entry;
}

} // namespace core
