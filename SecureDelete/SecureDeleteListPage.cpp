// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/SecureDeleteListPage.h"

#include "core/CountText.h"
#include "core/SizeText.h"
#include "platform/Dialogs.h"
#include "widgets/Controls.h"
#include "widgets/FLTableView.h"
#include "widgets/ResultView.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using securedelete::ItemModel;
using securedelete::ItemReader;
using securedelete::ItemTotals;
using securedelete::Remark;

SecureDeleteListPage::SecureDeleteListPage(ItemReader::MediumOf mediumOf, QWidget *parent)
    : QWidget(parent),
      m_mediumOf(std::move(mediumOf)),
      m_model(new ItemModel(this)),
      m_list(new ResultTable(QStringLiteral("itemsTableView"), tr("Files and folders to delete"), this)),
      m_otherNames(new QCheckBox(tr("Also delete files that have other names (hard links)"), this)),
      m_medium(new WrappedLabel(this)),
      m_totals(new QLabel(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, theme::space, 0, 0);
    layout->setSpacing(theme::space);
    buildList();
    buildBottom();
    connect(m_list, &ResultView::selectionChanged, this,
            [this] { m_remove->setEnabled(m_list->view()->selectionModel()->hasSelection()); });
    connect(m_list, &ResultView::told, this, &SecureDeleteListPage::told);
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(m_model, signal, this, &SecureDeleteListPage::showTotals);
    connect(m_model, &QAbstractItemModel::modelReset, this, &SecureDeleteListPage::showTotals);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &SecureDeleteListPage::showTotals);
    setTabOrder(m_clear, m_list->view());
    setTabOrder(m_list->view(), m_otherNames);
    setTabOrder(m_otherNames, m_delete);
    showTotals();
}

SecureDeleteListPage::~SecureDeleteListPage()
{
    m_reader.reset();
    m_list->setModel(nullptr);
}

void SecureDeleteListPage::buildList()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceSnug);
    auto *files = controls::pushButton(
        this, {"addFilesButton", "Add24", tr("Add Files"), tr("Add files to the list"), QKeySequence::Open});
    auto *folder = controls::pushButton(this, {"addFolderButton", "FolderOpen24", tr("Add Folder"),
                                               tr("Add a folder and all that is in it"),
                                               QKeySequence(tr("Ctrl+Shift+O"))});
    m_remove = controls::pushButton(
        this, {"removeButton", "Cancel24", tr("Remove"),
               tr("Remove the selected items from the list; they stay on the drive"), QKeySequence::Delete});
    m_clear = controls::pushButton(this, {"clearButton", "", tr("Clear List"),
                                          tr("Remove everything from the list; nothing is deleted")});
    connect(files, &QPushButton::clicked, this, &SecureDeleteListPage::on_addFilesButton_clicked);
    connect(folder, &QPushButton::clicked, this, &SecureDeleteListPage::on_addFolderButton_clicked);
    connect(m_remove, &QPushButton::clicked, this, &SecureDeleteListPage::on_removeButton_clicked);
    connect(m_clear, &QPushButton::clicked, this, &SecureDeleteListPage::on_clearButton_clicked);
    m_remove->setEnabled(false);
    for (QPushButton *button : {files, folder, m_remove, m_clear})
        row->addWidget(button);
    row->addStretch();
    static_cast<QVBoxLayout *>(layout())->addLayout(row);

    m_list->setModel(m_model);
    m_list->setEmpty(controls::image("Add24"), tr("Nothing to delete yet"),
                     tr("Drop files and folders here, or add them above."));
    constexpr int minListHeight = 112; // room for the empty-list text, or for the header and a few rows
    m_list->setMinimumHeight(minListHeight);
    m_list->table()->showColumns(
        {ItemModel::Name, ItemModel::Folder, ItemModel::Size, ItemModel::Files, ItemModel::Notes});
    QHeaderView *header = m_list->table()->horizontalHeader();
    header->setSortIndicator(-1, Qt::AscendingOrder);
    header->resizeSection(ItemModel::Name, 220);
    header->resizeSection(ItemModel::Folder, 240);
    header->resizeSection(ItemModel::Size, 100);
    header->resizeSection(ItemModel::Files, 70);
    header->setStretchLastSection(true);
    static_cast<QVBoxLayout *>(layout())->addWidget(m_list, 1);
}

void SecureDeleteListPage::buildBottom()
{
    m_medium->setObjectName(QStringLiteral("mediumLabel"));
    theme::makeMuted(m_medium);
    m_otherNames->setObjectName(QStringLiteral("otherNamesCheckBox"));
    m_otherNames->setToolTip(
        tr("Their content is one: overwriting it destroys it under every name. Otherwise such "
           "files are left as they are."));
    m_totals->setObjectName(QStringLiteral("totalsLabel"));
    m_delete = controls::pushButton(
        this, {"deleteButton", "", tr("Delete Securely"), tr("Overwrite and delete everything on the list")},
        controls::Rank::Primary);
    connect(m_delete, &QPushButton::clicked, this, &SecureDeleteListPage::deleteRequested);
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::space);
    row->addWidget(m_totals, 1);
    row->addWidget(m_delete);
    auto *column = static_cast<QVBoxLayout *>(layout());
    column->addWidget(m_medium);
    column->addWidget(m_otherNames);
    column->addLayout(row);
}

bool SecureDeleteListPage::overwritesOtherNames() const
{
    return m_otherNames->isChecked();
}

void SecureDeleteListPage::showMethod(const QString &method)
{
    m_method = method;
    showTotals();
}

void SecureDeleteListPage::addPaths(const QStringList &paths)
{
    m_waiting += paths;
    if (!m_reader)
        readNext();
}

void SecureDeleteListPage::readNext()
{
    if (m_waiting.isEmpty())
        return;
    m_doubles = 0;
    const int firstId = m_nextId;
    m_nextId += static_cast<int>(m_waiting.size());
    m_reader.reset(new ItemReader(std::exchange(m_waiting, {}), firstId, m_mediumOf));
    connect(m_reader.get(), &ItemReader::rowsRead, this, &SecureDeleteListPage::takeRows);
    connect(m_reader.get(), &ItemReader::foldersCounted, m_model, &ItemModel::setCounts);
    connect(m_reader.get(), &ItemReader::done, this, &SecureDeleteListPage::onReaderDone);
    m_reader->start();
    showTotals();
}

void SecureDeleteListPage::takeRows(const std::vector<securedelete::ListRow> &rows)
{
    m_doubles += m_model->add(rows);
}

void SecureDeleteListPage::onReaderDone()
{
    const QStringList refused = m_reader->refused();
    m_reader.reset();
    if (!refused.isEmpty())
        emit told(
            NoticeBar::Kind::Info,
            tr("Not added, since it is a drive or is not there: %1").arg(refused.join(QLatin1String(", "))));
    else if (m_doubles > 0)
        emit told(NoticeBar::Kind::Info,
                  core::countText(m_doubles, tr("One of these items is on the list already."),
                                  tr("%1 of these items are on the list already.")));
    showTotals();
    readNext();
}

void SecureDeleteListPage::on_addFilesButton_clicked()
{
    addPaths(platform::dialogs().chooseFilesToOpen(this, tr("Add Files"), {}, tr("All files (*)")));
}

void SecureDeleteListPage::on_addFolderButton_clicked()
{
    const QString folder = platform::dialogs().chooseFolder(this, tr("Add Folder"));
    if (!folder.isEmpty())
        addPaths({folder});
}

void SecureDeleteListPage::on_removeButton_clicked()
{
    QList<int> ids;
    for (const QModelIndex &index : m_list->selected())
        ids.append(m_model->rows()[static_cast<std::size_t>(index.row())].id);
    m_model->removeIds(ids);
}

void SecureDeleteListPage::on_clearButton_clicked()
{
    m_reader.reset();
    m_waiting.clear();
    m_model->clear();
}

void SecureDeleteListPage::showTotals()
{
    const ItemTotals totals = m_model->totals();
    const bool empty = m_model->rows().empty();
    m_clear->setEnabled(!empty);
    m_delete->setEnabled(!empty && !isReading());
    m_otherNames->setVisible(!empty);
    const QString medium = mediumText(totals);
    m_medium->setText(medium);
    m_medium->setVisible(!medium.isEmpty());
    if (empty)
        m_totals->setText(isReading() ? tr("Reading what was added ...") : m_method);
    else if (isReading())
        m_totals->setText(tr("Counting ..."));
    else
        m_totals->setText(tr("%1, %2, %3")
                              .arg(core::countText(totals.files, tr("1 file"), tr("%1 files")),
                                   core::sizeText(totals.bytes), m_method));
}

// What overwriting cannot reach, as far as it applies to the listed items.
QString SecureDeleteListPage::mediumText(const ItemTotals &totals) const
{
    QStringList sentences;
    if (totals.solidState)
        sentences.append(
            tr("A drive without moving parts, as one of these, keeps old blocks that overwriting does "
               "not reach: only encryption of the whole drive, or the drive's own erase, does."));
    if (totals.remarks.testFlag(Remark::CloudFolder))
        sentences.append(
            tr("A cloud store keeps its own copy of what lies in its folder, and of earlier versions."));
    if (totals.remarks.testFlag(Remark::OtherNames))
        sentences.append(tr("A file with other names is one content under all of them."));
    if (!m_model->rows().empty())
        sentences.append(tr("Restore points and backups made before keep what they hold."));
    return sentences.join(u' ');
}
