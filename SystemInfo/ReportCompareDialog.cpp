// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/ReportCompareDialog.h"

#include "platform/Dialogs.h"
#include "widgets/Controls.h"
#include "widgets/FLTableView.h"
#include "widgets/JobHost.h"
#include "widgets/NoticeBar.h"
#include "widgets/ResultView.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>

using namespace systeminfo;

namespace
{

std::optional<Report> loadReport(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > maxReportBytes)
        return {};
    return readReport(file.read(maxReportBytes));
}

QString kindText(Difference::Kind kind)
{
    switch (kind) {
    case Difference::Kind::Changed:
        return Words::tr("Changed");
    case Difference::Kind::OnlyFirst:
        return Words::tr("Only in the first");
    case Difference::Kind::OnlySecond:
        return Words::tr("Only in the second");
    case Difference::Kind::NotCompared:
        return Words::tr("Not compared");
    case Difference::Kind::Same:
        break;
    }
    return Words::tr("Same");
}

} // namespace

ReportCompareDialog::ReportCompareDialog(QWidget *parent)
    : QDialog(parent),
      m_notice(new NoticeBar(this)),
      m_onlyChanges(new QCheckBox(tr("Only what changed"), this)),
      m_table(new ResultTable(QStringLiteral("differenceTableView"), tr("Differences"), this)),
      m_jobs(new JobHost(this))
{
    setWindowTitle(tr("Compare Two Saved Reports"));
    resize(900, 560);
    buildLayout();
    m_onlyChanges->setObjectName(QStringLiteral("onlyChangesCheckBox"));
    m_onlyChanges->setChecked(true);
    connect(m_onlyChanges, &QCheckBox::toggled, this, &ReportCompareDialog::fill);
    m_table->setSearch(ResultView::Search::Filter);
    // In page order until a header is clicked.
    m_table->table()->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    fill();
}

ReportCompareDialog::~ReportCompareDialog()
{
    m_table->setModel(nullptr);
}

void ReportCompareDialog::buildLayout()
{
    auto *chosen = new QHBoxLayout;
    const QString texts[] = {tr("Choose the First Report ..."), tr("Choose the Second Report ...")};
    const char *names[] = {"firstReportButton", "secondReportButton"};
    for (std::size_t i = 0; i < m_sides.size(); ++i) {
        m_sides[i].button = controls::pushButton(this, {.objectName = names[i], .text = texts[i]});
        connect(m_sides[i].button, &QPushButton::clicked, this, [this, i] { choose(i); });
        chosen->addWidget(m_sides[i].button);
    }
    chosen->addStretch(1);
    chosen->addWidget(m_onlyChanges);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(chosen);
    layout->addWidget(m_notice);
    layout->addWidget(m_table, 1);
    layout->addWidget(buttons);
}

void ReportCompareDialog::choose(std::size_t side)
{
    const QStringList files = platform::dialogs().chooseFilesToOpen(this, m_sides[side].button->text(), {},
                                                                    tr("Saved reports (*.json)"));
    if (files.isEmpty() || m_jobs->isBusy())
        return;
    const QString file = files.first();
    m_jobs->run(
        {}, [file](const core::JobControl &) { return loadReport(file); },
        [this, side, file](auto &job) {
            if (auto result = job.takeResult())
                take(side, file, std::move(*result));
        });
}

void ReportCompareDialog::take(std::size_t side, const QString &file, std::optional<Report> report)
{
    const QString name = QFileInfo(file).fileName();
    if (!report) {
        m_notice->showNotice(NoticeBar::Kind::Error,
                             tr("%1 is not a report that was saved as JSON.").arg(name));
        return;
    }
    m_sides[side].report = std::move(report);
    m_sides[side].button->setText(name);
    compare();
}

void ReportCompareDialog::compare()
{
    if (!m_sides[0].report || !m_sides[1].report)
        return;
    m_differences = systeminfo::compareReports(*m_sides[0].report, *m_sides[1].report);
    if (m_sides[0].report->complete != m_sides[1].report->complete)
        m_notice->showNotice(
            NoticeBar::Kind::Info,
            tr("Serial numbers, names and addresses are in one of the reports only, and not compared."));
    else
        m_notice->hide();
    fill();
}

void ReportCompareDialog::fill()
{
    m_table->setModel(nullptr);
    m_rows.clear();
    m_rows.setHorizontalHeaderLabels({tr("Field"), tr("First"), tr("Second"), tr("Difference")});
    for (const Difference &row : m_differences) {
        const bool isChange = row.kind != Difference::Kind::Same && row.kind != Difference::Kind::NotCompared;
        if (!isChange && m_onlyChanges->isChecked())
            continue;
        m_rows.appendRow({new QStandardItem(row.path.join(QStringLiteral(" \u203a "))),
                          new QStandardItem(row.first), new QStandardItem(row.second),
                          new QStandardItem(kindText(row.kind))});
    }
    const QHeaderView *header = m_table->table()->horizontalHeader();
    if (header->sortIndicatorSection() >= 0)
        m_rows.sort(header->sortIndicatorSection(), header->sortIndicatorOrder());
    const bool both = m_sides[0].report && m_sides[1].report;
    m_table->setEmpty(controls::image("Compare24"),
                      both ? tr("Nothing changed") : tr("Choose two reports that were saved as JSON"));
    m_table->setModel(&m_rows);
    const int widths[] = {330, 200, 200, 120};
    for (int i = 0; i < 4; ++i)
        m_table->table()->setColumnWidth(i, widths[i]);
}
