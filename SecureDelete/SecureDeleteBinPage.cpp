// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/SecureDeleteBinPage.h"

#include "core/CountText.h"
#include "core/SizeText.h"
#include "widgets/Controls.h"
#include "widgets/FLTableView.h"
#include "widgets/ResultView.h"
#include "widgets/SearchLine.h"
#include "widgets/Theme.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using securedelete::BinModel;
using securedelete::BinReader;
using securedelete::BinRow;

SecureDeleteBinPage::SecureDeleteBinPage(BinReader::BinFolders folders, QWidget *parent)
    : QWidget(parent),
      m_folders(std::move(folders)),
      m_model(new BinModel(this)),
      m_list(new ResultTable(QStringLiteral("binTableView"), tr("Items in the recycle bin"), this)),
      m_refresh(controls::pushButton(this, {"refreshButton", "Refresh24", tr("Refresh"),
                                            tr("Read the recycle bins again"), QKeySequence::Refresh})),
      m_deleteSelected(
          controls::pushButton(this, {"deleteSelectedButton", "Delete24", tr("Delete Selected"),
                                      tr("Overwrite and delete the selected items"), QKeySequence::Delete})),
      // The spelling is deliberate (product wording).
      m_empty(controls::pushButton(this,
                                   {"emptyRecycleBinButton", "", tr("Empty Recycle BIn"),
                                    tr("Overwrite and delete everything in your recycle bins")},
                                   controls::Rank::Primary)),
      m_totals(new QLabel(this))
{
    buildList();
    buildLayout();
    connect(m_refresh, &QPushButton::clicked, this, &SecureDeleteBinPage::refresh);
    connect(m_deleteSelected, &QPushButton::clicked, this, [this] { emit deleteRequested(false); });
    connect(m_empty, &QPushButton::clicked, this, [this] { emit deleteRequested(true); });
    connect(m_list, &ResultView::selectionChanged, this, &SecureDeleteBinPage::enableButtons);
    connect(m_list, &ResultView::told, this, &SecureDeleteBinPage::told);
    enableButtons();
}

void SecureDeleteBinPage::buildLayout()
{
    auto *tools = new QHBoxLayout;
    tools->setSpacing(theme::spaceSnug);
    tools->addWidget(m_refresh);
    tools->addWidget(m_deleteSelected);
    tools->addStretch();
    auto *bottom = new QHBoxLayout;
    bottom->setSpacing(theme::space);
    bottom->addWidget(m_totals, 1);
    bottom->addWidget(m_empty);
    m_totals->setObjectName(QStringLiteral("binTotalsLabel"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, theme::space, 0, 0);
    layout->setSpacing(theme::space);
    layout->addLayout(tools);
    layout->addWidget(m_list, 1);
    layout->addLayout(bottom);
    setTabOrder(m_deleteSelected, m_list->searchLine());
    setTabOrder(m_list->searchLine(), m_list->view());
    setTabOrder(m_list->view(), m_empty);
}

void SecureDeleteBinPage::buildList()
{
    m_list->setModel(m_model);
    m_list->setSearch(ResultView::Search::Filter);
    m_list->setEmpty(controls::image("RecycleBin24"), tr("The recycle bin is empty"));
    QHeaderView *header = m_list->table()->horizontalHeader();
    header->setSortIndicator(-1, Qt::AscendingOrder);
    header->resizeSection(BinModel::Name, 220);
    header->resizeSection(BinModel::Place, 300);
    header->resizeSection(BinModel::Size, 100);
    header->setStretchLastSection(true);
}

SecureDeleteBinPage::~SecureDeleteBinPage()
{
    m_reader.reset();
    m_list->setModel(nullptr);
}

std::vector<BinRow> SecureDeleteBinPage::selectedRows() const
{
    std::vector<BinRow> rows;
    for (const QModelIndex &index : m_list->selected())
        rows.push_back(m_model->rows()[static_cast<std::size_t>(index.row())]);
    return rows;
}

void SecureDeleteBinPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refresh();
}

void SecureDeleteBinPage::refresh()
{
    if (m_reader)
        return;
    m_reader.reset(new BinReader(m_folders));
    connect(m_reader.get(), &BinReader::done, this, &SecureDeleteBinPage::onReaderDone);
    m_reader->start();
    m_totals->setText(tr("Reading the recycle bins ..."));
    enableButtons();
}

void SecureDeleteBinPage::onReaderDone()
{
    const int bins = m_reader->bins();
    m_model->setRows(m_reader->takeRows());
    m_reader.reset();
    quint64 bytes = 0;
    for (const BinRow &row : m_model->rows())
        bytes += row.size;
    m_totals->setText(tr("%1 in %2, %3")
                          .arg(core::countText(m_model->rows().size(), tr("1 item"), tr("%1 items")),
                               core::countText(bins, tr("1 recycle bin"), tr("%1 recycle bins")),
                               core::sizeText(bytes)));
    enableButtons();
}

void SecureDeleteBinPage::enableButtons()
{
    m_refresh->setEnabled(!isReading());
    m_deleteSelected->setEnabled(!isReading() && m_list->view()->selectionModel()->hasSelection());
    m_empty->setEnabled(!isReading() && !m_model->rows().empty());
}
