// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/results/ConvertResultPage.h"

#include "core/CountText.h"
#include "core/SizeText.h"
#include "platform/Shell.h"
#include "widgets/Controls.h"
#include "widgets/FLTableView.h"
#include "widgets/NoticeBar.h"
#include "widgets/PageHeader.h"
#include "widgets/ResultView.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QHash>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using conversion::FileResult;
using conversion::Outcome;

namespace
{

QString stateText(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Waiting:
        return ConversionResultModel::tr("Not converted");
    case Outcome::Written:
        return ConversionResultModel::tr("Converted");
    case Outcome::Exists:
        return ConversionResultModel::tr("Skipped, exists");
    case Outcome::Failed:
        break;
    }
    return ConversionResultModel::tr("Failed");
}

// Why a file was not written, or what it lacks.
QString reasonText(const FileResult &result)
{
    return result.problem.isEmpty() ? result.note : result.problem;
}

QString sizeOrNothing(qint64 bytes)
{
    return bytes > 0 ? core::sizeText(static_cast<quint64>(bytes)) : QString();
}

QString nameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(u'\\') + 1);
}

} // namespace

void ConversionResultModel::setResults(std::vector<FileResult> results)
{
    beginResetModel();
    m_results = std::move(results);
    endResetModel();
}

int ConversionResultModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_results.size());
}

QVariant ConversionResultModel::data(const QModelIndex &index, int role) const
{
    const FileResult &result = m_results[static_cast<std::size_t>(index.row())];
    if (role == Qt::ToolTipRole)
        return index.column() == Reason   ? reasonText(result)
               : index.column() == Output ? result.output
                                          : result.source;
    if (role == Qt::TextAlignmentRole && (index.column() == SourceSize || index.column() == OutputSize))
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::DecorationRole && index.column() == State)
        return controls::image(result.outcome == Outcome::Failed                             ? "Error16"
                               : result.outcome == Outcome::Written && result.note.isEmpty() ? "Checkmark16"
                                                                                             : "Info16");
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case File:
        return nameOf(result.source);
    case State:
        return stateText(result.outcome);
    case Reason:
        return reasonText(result);
    case SourceSize:
        return sizeOrNothing(result.sourceBytes);
    case OutputSize:
        return sizeOrNothing(result.outputBytes);
    default:
        return result.output;
    }
}

QVariant ConversionResultModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    static const char *const titles[ColumnCount] = {QT_TR_NOOP("Source"),   QT_TR_NOOP("Result"),
                                                    QT_TR_NOOP("Reason"),   QT_TR_NOOP("Size"),
                                                    QT_TR_NOOP("New size"), QT_TR_NOOP("Output")};
    return tr(titles[section]);
}

void ConversionResultModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0)
        return;
    emit layoutAboutToBeChanged();
    const QModelIndexList kept = persistentIndexList(); // keeps the selection
    QStringList keptSources;
    for (const QModelIndex &index : kept)
        keptSources.append(m_results[static_cast<std::size_t>(index.row())].source);
    const auto less = [column](const FileResult &one, const FileResult &other) {
        switch (column) {
        case State:
            return one.outcome < other.outcome;
        case Reason:
            return reasonText(one) < reasonText(other);
        case SourceSize:
            return one.sourceBytes < other.sourceBytes;
        case OutputSize:
            return one.outputBytes < other.outputBytes;
        case Output:
            return one.output < other.output;
        default:
            return QString::compare(nameOf(one.source), nameOf(other.source), Qt::CaseInsensitive) < 0;
        }
    };
    std::ranges::stable_sort(m_results, [&](const FileResult &one, const FileResult &other) {
        return order == Qt::AscendingOrder ? less(one, other) : less(other, one);
    });
    QHash<QString, int> rows;
    for (int row = 0; row < rowCount(); ++row)
        rows.insert(m_results[static_cast<std::size_t>(row)].source, row);
    QModelIndexList moved;
    for (qsizetype i = 0; i < kept.size(); ++i)
        moved.append(index(rows.value(keptSources[i]), kept[i].column()));
    changePersistentIndexList(kept, moved);
    emit layoutChanged();
}

ConvertResultPage::ConvertResultPage(QWidget *parent)
    : QWidget(parent),
      m_header(new PageHeader(PageHeader::Kind::Result, this)),
      m_notice(new NoticeBar(this)),
      m_table(new ResultTable(QStringLiteral("conversionTableView"), tr("Converted pictures"), this)),
      m_model(new ConversionResultModel(this))
{
    m_header->showBack(tr("Back to the pictures"));
    m_again = m_header->addButton(
        {.objectName = "tryAgainButton", .image = "Refresh24", .text = tr("Try the failed ones again")},
        controls::Rank::Primary);
    connect(m_header, &PageHeader::back, this, &ConvertResultPage::back);
    connect(m_again, &QPushButton::clicked, this, &ConvertResultPage::tryAgain);
    m_table->setModel(m_model);
    m_table->setEmpty(controls::image("Info16"), tr("Nothing was converted"));
    m_table->table()->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    const int widths[] = {150, 120, 260, 80, 80}; // the last column takes the rest
    for (int column = 0; column < ConversionResultModel::Output; ++column)
        m_table->table()->setColumnWidth(column, widths[column]);
    m_table->table()->horizontalHeader()->setStretchLastSection(true);
    m_table->table()->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder); // list order
    connect(m_table, &ResultView::told, m_notice,
            [this](NoticeBar::Kind kind, const QString &text) { m_notice->showNotice(kind, text); });
    buildActions();
    auto *page = new QVBoxLayout(this);
    page->setContentsMargins(theme::pageMargin, theme::spaceWide, theme::pageMargin, theme::spaceWide);
    page->setSpacing(theme::space);
    page->addWidget(m_header);
    page->addWidget(m_notice);
    page->addWidget(m_table, 1);
}

void ConvertResultPage::buildActions()
{
    controls::action(m_table,
                     {.objectName = "openAction", .image = "Image24", .text = tr("Open the new picture")},
                     [this] { openOutput(false); });
    controls::action(m_table,
                     {.objectName = "revealAction", .image = "Explorer24", .text = tr("Show it in Explorer")},
                     [this] { openOutput(true); });
    connect(m_table, &ResultView::activated, this, [this] { openOutput(false); });
}

void ConvertResultPage::openOutput(bool inFolder)
{
    const QModelIndex row = m_table->current();
    if (!row.isValid())
        return;
    const FileResult &result = m_model->results()[static_cast<std::size_t>(row.row())];
    const QString path = result.outcome == Outcome::Failed ? result.source : result.output;
    const bool opened =
        inFolder ? platform::shell().revealInExplorer(path) : platform::shell().openFile(path);
    if (!opened)
        m_notice->showNotice(NoticeBar::Kind::Warning, tr("The file cannot be opened: %1").arg(path));
}

void ConvertResultPage::showResults(std::vector<FileResult> results, bool cancelled, qint64 milliseconds)
{
    const auto count = [&results](Outcome outcome) {
        return std::ranges::count(results, outcome, &FileResult::outcome);
    };
    const auto written = count(Outcome::Written);
    const auto failed = count(Outcome::Failed);
    qint64 saved = 0;
    for (const FileResult &result : results)
        saved += result.outputBytes > 0 ? result.sourceBytes - result.outputBytes : 0;
    m_header->setTitle(cancelled    ? tr("Cancelled")
                       : failed > 0 ? tr("Converted, with failures")
                                    : tr("Converted"));
    QStringList totals{core::countText(written, tr("1 picture converted"), tr("%1 pictures converted"))};
    if (failed > 0)
        totals.append(tr("%1 failed").arg(failed));
    if (const auto skipped = count(Outcome::Exists); skipped > 0)
        totals.append(tr("%1 skipped").arg(skipped));
    const auto noted = std::ranges::count_if(results, [](const FileResult &result) {
        return result.outcome == Outcome::Written && !result.note.isEmpty();
    });
    if (noted > 0)
        totals.append(tr("%1 with a remark").arg(noted));
    if (saved > 0)
        totals.append(tr("%1 saved").arg(core::sizeText(static_cast<quint64>(saved))));
    totals.append(tr("%1 s").arg(QString::number(double(milliseconds) / 1000.0, 'f', 1)));
    m_header->setText(totals.join(QStringLiteral(", ")));
    m_again->setVisible(failed > 0 || cancelled);
    m_again->setText(cancelled ? tr("Go on with the others") : tr("Try the failed ones again"));
    m_notice->hide();
    m_model->setResults(std::move(results));
}

void ConvertResultPage::showError(const QString &error)
{
    if (!error.isEmpty())
        m_notice->showNotice(NoticeBar::Kind::Error, error);
}

QStringList ConvertResultPage::failedSources() const
{
    QStringList sources;
    for (const FileResult &result : m_model->results()) {
        if (result.outcome == Outcome::Failed || result.outcome == Outcome::Waiting)
            sources.append(result.source);
    }
    return sources;
}
