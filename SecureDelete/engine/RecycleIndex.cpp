// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/engine/RecycleIndex.h"

#include <QHash>
#include <QtEndian>

namespace securedelete
{

namespace
{

quint64 number(QByteArrayView bytes, qsizetype offset)
{
    return qFromLittleEndian<quint64>(bytes.data() + offset);
}

// Up to the first NUL. Characters that would break a list line are replaced by a blank.
QString pathAt(QByteArrayView bytes, qsizetype offset, qsizetype maxUnits)
{
    QString path;
    for (qsizetype index = 0; index < maxUnits && offset + 2 * index + 2 <= bytes.size(); ++index) {
        const auto unit = qFromLittleEndian<char16_t>(bytes.data() + offset + 2 * index);
        if (unit == 0)
            break;
        path += unit < u' ' ? QChar(u' ') : QChar(unit);
    }
    return path;
}

} // namespace

std::optional<RemovedItem> parseRecycleIndex(QByteArrayView bytes)
{
    constexpr qsizetype header = 24; // version, size, time
    constexpr qsizetype fixedUnits = 260;
    constexpr qsizetype maxUnits = 32'768;
    if (bytes.size() <= header || bytes.size() > maxIndexSize)
        return std::nullopt;
    RemovedItem item{.size = number(bytes, 8), .removedTime = number(bytes, 16)};
    const quint64 version = number(bytes, 0);
    if (version == 1) {
        if (bytes.size() < header + 2 * fixedUnits)
            return std::nullopt;
        item.originalPath = pathAt(bytes, header, fixedUnits);
    } else if (version == 2) {
        constexpr qsizetype path = header + 4;
        if (bytes.size() <= path)
            return std::nullopt;
        const auto units = qFromLittleEndian<quint32>(bytes.data() + header);
        if (units > maxUnits || path + 2 * static_cast<qsizetype>(units) > bytes.size())
            return std::nullopt;
        item.originalPath = pathAt(bytes, path, units);
    } else {
        return std::nullopt;
    }
    return item.originalPath.isEmpty() ? std::nullopt : std::optional(item);
}

std::vector<BinItem> binItems(const core::DirectoryListing &listing,
                              const std::function<QByteArray(const QString &name)> &read)
{
    std::vector<BinItem> items;
    QHash<QString, std::size_t> byStem; // the part after "$R" or "$I", lower case
    for (std::size_t position = 0; position < listing.size(); ++position) {
        const core::DirectoryEntry entry = listing.at(position);
        const QString name = entry.name.toString();
        if (name.compare(QLatin1String("desktop.ini"), Qt::CaseInsensitive) == 0)
            continue;
        const bool isIndex =
            name.startsWith(QLatin1String("$I"), Qt::CaseInsensitive) && !entry.isDirectory();
        const bool isPart = isIndex || name.startsWith(QLatin1String("$R"), Qt::CaseInsensitive);
        // Anything else is an item of its own.
        const QString stem = isPart ? name.mid(2).toLower() : u'?' + name;
        std::size_t at = byStem.value(stem, items.size());
        if (at == items.size() || !(isIndex ? items[at].indexName : items[at].contentName).isEmpty()) {
            at = items.size();
            items.emplace_back();
            byStem.insert(stem, at);
        }
        BinItem &item = items[at];
        (isIndex ? item.index : item.content) = entry;
        (isIndex ? item.indexName : item.contentName) = name;
        if (isIndex)
            item.removed = parseRecycleIndex(read(name));
    }
    // The names pointed into the listing, which does not outlive this call.
    for (BinItem &item : items)
        item.content.name = item.index.name = {};
    return items;
}

} // namespace securedelete
