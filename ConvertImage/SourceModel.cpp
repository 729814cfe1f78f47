// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/SourceModel.h"

#include "core/SizeText.h"
#include "imaging/DecoderPool.h"
#include "widgets/Controls.h"
#include "widgets/FileRowDelegate.h"

#include <QIcon>

#include <algorithm>
#include <map>
#include <utility>

namespace
{

constexpr int maxDetails = 600;
constexpr int thumbnailThreads = 2;
constexpr int thumbnailSide = 96; // pixels, for up to 200 % scaling

QString nameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(u'\\') + 1);
}

QString typeOf(const QString &path)
{
    const qsizetype dot = path.lastIndexOf(u'.');
    return dot < 0 ? QString() : path.mid(dot + 1).toUpper();
}

} // namespace

SourceModel::SourceModel(std::shared_ptr<imaging::DecoderPool> decoders, QObject *parent)
    : QAbstractListModel(parent),
      m_decoders(std::move(decoders)),
      m_details(maxDetails)
{
    m_threads.setMaxThreadCount(thumbnailThreads);
    m_threads.setThreadPriority(QThread::LowPriority);
}

SourceModel::~SourceModel()
{
    m_cancel.set();
    m_threads.clear();
    m_threads.waitForDone();
}

int SourceModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_files.size());
}

QVariant SourceModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const SourceFile &file = m_files[static_cast<std::size_t>(index.row())];
    const Details *details = m_details.object(file.path);
    switch (role) {
    case Qt::DisplayRole:
    case FileRowDelegate::TitleRole:
        return nameOf(file.path);
    case Qt::ToolTipRole:
        return file.path;
    case FileRowDelegate::LinesRole: {
        QString facts = core::sizeText(file.bytes);
        if (details && details->size.isValid())
            facts = tr("%1 x %2, %3").arg(details->size.width()).arg(details->size.height()).arg(facts);
        else if (details)
            facts = tr("Not readable, %1").arg(facts);
        return QStringList{facts};
    }
    case Qt::DecorationRole:
        if (details && !details->thumbnail.isNull())
            return QIcon(details->thumbnail);
        if (!details)
            wish(file.path);
        return controls::image("Image24");
    default:
        return {};
    }
}

void SourceModel::wish(const QString &path) const
{
    if (m_wished.contains(path))
        return;
    m_wished.insert(path);
    auto *self = const_cast<SourceModel *>(this);
    m_threads.start(
        [self, path, decoders = m_decoders] {
            auto examined = std::make_shared<imaging::Examination>();
            // An image too small for a fingerprint has no examination, but still gets a thumbnail.
            if (auto found = decoders->examine(path, {}, self->m_cancel))
                *examined = std::move(*found);
            else if (auto picture = decoders->picture(path, self->m_cancel))
                *examined = {
                    picture->image.width(), picture->image.height(), picture->format, {}, picture->image};
            if (examined->thumbnail.width() > thumbnailSide || examined->thumbnail.height() > thumbnailSide)
                examined->thumbnail = examined->thumbnail.scaled(
                    thumbnailSide, thumbnailSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
            QMetaObject::invokeMethod(self, [self, path, examined] { self->take(path, examined); });
        },
        ++m_wishes);
}

void SourceModel::take(const QString &path, const std::shared_ptr<imaging::Examination> &examined)
{
    m_wished.remove(path);
    const QSize size = examined->thumbnail.isNull() ? QSize() : QSize(examined->width, examined->height);
    m_details.insert(path, new Details{QPixmap::fromImage(examined->thumbnail), size,
                                       QString::fromLatin1(examined->format)});
    const auto row = std::ranges::find(m_files, path, &SourceFile::path);
    if (row == m_files.end())
        return;
    const QModelIndex changedIndex = index(static_cast<int>(row - m_files.begin()));
    emit dataChanged(changedIndex, changedIndex);
}

int SourceModel::add(const std::vector<SourceFile> &files)
{
    std::vector<SourceFile> fresh;
    for (const SourceFile &file : files) {
        const QString key = file.path.toLower();
        if (m_keys.contains(key))
            continue;
        m_keys.insert(key);
        fresh.push_back(file);
    }
    if (fresh.empty())
        return 0;
    beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(fresh.size()) - 1);
    m_files.insert(m_files.end(), fresh.begin(), fresh.end());
    endInsertRows();
    emit changed();
    return static_cast<int>(fresh.size());
}

void SourceModel::remove(QModelIndexList rows)
{
    if (rows.isEmpty())
        return;
    std::vector<bool> gone(m_files.size(), false);
    for (const QModelIndex &row : std::as_const(rows)) {
        gone[static_cast<std::size_t>(row.row())] = true;
        m_keys.remove(m_files[static_cast<std::size_t>(row.row())].path.toLower());
        m_details.remove(m_files[static_cast<std::size_t>(row.row())].path);
    }
    beginResetModel();
    std::size_t at = 0;
    std::erase_if(m_files, [&gone, &at](const SourceFile &) { return bool(gone[at++]); });
    endResetModel();
    emit changed();
}

void SourceModel::clear()
{
    beginResetModel();
    m_files.clear();
    m_keys.clear();
    m_details.clear();
    endResetModel();
    emit changed();
}

void SourceModel::sortBy(Order order)
{
    emit layoutAboutToBeChanged();
    const QModelIndexList kept = persistentIndexList(); // keeps the selection
    QStringList keptPaths;
    for (const QModelIndex &index : kept)
        keptPaths.append(path(index));
    const auto byName = [](const SourceFile &one, const SourceFile &other) {
        return QString::compare(nameOf(one.path), nameOf(other.path), Qt::CaseInsensitive) < 0;
    };
    std::ranges::stable_sort(m_files, byName);
    if (order == Order::Type)
        std::ranges::stable_sort(m_files, {}, [](const SourceFile &file) { return typeOf(file.path); });
    else if (order == Order::Size)
        std::ranges::stable_sort(m_files, std::ranges::greater(), &SourceFile::bytes);
    else if (order == Order::Date)
        std::ranges::stable_sort(m_files, {}, &SourceFile::lastWriteTime);
    QHash<QString, int> rows;
    for (int row = 0; row < rowCount(); ++row)
        rows.insert(path(index(row)), row);
    QModelIndexList moved;
    for (const QString &keptPath : std::as_const(keptPaths))
        moved.append(index(rows.value(keptPath)));
    changePersistentIndexList(kept, moved);
    emit layoutChanged();
    emit changed();
}

QString SourceModel::path(const QModelIndex &index) const
{
    return index.isValid() && index.row() < rowCount() ? m_files[static_cast<std::size_t>(index.row())].path
                                                       : QString();
}

QStringList SourceModel::paths() const
{
    QStringList all;
    for (const SourceFile &file : m_files)
        all.append(file.path);
    return all;
}

QHash<QString, QString> SourceModel::subfolders() const
{
    QHash<QString, QString> all;
    for (const SourceFile &file : m_files) {
        if (!file.subfolder.isEmpty())
            all.insert(file.path, file.subfolder);
    }
    return all;
}

quint64 SourceModel::totalBytes() const
{
    quint64 total = 0;
    for (const SourceFile &file : m_files)
        total += file.bytes;
    return total;
}

QString SourceModel::formats() const
{
    constexpr int named = 3;
    std::map<QString, int> counts;
    for (const SourceFile &file : m_files)
        ++counts[typeOf(file.path)];
    std::vector<std::pair<QString, int>> byCount(counts.begin(), counts.end());
    std::ranges::stable_sort(byCount, std::ranges::greater(), &std::pair<QString, int>::second);
    QStringList names;
    for (std::size_t i = 0; i < byCount.size() && i < named; ++i)
        names.append(byCount[i].first);
    const QString list = names.join(QStringLiteral(", "));
    const int more = static_cast<int>(byCount.size()) - static_cast<int>(names.size());
    return more > 0 ? tr("%1 and %2 more").arg(list).arg(more) : list;
}
