// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/SecureDeleteReportPage.h"

#include "core/CountText.h"
#include "core/SizeText.h"
#include "platform/Dialogs.h"
#include "widgets/FLTableView.h"
#include "widgets/NoticeBar.h"
#include "widgets/PageHeader.h"
#include "widgets/ResultView.h"
#include "widgets/SearchLine.h"
#include "widgets/Theme.h"

#include <QCheckBox>
#include <QDateTime>
#include <QHeaderView>
#include <QVBoxLayout>

#include <algorithm>

using securedelete::ReportModel;
using securedelete::ShredRecord;
using securedelete::ShredResult;

namespace
{

QString totalsText(const std::vector<ShredRecord> &records)
{
    qsizetype destroyed = 0, left = 0;
    quint64 bytes = 0;
    for (const ShredRecord &record : records) {
        (record.destroyed ? destroyed : left) += 1;
        bytes += record.destroyed ? record.size : 0;
    }
    const QString text = SecureDeleteReportPage::tr("%1 destroyed, %2")
                             .arg(core::countText(destroyed, SecureDeleteReportPage::tr("1 item"),
                                                  SecureDeleteReportPage::tr("%1 items")),
                                  core::sizeText(bytes));
    return left == 0 ? text
                     : SecureDeleteReportPage::tr("%1; %2 left, listed first")
                           .arg(text, core::countText(left, SecureDeleteReportPage::tr("1 item"),
                                                      SecureDeleteReportPage::tr("%1 items")));
}

} // namespace

SecureDeleteReportPage::SecureDeleteReportPage(ShredResult result, const QString &method, QWidget *parent)
    : QWidget(parent),
      m_header(new PageHeader(PageHeader::Kind::Result, this)),
      m_notice(new NoticeBar(this)),
      m_withNames(new QCheckBox(tr("With names"), this)),
      m_list(new ResultTable(QStringLiteral("reportTableView"), tr("Secure delete report"), this))
{
    buildLayout(result, method);
    m_records = std::make_shared<const std::vector<ShredRecord>>(std::move(result.records));
    setFocusProxy(m_list);
    m_list->setModel(new ReportModel(m_records, this));
    m_list->addToolWidget(m_withNames);
    m_list->setSearch(ResultView::Search::Filter);
    setTabOrder(m_withNames, m_list->searchLine());
    setTabOrder(m_list->searchLine(), m_list->view());
    m_list->setEmpty(controls::image("Info16"), tr("Nothing was done"));
    m_list->dropExportKey();
    connect(m_list, &ResultView::told, m_notice,
            [this](NoticeBar::Kind kind, const QString &notice) { m_notice->showNotice(kind, notice); });
    QHeaderView *header = m_list->table()->horizontalHeader();
    header->setSortIndicator(-1, Qt::AscendingOrder);
    header->resizeSection(static_cast<int>(ReportModel::Column::Result), 120);
    header->resizeSection(static_cast<int>(ReportModel::Column::Item), 300);
    header->resizeSection(static_cast<int>(ReportModel::Column::Size), 100);
    header->setStretchLastSection(true);
}

SecureDeleteReportPage::~SecureDeleteReportPage()
{
    m_list->setModel(nullptr);
}

void SecureDeleteReportPage::buildLayout(const ShredResult &result, const QString &method)
{
    const QString end = result.cancelled ? tr("The cleaning process was cancelled.")
                                         : tr("The cleaning process is completed.");
    m_title = tr("Secure Delete, %1, %2").arg(QDateTime::currentDateTime().toString(Qt::ISODate), method);
    m_header->setTitle(end);
    m_header->setText(totalsText(result.records));
    m_header->showBack(tr("Back to the list"));
    m_withNames->setObjectName(QStringLiteral("withNamesCheckBox"));
    m_withNames->setChecked(true);
    m_withNames->setToolTip(tr("Without them, the saved report numbers files and folders and names none"));
    QPushButton *save = m_header->addButton({"saveReportButton", "Save24", tr("Save Report"),
                                             tr("Save the report as text or CSV"), QKeySequence::Save});
    setTabOrder(save, m_withNames);
    connect(save, &QPushButton::clicked, this, &SecureDeleteReportPage::on_saveReportButton_clicked);
    connect(m_header, &PageHeader::back, this, &SecureDeleteReportPage::back);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::pageMargin, theme::spaceWide, theme::pageMargin, theme::pageMargin);
    layout->setSpacing(theme::space);
    layout->addWidget(m_header);
    layout->addWidget(m_notice);
    layout->addWidget(m_list, 1);
}

void SecureDeleteReportPage::showNotice(bool good, const QString &text)
{
    m_notice->showNotice(good ? NoticeBar::Kind::Success : NoticeBar::Kind::Error, text);
}

void SecureDeleteReportPage::on_saveReportButton_clicked()
{
    const QString file = platform::dialogs().chooseFileToSave(
        this, tr("Save Report"), tr("Secure delete report.txt"), tr("Text (*.txt);;CSV (*.csv)"));
    if (!file.isEmpty())
        emit saveRequested(file, {.asCsv = file.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive),
                                  .withNames = m_withNames->isChecked(),
                                  .title = m_title});
}
