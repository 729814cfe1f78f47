// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/BiggestFilesPage.h"

#include "DiskUsage/BiggestFilesModel.h"
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/FileTable.h"
#include "DiskUsage/PathActions.h"
#include "DiskUsage/Settings.h"
#include "widgets/Controls.h"
#include "widgets/FLTableView.h"
#include "widgets/ResultView.h"
#include "widgets/Theme.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

using namespace diskusage;

namespace
{
constexpr int shortestChoice = 16; // characters
}

BiggestFilesPage::BiggestFilesPage(QWidget *parent)
    : QWidget(parent),
      m_title(new QLabel(tr("20 biggest Files"), this)),
      m_choice(new QComboBox(this)),
      m_table(new ResultTable(QStringLiteral("biggestFilesTableView"), tr("20 biggest Files"), this)),
      m_actions(new PathActions(m_table, [this] { return currentPath(); }))
{
    buildLayout();
    connectAll();
}

BiggestFilesPage::~BiggestFilesPage()
{
    m_table->setModel(nullptr); // one of the lists
}

void BiggestFilesPage::buildLayout()
{
    m_title->setFont(theme::sectionTitle(font()));
    m_choice->setObjectName(QStringLiteral("biggestFilesComboBox"));
    m_choice->setAccessibleName(tr("Folder whose biggest files are shown"));
    m_choice->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_choice->setMinimumContentsLength(shortestChoice); // a long folder name must not widen the window
    m_table->setEmpty(controls::image("Info16"), tr("No files"),
                      tr("This folder holds no file that takes any space."));
    m_table->exportHiddenColumns(); // the size as a number

    auto *line = new QHBoxLayout;
    line->addWidget(m_title);
    line->addStretch();
    line->addWidget(m_choice);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, theme::spaceSnug, 0, 0);
    layout->setSpacing(theme::spaceSnug);
    layout->addLayout(line);
    layout->addWidget(m_table, 1);
}

void BiggestFilesPage::connectAll()
{
    connect(m_choice, &QComboBox::currentIndexChanged, this, &BiggestFilesPage::showList);
    connect(m_actions, &PathActions::failed, this, &BiggestFilesPage::failed);
}

void BiggestFilesPage::setModel(BiggestFilesModel *model, const QString &folder)
{
    m_table->setModel(nullptr);
    m_choice->clear();
    m_lists.clear();
    m_choice->hide();
    if (!model)
        return;
    m_lists.push_back({folder, nullptr, model});
    const QString name = QFileInfo(folder).fileName();
    m_choice->addItem(tr("%1 (20 Biggest Files)").arg(name.isEmpty() ? folder : name));
}

void BiggestFilesPage::addFolder(const QString &folder, const std::vector<BiggestFile> &files)
{
    auto model = std::make_unique<BiggestFilesModel>();
    model->setFiles(files);
    const auto known = std::find_if(m_lists.begin(), m_lists.end(),
                                    [&](const List &list) { return list.own && list.folder == folder; });
    if (known != m_lists.end()) {
        const int index = static_cast<int>(known - m_lists.begin());
        const bool shown = m_table->model() == known->model;
        std::swap(known->own, model);
        known->model = known->own.get();
        if (shown)
            showList(index);
        return;
    }
    BiggestFilesModel *shownModel = model.get();
    m_lists.push_back({folder, std::move(model), shownModel});
    // If two folders have the same name, the second one shows its location.
    QString text = tr("%1 (20 Biggest Files)").arg(QFileInfo(folder).fileName());
    if (m_choice->findText(text) >= 0)
        text = tr("%1 (20 Biggest Files)").arg(folder);
    m_choice->addItem(text);
    m_choice->setItemData(m_choice->count() - 1, folder, Qt::ToolTipRole);
    m_choice->show();
}

void BiggestFilesPage::showList(int index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= m_lists.size())
        return;
    BiggestFilesModel *model = m_lists[static_cast<std::size_t>(index)].model;
    m_table->setModel(model);
    showFileColumns(*m_table->table());
    m_table->table()->sortByColumn(FileSizeText, Qt::DescendingOrder);
    m_table->keepColumns(biggestFilesColumns);
}

BiggestFilesModel *BiggestFilesPage::shownModel() const
{
    return qobject_cast<BiggestFilesModel *>(m_table->model());
}

QString BiggestFilesPage::currentPath() const
{
    const BiggestFilesModel *model = shownModel();
    return model ? model->filePath(m_table->current().row()) : QString();
}
