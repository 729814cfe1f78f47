// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/StayedDialog.h"

#include "TrackCleaner/TraceTexts.h"
#include "TrackCleaner/engine/TraceList.h"
#include "widgets/Controls.h"
#include "widgets/FLTableView.h"
#include "widgets/ResultView.h"
#include "widgets/Theme.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

StayedModel::StayedModel(std::shared_ptr<const tracks::ScanResult> found, std::vector<tracks::Stayed> stayed,
                         QObject *parent)
    : QAbstractTableModel(parent),
      m_found(std::move(found)),
      m_stayed(std::move(stayed))
{
}

int StayedModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_stayed.size());
}

int StayedModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(ColumnTotal);
}

QVariant StayedModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    const tracks::Stayed &stayed = m_stayed[static_cast<std::size_t>(index.row())];
    switch (index.column()) {
    case Entry:
        return tracks::entryText(*m_found, stayed.item, stayed.row);
    case Place:
        return tracks::placeText(*m_found, stayed.item, stayed.row);
    default:
        return tracks::outcomeText(stayed.why);
    }
}

QVariant StayedModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Entry ? tr("Entry") : section == Place ? tr("Path or value") : tr("Why it stayed");
}

StayedDialog::StayedDialog(std::shared_ptr<const tracks::ScanResult> found,
                           std::vector<tracks::Stayed> stayed, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("StayedDialog"));
    setWindowTitle(tr("What Stayed"));
    auto *table = new ResultTable(QStringLiteral("stayedTableView"), tr("What stayed and why"), this);
    table->setModel(new StayedModel(std::move(found), std::move(stayed), this));
    table->setSearch(ResultView::Search::Filter);
    table->table()->setSortingEnabled(false);
    table->table()->setColumnWidth(StayedModel::Entry, 240);
    table->table()->setColumnWidth(StayedModel::Place, 300);
    table->table()->horizontalHeader()->setStretchLastSection(true);

    QPushButton *save = controls::pushButton(this, {"exportButton", "Export24", tr("Export...")});
    QPushButton *close = controls::pushButton(this, {"closeButton", "", tr("Close")});
    save->setAutoDefault(false);
    close->setDefault(true);
    connect(save, &QPushButton::clicked, table, &ResultView::exportRows);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(save);
    buttons->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(theme::space);
    layout->addWidget(table, 1);
    layout->addLayout(buttons);
    resize(860, 460);
}
