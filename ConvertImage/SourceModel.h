// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QAbstractListModel>
#include <QCache>
#include <QHash>
#include <QPixmap>
#include <QSet>
#include <QThreadPool>

#include <memory>
#include <vector>

namespace imaging
{
class DecoderPool;
struct Examination;
} // namespace imaging

struct SourceFile {
    QString path;
    quint64 bytes = 0;
    quint64 lastWriteTime = 0; // FILETIME
    QString subfolder = {};    // relative to the parent of the added folder: "Holiday\\day 1"
};
Q_DECLARE_METATYPE(std::vector<SourceFile>)

// The images to convert, in conversion order. Thumbnails are loaded by a few threads when a row is first
// painted, latest request first; a few hundred are cached.
class SourceModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum class Order { Name, Type, Size, Date };

    explicit SourceModel(std::shared_ptr<imaging::DecoderPool> decoders, QObject *parent = nullptr);
    ~SourceModel() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    // Skips files that are already in the list. Returns how many were added.
    int add(const std::vector<SourceFile> &files);
    void remove(QModelIndexList rows);
    void clear();
    void sortBy(Order order);

    QString path(const QModelIndex &index) const;
    QStringList paths() const;
    // Subfolder by path, for files that were added with a folder.
    QHash<QString, QString> subfolders() const;
    quint64 totalBytes() const;
    // "JPG, PNG and 2 more", by file extension.
    QString formats() const;

signals:
    void changed(); // rows were added, removed or moved

private:
    struct Details {
        QPixmap thumbnail; // null if it cannot be read
        QSize size;
        QString format;
    };

    void wish(const QString &path) const;
    void take(const QString &path, const std::shared_ptr<imaging::Examination> &examined);

    std::vector<SourceFile> m_files;
    QSet<QString> m_keys;
    std::shared_ptr<imaging::DecoderPool> m_decoders;
    core::CancelFlag m_cancel;
    mutable QCache<QString, Details> m_details;
    mutable QSet<QString> m_wished;
    mutable int m_wishes = 0; // number of requests so far, used as priority: later ones come first
    mutable QThreadPool m_threads;
};
