// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/results/ExistingFileModel.h"

#include "core/SizeText.h"
#include "imaging/DecoderPool.h"
#include "widgets/Controls.h"
#include "widgets/Theme.h"

#include <QApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QIcon>
#include <QPalette>

#include <algorithm>

namespace
{

constexpr int maxDetails = 400;

// Does disk I/O.
ExistingFileModel::Details readDetails(imaging::DecoderPool &decoders, const QString &path,
                                       const core::CancelFlag &cancel)
{
    constexpr int side = 2 * ExistingFileModel::thumbnailSide; // for screens with up to 200 % scaling
    const QFileInfo file(path);
    ExistingFileModel::Details details{{},
                                       core::sizeText(static_cast<quint64>(file.size())) +
                                           QStringLiteral(", ") +
                                           file.lastModified().toString(QStringLiteral("yyyy-MM-dd HH:mm"))};
    if (const auto picture = decoders.picture(path, cancel)) {
        const QSize size = picture->image.size();
        details.thumbnail = picture->image;
        if (size.width() > side || size.height() > side)
            details.thumbnail =
                details.thumbnail.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        details.facts.prepend(QStringLiteral("%1 x %2\n").arg(size.width()).arg(size.height()));
    }
    return details;
}

QString nameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(u'\\') + 1);
}

QString answerText(OverwriteFileDialog::Answer answer)
{
    switch (answer) {
    case OverwriteFileDialog::Answer::Replace:
        return ExistingFileModel::tr("Replace");
    case OverwriteFileDialog::Answer::KeepBoth:
        return ExistingFileModel::tr("Keep both");
    case OverwriteFileDialog::Answer::Skip:
        break;
    }
    return ExistingFileModel::tr("Skip");
}

} // namespace

ExistingFileModel::ExistingFileModel(const QStringList &outputs, const QStringList &sources,
                                     const QStringList &allSources,
                                     std::shared_ptr<imaging::DecoderPool> decoders, QObject *parent)
    : QAbstractTableModel(parent),
      m_outputs(outputs),
      m_sources(sources),
      m_answers(static_cast<std::size_t>(outputs.size()), Answer::Skip),
      m_decoders(std::move(decoders)),
      m_details(maxDetails)
{
    m_thread.setMaxThreadCount(1);
    const auto key = [](const QString &path) { return QString(path).replace(u'/', u'\\').toLower(); };
    QSet<QString> all;
    for (const QString &source : allSources)
        all.insert(key(source));
    for (const QString &output : outputs)
        m_isSource.push_back(all.contains(key(output)));
}

ExistingFileModel::~ExistingFileModel()
{
    m_cancel.set();
    m_thread.clear();
    m_thread.waitForDone();
}

void ExistingFileModel::setAnswer(int row, Answer answer)
{
    m_answers[static_cast<std::size_t>(row)] = answer;
    const QModelIndex changed = index(row, Decision);
    emit dataChanged(changed, changed);
}

int ExistingFileModel::sourceCount() const
{
    return static_cast<int>(std::ranges::count(m_isSource, true));
}

int ExistingFileModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_answers.size());
}

QString ExistingFileModel::path(const QModelIndex &index) const
{
    return index.column() == Existing ? m_outputs[index.row()] : m_sources[index.row()];
}

QString ExistingFileModel::text(const QModelIndex &index) const
{
    if (index.column() == Decision)
        return answerText(m_answers[static_cast<std::size_t>(index.row())]);
    QString text = nameOf(path(index));
    if (index.column() == Existing && isSource(index.row()))
        text += u'\n' + tr("This is one of the sources");
    if (const Details *details = m_details.object(path(index)))
        text += u'\n' + details->facts;
    return text;
}

QVariant ExistingFileModel::data(const QModelIndex &index, int role) const
{
    const bool isFile = index.column() != Decision;
    switch (role) {
    case Qt::DisplayRole:
        return text(index);
    case Qt::ToolTipRole:
        return isFile ? path(index) : QVariant();
    case Qt::AccessibleTextRole:
        return text(index).replace(u'\n', QStringLiteral(", "));
    case Qt::ForegroundRole:
        return index.column() == Existing && isSource(index.row())
                   ? theme::colors(QApplication::palette()).danger
                   : QVariant();
    case Qt::DecorationRole: {
        if (!isFile)
            return {};
        const Details *details = m_details.object(path(index));
        if (!details)
            wish(index);
        return details && !details->thumbnail.isNull() ? QIcon(QPixmap::fromImage(details->thumbnail))
                                                       : controls::image("Image24");
    }
    default:
        return {};
    }
}

QVariant ExistingFileModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    return section == Existing ? tr("There now") : section == New ? tr("To be converted") : tr("Answer");
}

void ExistingFileModel::wish(const QModelIndex &index) const
{
    const QString file = path(index);
    if (m_wished.contains(file))
        return;
    m_wished.insert(file);
    auto *self = const_cast<ExistingFileModel *>(this);
    m_thread.start(
        [self, file, row = index.row(), column = index.column()] {
            const Details details = readDetails(*self->m_decoders, file, self->m_cancel);
            QMetaObject::invokeMethod(self, [self, file, row, column, details] {
                self->m_wished.remove(file);
                self->m_details.insert(file, new Details(details));
                const QModelIndex changed = self->index(row, column);
                emit self->dataChanged(changed, changed);
            });
        },
        ++m_wishes);
}
