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
    QString subfolder = {};    // from the folder that was added, with its name: "Holiday\\day 1"
};
Q_DECLARE_METATYPE(std::vector<SourceFile>)

// The pictures to convert, in the order in which they will be. Thumbnails are made by a few threads when a
// row is painted for the first time, the latest wish first; a few hundred are kept.
class SourceModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum class Order { Name, Type, Size, Date };

    explicit SourceModel(std::shared_ptr<imaging::DecoderPool> decoders, QObject *parent = nullptr);
    ~SourceModel() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    // Files that are in the list already are passed over. Returns how many were added.
    int add(const std::vector<SourceFile> &files);
    void remove(QModelIndexList rows);
    void clear();
    void sortBy(Order order);

    QString path(const QModelIndex &index) const;
    QStringList paths() const;
    // Of those that came with a folder: where they lie in it, by path.
    QHash<QString, QString> subfolders() const;
    quint64 totalBytes() const;
    // "JPG, PNG and 2 more": by the names of the files.
    QString formats() const;

signals:
    void changed(); // rows came or went, or changed their places

private:
    struct Look {
        QPixmap thumbnail; // null: it cannot be read
        QSize size;
        QString format;
    };

    void wish(const QString &path) const;
    void take(const QString &path, const std::shared_ptr<imaging::Examination> &examined);

    std::vector<SourceFile> m_files;
    QSet<QString> m_keys;
    std::shared_ptr<imaging::DecoderPool> m_decoders;
    core::CancelFlag m_cancel;
    mutable QCache<QString, Look> m_looks;
    mutable QSet<QString> m_wished;
    mutable int m_wishes = 0; // their number so far, by which later ones come first
    mutable QThreadPool m_threads;
};
