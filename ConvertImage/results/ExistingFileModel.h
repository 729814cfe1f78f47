// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/results/OverwriteFileDialog.h"
#include "core/CancelFlag.h"

#include <QAbstractTableModel>
#include <QCache>
#include <QPixmap>
#include <QSet>
#include <QThreadPool>

// The rows of the dialog. Thumbnail, size and date of a file are loaded on a separate thread when a row is
// first painted, latest request first; a few hundred are cached.
class ExistingFileModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Existing, New, Decision, ColumnCount };
    using Answer = OverwriteFileDialog::Answer;
    static constexpr int thumbnailSide = 64;

    ExistingFileModel(const QStringList &outputs, const QStringList &sources, const QStringList &allSources,
                      std::shared_ptr<imaging::DecoderPool> decoders, QObject *parent = nullptr);
    ~ExistingFileModel() override;

    const std::vector<Answer> &answers() const { return m_answers; }
    void setAnswer(int row, Answer answer);
    // Whether the existing file is itself a source of the run.
    bool isSource(int row) const { return m_isSource[static_cast<std::size_t>(row)]; }
    int sourceCount() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : ColumnCount;
    }
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    struct Details {
        QImage thumbnail; // null if it cannot be read
        QString facts;
    };

private:
    QString path(const QModelIndex &index) const;
    QString text(const QModelIndex &index) const;
    void wish(const QModelIndex &index) const;

    QStringList m_outputs;
    QStringList m_sources;
    std::vector<bool> m_isSource;
    std::vector<Answer> m_answers;
    std::shared_ptr<imaging::DecoderPool> m_decoders;
    core::CancelFlag m_cancel;
    mutable QCache<QString, Details> m_details;
    mutable QSet<QString> m_wished;
    mutable int m_wishes = 0; // number of requests so far, used as priority: later ones come first
    mutable QThreadPool m_thread;
};
