// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageResultsForm.h"

#include "DiskUsage/BiggestFilesPage.h"
#include "DiskUsage/FileTypesPage.h"
#include "DiskUsage/FolderModel.h"
#include "DiskUsage/FoldersPage.h"
#include "DiskUsage/NotCountedPage.h"
#include "core/CountText.h"
#include "core/SizeText.h"
#include "platform/Dialogs.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLTabWidget.h"
#include "widgets/NoticeBar.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QHBoxLayout>
#include <QIcon>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

using diskusage::CsvTable;
using diskusage::Folder;
using diskusage::ScanResult;

namespace
{

QIcon image(const char *name)
{
    return QIcon(QStringLiteral(":/resources/images/%1.png").arg(QLatin1String(name)));
}

QString secondsText(qint64 milliseconds)
{
    return QString::number(static_cast<double>(milliseconds) / 1000, 'f', 1);
}

} // namespace

DiskUsageResultsForm::DiskUsageResultsForm(QWidget *parent)
    : QWidget(parent),
      m_back(new QToolButton(this)),
      m_title(new ElidedLabel(this, Qt::ElideMiddle)),
      m_totals(new ElidedLabel(this)),
      m_again(new QPushButton(image("Refresh24"), tr("Scan Again"), this)),
      m_exportButton(new QPushButton(image("Export24"), tr("Export"), this)),
      m_notice(new NoticeBar(this)),
      m_busyBar(new QWidget(this)),
      m_busyText(new ElidedLabel(m_busyBar, Qt::ElideMiddle)),
      m_busyStop(new QPushButton(tr("Cancel"), m_busyBar)),
      m_tabs(new FLTabWidget(this)),
      m_folders(new FoldersPage(this)),
      m_biggest(new BiggestFilesPage(this)),
      m_types(new FileTypesPage(this)),
      m_notCounted(new NotCountedPage(this)),
      m_jobs(this)
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
    m_back->setObjectName(QStringLiteral("backButton"));
    m_back->setIcon(image("ArrowLeft24"));
    m_back->setIconSize({24, 24});
    m_back->setAutoRaise(true);
    m_back->setFocusPolicy(Qt::TabFocus);
    m_back->setToolTip(tr("Back to the start page (Alt+Left)"));
    m_back->setAccessibleName(tr("Back"));
    m_title->setObjectName(QStringLiteral("resultTitleLabel"));
    m_title->setFont(theme::sectionTitle(font()));
    m_totals->setObjectName(QStringLiteral("resultTotalsLabel"));
    theme::makeMuted(m_totals);
    m_again->setObjectName(QStringLiteral("scanAgainButton"));
    m_again->setToolTip(tr("Scan everything again (Ctrl+R)"));
    m_exportButton->setObjectName(QStringLiteral("exportButton"));
    m_exportButton->setToolTip(tr("Export the shown table as CSV (Ctrl+S)"));
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
    auto *titles = new QVBoxLayout;
    titles->setSpacing(0);
    titles->addWidget(m_title);
    titles->addWidget(m_totals);
    auto *header = new QHBoxLayout;
    header->setSpacing(theme::spaceSnug);
    header->addWidget(m_back);
    header->addLayout(titles, 1);
    header->addWidget(m_again);
    header->addWidget(m_exportButton);
    auto *busy = new QHBoxLayout(m_busyBar);
    busy->setContentsMargins(0, 0, 0, 0);
    busy->addWidget(m_busyText, 1);
    busy->addWidget(m_busyStop);
    m_busyBar->hide();

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::space, theme::space, theme::space, theme::space);
    layout->setSpacing(theme::spaceSnug);
    layout->addLayout(header);
    layout->addWidget(m_notice);
    layout->addWidget(m_busyBar);
    layout->addWidget(m_tabs, 1);
}

void DiskUsageResultsForm::buildActions()
{
    const auto add = [this](const char *name, const QList<QKeySequence> &keys) {
        auto *action = new QAction(this);
        action->setObjectName(QLatin1String(name));
        action->setShortcuts(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(action);
        return action;
    };
    connect(add("backAction", {QKeySequence(Qt::ALT | Qt::Key_Left)}), &QAction::triggered, m_back,
            &QAbstractButton::click);
    connect(add("scanAllAction", {QKeySequence(Qt::CTRL | Qt::Key_R)}), &QAction::triggered, m_again,
            &QAbstractButton::click);
    // In the folder tree F5 is about the selected folder; in the lists there is nothing to scan but
    // everything.
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
    connect(m_back, &QAbstractButton::clicked, this, &DiskUsageResultsForm::back);
    connect(m_again, &QAbstractButton::clicked, this, &DiskUsageResultsForm::scanAllAgain);
    connect(m_exportButton, &QAbstractButton::clicked, this, &DiskUsageResultsForm::exportCurrentTable);
    connect(m_busyStop, &QAbstractButton::clicked, this, [this] {
        m_jobs.cancel();
        emit stopFolderScan();
    });
    connect(m_folders, &FoldersPage::scanAgain, this, &DiskUsageResultsForm::scanFolderAgain);
    const auto warn = [this](const QString &message) { showNotice(message, true); };
    connect(m_folders, &FoldersPage::failed, this, warn);
    connect(m_biggest, &BiggestFilesPage::failed, this, warn);
    connect(m_types, &FileTypesPage::failed, this, warn);
    connect(m_notCounted, &NotCountedPage::failed, this, warn);
    connect(m_folders, &FoldersPage::exportTable, this, &DiskUsageResultsForm::exportCurrentTable);
    connect(m_biggest, &BiggestFilesPage::exportTable, this, &DiskUsageResultsForm::exportCurrentTable);
    connect(m_types, &FileTypesPage::exportTable, this, &DiskUsageResultsForm::exportCurrentTable);
    connect(m_types, &FileTypesPage::exportTypes, this,
            [this] { exportTable([this] { return m_types->typesTable(); }); });
    connect(m_notCounted, &NotCountedPage::exportTable, this, &DiskUsageResultsForm::exportCurrentTable);
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
    m_title->setText(view.root);
    m_tabs->setCurrentIndex(0);
    showTotals();
    showNotCounted();
}

void DiskUsageResultsForm::detach()
{
    if (isExporting()) {
        m_jobs.drop();
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
        text += tr(". Windows reports %1 used of %2.")
                    .arg(core::sizeText(m_view.drive->usedBytes()), core::sizeText(m_view.drive->totalBytes));
    m_totals->setText(text);
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
    m_notCounted->replaceFolder(path, now);
    showTotals();
    showNotCounted();
    showNotice(
        tr("%1 was scanned again: %2, %3. The file types and the 20 biggest files of the whole scan are as "
           "they were.")
            .arg(path, core::sizeText(after.bytes), change));
}

void DiskUsageResultsForm::showNotice(const QString &text, bool warning)
{
    m_notice->showNotice(image(warning ? "Warning16" : "Info16"), text);
}

void DiskUsageResultsForm::setBusy(bool busy, const QString &text)
{
    if (busy && !m_busyBar->isVisible())
        m_focusBefore = QApplication::focusWidget();
    m_busyText->setText(text);
    m_busyBar->setVisible(busy);
    for (QWidget *button : {static_cast<QWidget *>(m_back), static_cast<QWidget *>(m_again),
                            static_cast<QWidget *>(m_exportButton)})
        button->setEnabled(!busy);
    // What has the focus loses it when it is disabled or hidden.
    if (!busy && m_focusBefore && isAncestorOf(m_focusBefore))
        m_focusBefore->setFocus();
}

CsvTable DiskUsageResultsForm::currentTable() const
{
    const QWidget *page = m_tabs->currentWidget();
    return page == m_folders   ? m_folders->csvTable()
           : page == m_biggest ? m_biggest->csvTable()
           : page == m_types   ? m_types->csvTable()
                               : m_notCounted->csvTable();
}

void DiskUsageResultsForm::exportCurrentTable()
{
    exportTable([this] { return currentTable(); });
}

void DiskUsageResultsForm::exportTable(const std::function<CsvTable()> &table)
{
    if (!m_exportButton->isEnabled() || !m_view.result)
        return;
    const CsvTable shown = table();
    if (!shown.next)
        return;
    const QPointer<DiskUsageResultsForm> alive(this);
    const QString file = platform::dialogs().chooseFileToSave(this, tr("Export as CSV"),
                                                              shown.suggestedName + QStringLiteral(".csv"),
                                                              tr("Comma-separated values (*.csv)"));
    if (!alive || file.isEmpty() || !m_view.result || isExporting())
        return;
    setBusy(true, tr("Exporting to %1 ...").arg(QDir::toNativeSeparators(file)));
    m_jobs.start({.busyText = tr("the export of a table")}, new CsvExportThread(file, table()),
                 [this](const CsvExportThread &ended) { endExport(ended); });
}

void DiskUsageResultsForm::endExport(const CsvExportThread &ended)
{
    const CsvExportThread::Outcome outcome = ended.outcome();
    const QString file = QDir::toNativeSeparators(ended.file());
    const QString rows = QString::number(ended.rows());
    setBusy(false);
    if (outcome == CsvExportThread::Outcome::Failed)
        showNotice(tr("%1 could not be written: %2").arg(file, ended.reason()), true);
    else if (outcome == CsvExportThread::Outcome::Cancelled)
        showNotice(tr("The export was cancelled; nothing was written."));
    else
        showNotice(tr("%1 rows were exported to %2.").arg(rows, file));
}
