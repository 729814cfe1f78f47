// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/results/OverwriteFileDialog.h"
#include "core/CancelFlag.h"

#include <QAbstractTableModel>
#include <QCache>
#include <QPixmap>
#include <QSet>
#include <QThreadPool>

// The rows of the dialog. What a file is (picture, size, date) is read by a thread of its own when a row is
// painted for the first time, the latest wish first; a few hundred are kept.
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
    // The file that is there is one of the run's sources.
    bool isSource(int row) const { return m_isSource[static_cast<std::size_t>(row)]; }
    int sourceCount() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : ColumnCount;
    }
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    struct Look {
        QImage thumbnail; // null: it cannot be read
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
    mutable QCache<QString, Look> m_looks;
    mutable QSet<QString> m_wished;
    mutable int m_wishes = 0; // their number so far, by which later ones come first
    mutable QThreadPool m_thread;
};
