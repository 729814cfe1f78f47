// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/TrackCleanerDetailDialog.h"

#include "TrackCleaner/TraceTexts.h"
#include "TrackCleaner/TracesModel.h"
#include "core/CountText.h"
#include "core/SizeText.h"
#include "widgets/Controls.h"
#include "widgets/FLTableView.h"
#include "widgets/NoticeBar.h"
#include "widgets/ResultView.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

TrackCleanerDetailDialog::TrackCleanerDetailDialog(std::shared_ptr<const tracks::ScanResult> found,
                                                   tracks::Item item, std::vector<bool> leftOut,
                                                   QWidget *parent)
    : QDialog(parent),
      m_found(std::move(found)),
      m_item(item),
      m_model(new TracesModel(m_found, item, std::move(leftOut), this)),
      m_notice(new NoticeBar(this)),
      m_table(new ResultTable(QStringLiteral("trackCleanerDetailTableView"),
                              tracks::label(tracks::catalogue()[tracks::indexOf(item)]), this)),
      m_choice(new QLabel(this))
{
    setObjectName(QStringLiteral("TrackCleanerDetailDialog"));
    setWindowTitle(tr("Results"));
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(theme::space);
    buildTexts(layout);
    buildTable(layout);
    buildButtons(layout);
    resize(1180, 620);
    connect(m_model, &TracesModel::choiceChanged, this, [this] {
        showChoice();
        emit leftOutChanged(m_item, m_model->leftOut());
    });
    showChoice();
}

void TrackCleanerDetailDialog::buildTexts(QVBoxLayout *layout)
{
    auto *title = new QLabel(tracks::label(tracks::catalogue()[tracks::indexOf(m_item)]), this);
    title->setFont(theme::sectionTitle(font()));
    auto *text = new WrappedLabel(this);
    text->setObjectName(QStringLiteral("itemTextLabel"));
    text->setText(tracks::itemText(m_item));
    theme::makeMuted(text);
    layout->addWidget(title);
    layout->addWidget(text);
    const QString note = tracks::noteText(*m_found, m_item);
    if (!note.isEmpty())
        m_notice->showNotice(NoticeBar::Kind::Info, note);
    layout->addWidget(m_notice);
}

void TrackCleanerDetailDialog::buildTable(QVBoxLayout *layout)
{
    m_table->setModel(m_model);
    m_table->setSearch(ResultView::Search::Own);
    m_table->setEmpty(controls::image("Info16"), tr("Nothing was found"));
    FLTableView *view = m_table->table();
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    const QFontMetrics metrics = fontMetrics();
    const auto width = [&](const QString &text) {
        return metrics.horizontalAdvance(text) + 3 * theme::space;
    };
    view->setColumnWidth(TracesModel::Entry, 190);
    view->setColumnWidth(TracesModel::Place, 230);
    view->setColumnWidth(TracesModel::Size, width(QStringLiteral("1000.00 MB")));
    view->setColumnWidth(TracesModel::Time, width(QStringLiteral("2000-00-00 00:00:00")));
    view->setColumnWidth(TracesModel::State, width(tr("kept: needs an administrator")));
    view->horizontalHeader()->setStretchLastSection(true);
    connect(m_table, &ResultView::searched, m_model, &TracesModel::search);
    connect(m_table, &ResultView::told, this,
            [this](NoticeBar::Kind kind, const QString &notice) { m_notice->showNotice(kind, notice); });
    // Space toggles the marks of all selected rows.
    controls::shortcut(view, Qt::Key_Space, [this] {
        const QModelIndexList rows = m_table->selected();
        if (rows.isEmpty())
            return;
        const bool chosen = m_table->current().data(Qt::CheckStateRole).toInt() == Qt::Checked;
        m_model->setChosen(rows, !chosen);
    });
    layout->addWidget(m_table, 1);
}

void TrackCleanerDetailDialog::buildButtons(QVBoxLayout *layout)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceSnug);
    const auto add = [&](const controls::Button &button, auto clicked) {
        QPushButton *added = controls::pushButton(this, button);
        added->setAutoDefault(false);
        connect(added, &QPushButton::clicked, this, clicked);
        row->addWidget(added);
        return added;
    };
    add({"selectAllButton", "", tr("Select All")}, [this] { m_model->setAllChosen(true); });
    add({"selectNoneButton", "", tr("Select None")}, [this] { m_model->setAllChosen(false); });
    m_choice->setObjectName(QStringLiteral("choiceLabel"));
    theme::makeMuted(m_choice);
    row->addWidget(m_choice, 1);
    add({"exportButton", "Export24", tr("Export...")}, [this] { m_table->exportRows(); });
    add({"closeButton", "", tr("Close")}, [this] { accept(); })->setDefault(true);
    layout->addLayout(row);
}

void TrackCleanerDetailDialog::showChoice()
{
    const int count = m_model->chosenCount();
    const QString all = QString::number(m_model->traces().count());
    QString text = tr("%1 of %2 will be cleared").arg(QString::number(count), all);
    if (m_model->chosenBytes() > 0)
        text += QStringLiteral(", ") + core::sizeText(m_model->chosenBytes());
    m_choice->setText(text);
}
