// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageResultsForm.h"

#include "DiskUsage/BiggestFilesPage.h"
#include "DiskUsage/FileTypesPage.h"
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/FoldersPage.h"
#include "DiskUsage/NotCountedPage.h"
#include "core/CountText.h"
#include "core/SizeText.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLTabWidget.h"
#include "widgets/NoticeBar.h"
#include "widgets/PageHeader.h"
#include "widgets/ResultView.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using diskusage::Folder;
using diskusage::ScanResult;

namespace
{

QString secondsText(qint64 milliseconds)
{
    return QString::number(static_cast<double>(milliseconds) / 1000, 'f', 1);
}

} // namespace

DiskUsageResultsForm::DiskUsageResultsForm(QWidget *parent)
    : QWidget(parent),
      m_header(new PageHeader(PageHeader::Kind::Result, this)),
      m_notice(new NoticeBar(this)),
      m_busyBar(new QWidget(this)),
      m_busyText(new ElidedLabel(m_busyBar, Qt::ElideMiddle)),
      m_busyStop(new QPushButton(tr("Cancel"), m_busyBar)),
      m_tabs(new FLTabWidget(this)),
      m_folders(new FoldersPage(this)),
      m_biggest(new BiggestFilesPage(this)),
      m_types(new FileTypesPage(this)),
      m_notCounted(new NotCountedPage(this)),
      m_exporter(new CsvExporter(this))
{
    buildHeader();
    buildTabs();
    buildLayout();
    buildActions();
    connectPages();
}

DiskUsageResultsForm::~DiskUsageResultsForm() = default;

void DiskUsageResultsForm::buildHeader()
{
    m_header->showBack(tr("Back to the start page"));
    m_again =
        m_header->addButton({"scanAgainButton", "Refresh24", tr("Scan Again"), tr("Scan everything again")});
    m_again->setShortcut(Qt::CTRL | Qt::Key_R);
    m_exportButton = m_header->addButton(
        {"exportButton", "Export24", tr("Export"), tr("Export the shown table as CSV (Ctrl+S)")});
    m_busyStop->setObjectName(QStringLiteral("busyCancelButton"));
    m_notice->setObjectName(QStringLiteral("noticeBar"));
}

void DiskUsageResultsForm::buildTabs()
{
    m_tabs->setObjectName(QStringLiteral("resultTabWidget"));
    setFocusProxy(m_folders);
    m_tabs->addTab(m_folders, tr("Folders"));
    m_tabs->addTab(m_biggest, tr("20 biggest Files"));
    m_tabs->addTab(m_types, tr("File Types"));
    m_tabs->addTab(m_notCounted, tr("Not Counted"));
}

void DiskUsageResultsForm::buildLayout()
{
    auto *busy = new QHBoxLayout(m_busyBar);
    busy->setContentsMargins(0, 0, 0, 0);
    busy->addWidget(m_busyText, 1);
    busy->addWidget(m_busyStop);
    m_busyBar->hide();

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::space, theme::space, theme::space, theme::space);
    layout->setSpacing(theme::spaceSnug);
    layout->addWidget(m_header);
    layout->addWidget(m_notice);
    layout->addWidget(m_busyBar);
    layout->addWidget(m_tabs, 1);
}

void DiskUsageResultsForm::buildActions()
{
    // In the folder tree F5 rescans the selected folder; elsewhere it rescans everything.
    auto *everywhereElse = new QAction(this);
    everywhereElse->setShortcut(Qt::Key_F5);
    everywhereElse->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    for (QWidget *page : {static_cast<QWidget *>(m_biggest), static_cast<QWidget *>(m_types),
                          static_cast<QWidget *>(m_notCounted)})
        page->addAction(everywhereElse);
    connect(everywhereElse, &QAction::triggered, m_again, &QAbstractButton::click);
}

void DiskUsageResultsForm::connectPages()
{
    connect(m_header, &PageHeader::back, this, &DiskUsageResultsForm::back);
    connect(m_again, &QAbstractButton::clicked, this, &DiskUsageResultsForm::scanAllAgain);
    connect(m_exportButton, &QAbstractButton::clicked, this, &DiskUsageResultsForm::exportCurrentTable);
    connect(m_busyStop, &QAbstractButton::clicked, this, [this] {
        for (CsvExporter *exporter : exporters())
            exporter->requestStop();
        emit stopFolderScan();
    });
    connect(m_folders, &FoldersPage::scanAgain, this, &DiskUsageResultsForm::scanFolderAgain);
    for (const ResultView *table : {m_biggest->table(), m_notCounted->table()})
        connect(table, &ResultView::told, this,
                [this](NoticeBar::Kind kind, const QString &notice) { showNotice(notice, kind); });
    for (CsvExporter *exporter : exporters()) {
        connect(exporter, &CsvExporter::started, this, [this](const QString &what) {
            m_notice->hide(); // a table may have told so already
            setBusy(true, what);
        });
        connect(exporter, &CsvExporter::ended, this, [this](NoticeBar::Kind kind, const QString &notice) {
            setBusy(false);
            showNotice(notice, kind);
        });
    }
    const auto warn = [this](const QString &message) { showNotice(message, NoticeBar::Kind::Error); };
    connect(m_folders, &FoldersPage::failed, this, warn);
    connect(m_biggest, &BiggestFilesPage::failed, this, warn);
    connect(m_types, &FileTypesPage::failed, this, warn);
    connect(m_notCounted, &NotCountedPage::failed, this, warn);
    connect(m_folders, &FoldersPage::exportTable, this, &DiskUsageResultsForm::exportCurrentTable);
    connect(m_types, &FileTypesPage::exportTable, this, &DiskUsageResultsForm::exportCurrentTable);
    connect(m_types, &FileTypesPage::exportTypes, this,
            [this] { exportTable([this] { return m_types->typesTable(); }); });
}

void DiskUsageResultsForm::showScan(const ScanView &view)
{
    m_view = view;
    m_notice->hide();
    const quint64 total = view.result->folders.front().bytes;
    m_folders->setModel(view.folders, view.fileTypes);
    m_biggest->setModel(view.biggestFiles, view.root);
    m_types->setModel(view.dataFiles, total);
    m_notCounted->setResult(view.result.get());
    m_header->setTitle(view.root);
    m_tabs->setCurrentIndex(0);
    showTotals();
    showNotCounted();
}

void DiskUsageResultsForm::detach()
{
    if (isExporting()) {
        for (CsvExporter *exporter : exporters())
            exporter->abandon();
        setBusy(false);
    }
    m_folders->setModel(nullptr);
    m_biggest->setModel(nullptr);
    m_types->setModel(nullptr);
    m_notCounted->setResult(nullptr);
    m_view = {};
}

void DiskUsageResultsForm::showTotals()
{
    const Folder &root = m_view.folders->rootFolder()->folder();
    QString text =
        tr("%1 in %2 and %3, scanned in %4 seconds")
            .arg(core::sizeText(root.bytes), core::countText(root.files, tr("1 file"), tr("%1 files")),
                 core::countText(root.folders, tr("1 folder"), tr("%1 folders")),
                 secondsText(m_view.milliseconds));
    if (m_view.drive)
        text += tr(". Windows reports %1 used of %2; the sums here are of the sizes of the files.")
                    .arg(core::sizeText(m_view.drive->usedBytes()), core::sizeText(m_view.drive->totalBytes));
    m_header->setText(text);
}

void DiskUsageResultsForm::showNotCounted()
{
    const int page = m_tabs->indexOf(m_notCounted);
    const int count = m_notCounted->model().rowCount();
    m_tabs->setTabVisible(page, count > 0);
    m_tabs->setTabText(page, tr("Not Counted (%1)").arg(QString::number(count)));
}

void DiskUsageResultsForm::folderReplaced(const QString &path, const Folder &before, const ScanResult &now)
{
    const Folder &after = now.folders.front();
    const QString less = core::sizeText(before.bytes - qMin(before.bytes, after.bytes));
    const QString more = core::sizeText(after.bytes - qMin(before.bytes, after.bytes));
    const QString change = after.bytes == before.bytes  ? tr("as before")
                           : after.bytes < before.bytes ? tr("%1 less than before").arg(less)
                                                        : tr("%1 more than before").arg(more);
    m_biggest->addFolder(path, now.biggestFiles);
    m_folders->refresh();
    m_types->refresh(m_view.folders->rootFolder()->folder().bytes);
    m_notCounted->replaceFolder(path, now);
    showTotals();
    showNotCounted();
    showNotice(tr("%1 was scanned again: %2, %3. The 20 biggest files of the whole scan are as they were.")
                   .arg(path, core::sizeText(after.bytes), change));
}

void DiskUsageResultsForm::showNotice(const QString &text, NoticeBar::Kind kind)
{
    m_notice->showNotice(kind, text);
}

void DiskUsageResultsForm::showDrive(const platform::Drive &drive)
{
    if (!m_view.result || !drive.ready || drive.root.compare(m_view.root, Qt::CaseInsensitive) != 0)
        return;
    m_view.drive = drive;
    showTotals();
}

void DiskUsageResultsForm::setBusy(bool busy, const QString &text)
{
    if (busy && !m_busyBar->isVisible())
        m_focusBefore = QApplication::focusWidget();
    m_busyText->setText(text);
    m_busyBar->setVisible(busy);
    for (QWidget *button : {static_cast<QWidget *>(m_header->backButton()), static_cast<QWidget *>(m_again),
                            static_cast<QWidget *>(m_exportButton)})
        button->setEnabled(!busy);
    // Restores the focus, which a widget loses when it is disabled or hidden.
    if (!busy && m_focusBefore && isAncestorOf(m_focusBefore))
        m_focusBefore->setFocus();
}

std::array<CsvExporter *, 3> DiskUsageResultsForm::exporters() const
{
    return {m_exporter, m_biggest->table()->exporter(), m_notCounted->table()->exporter()};
}

bool DiskUsageResultsForm::isExporting() const
{
    return std::ranges::any_of(exporters(), &CsvExporter::isRunning);
}

void DiskUsageResultsForm::exportCurrentTable()
{
    const QWidget *page = m_tabs->currentWidget();
    if (page == m_biggest)
        m_biggest->table()->exportRows();
    else if (page == m_notCounted)
        m_notCounted->table()->exportRows();
    else if (page == m_folders)
        exportTable([this] { return m_folders->csvTable(); });
    else
        exportTable([this] { return m_types->csvTable(); });
}

void DiskUsageResultsForm::exportTable(const std::function<csv::Table()> &table)
{
    if (!m_exportButton->isEnabled() || !m_view.result)
        return;
    const csv::Table shown = table();
    if (shown.next)
        m_exporter->start(shown.suggestedName,
                          [this, table] { return m_view.result ? table() : csv::Table(); });
}
