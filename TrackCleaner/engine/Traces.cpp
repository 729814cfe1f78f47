// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/Traces.h"

#include <QSet>
#include <QStringBuilder>

#include <cstring>

namespace tracks
{

namespace
{

// Stored UTF-16, up to the first NUL; a trailing odd byte is ignored.
QString storedText(const QByteArray &data)
{
    QString text(data.size() / qsizetype{sizeof(char16_t)}, Qt::Uninitialized);
    std::memcpy(text.data(), data.constData(), static_cast<std::size_t>(text.size()) * sizeof(char16_t));
    const qsizetype end = text.indexOf(QChar::Null);
    return end < 0 ? text : text.left(end);
}

} // namespace

quint32 FileTraces::addFolder(const QString &path, const QString &trustedRoot)
{
    const QString kept(path.constData(), path.size()); // a deep copy: the walk reuses its buffer
    m_folders.push_back({kept, trustedRoot});
    return static_cast<quint32>(m_folders.size() - 1);
}

void FileTraces::add(quint32 folder, const core::DirectoryEntry &entry, Keep keep)
{
    m_records.push_back({.nameOffset = m_names.size(),
                         .size = entry.size,
                         .lastWriteTime = entry.lastWriteTime,
                         .folder = folder,
                         .attributes = entry.attributes,
                         .nameLength = static_cast<quint16>(entry.name.size()),
                         .keep = keep});
    m_names.append(entry.name.utf16(), static_cast<std::size_t>(entry.name.size()));
}

FileTrace FileTraces::at(std::size_t index) const
{
    const Record &record = m_records[index];
    return {.name = QStringView(m_names.data() + record.nameOffset, record.nameLength),
            .folder = record.folder,
            .attributes = record.attributes,
            .size = record.size,
            .lastWriteTime = record.lastWriteTime,
            .keep = record.keep};
}

QString FileTraces::path(std::size_t index) const
{
    const FileTrace trace = at(index);
    return folder(trace.folder) % u'\\' % trace.name;
}

quint64 ItemTraces::sizeOf(std::size_t row) const
{
    return isFile(row) ? files.at(row).size : static_cast<quint64>(valueAt(row).value.data.size());
}

QString ItemTraces::pathOf(std::size_t row) const
{
    if (isFile(row))
        return files.path(row);
    const RegistryTrace &trace = valueAt(row);
    return u"HKEY_CURRENT_USER\\" % trace.key % u'\\' % trace.value.name;
}

bool isLeftOut(const LeftOut &leftOut, Item item, std::size_t row)
{
    const std::vector<bool> &rows = leftOut[indexOf(item)];
    return row < rows.size() && rows[row];
}

bool isChosen(const ScanResult &result, const LeftOut &leftOut, Item item, std::size_t row)
{
    return result[item].keep(row) == Keep::No && !isLeftOut(leftOut, item, row);
}

LeftOut carriedOver(const ScanResult &from, const LeftOut &leftOut, const ScanResult &to)
{
    LeftOut carried;
    for (const CatalogueRow &catalogueRow : catalogue()) {
        const Item item = catalogueRow.item;
        QSet<QString> paths;
        for (std::size_t row = 0; row < leftOut[indexOf(item)].size(); ++row) {
            if (leftOut[indexOf(item)][row])
                paths.insert(from[item].pathOf(row).toLower());
        }
        std::vector<bool> &rows = carried[indexOf(item)];
        for (std::size_t row = 0; !paths.isEmpty() && row < to[item].count(); ++row)
            rows.push_back(paths.contains(to[item].pathOf(row).toLower()));
    }
    return carried;
}

QString valueText(Item item, const RegistryValue &value)
{
    if (isOrderList(value.name))
        return {};
    const bool binaryText = item == Item::SearchHistory || item == Item::RecentFiles;
    if (value.type != RegistryText && !(binaryText && value.type == RegistryBinary))
        return {};
    QString text = storedText(value.data);
    if (item == Item::RunDialog && text.endsWith(u"\\1"))
        text.chop(2);
    return text;
}

bool isOrderList(QStringView valueName)
{
    return valueName.compare(u"MRUList", Qt::CaseInsensitive) == 0 ||
           valueName.compare(u"MRUListEx", Qt::CaseInsensitive) == 0;
}

} // namespace tracks
