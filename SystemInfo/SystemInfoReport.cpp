// SPDX-License-Identifier: GPL-3.0-or-later
// Operations over all pages: search, report, comparison.
#include "SystemInfo/Gathering.h"
#include "SystemInfo/InfoPageForm.h"
#include "SystemInfo/PageBar.h"
#include "SystemInfo/ReportCompareDialog.h"
#include "SystemInfo/SaveReportDialog.h"
#include "SystemInfo/SystemInfoForm.h"
#include "platform/NewFile.h"
#include "widgets/JobHost.h"
#include "widgets/SearchLine.h"

#include <QDir>

using namespace systeminfo;

namespace
{

constexpr std::size_t maxHits = 100;

// Gathers all pages in parallel, so that a slow one does not delay the others.
std::vector<Page> gatherAll(const std::vector<PageId> &ids, const MachineFactory &machines,
                            const core::CancelFlag &cancel)
{
    std::vector<Gathering> gatherings;
    gatherings.reserve(ids.size());
    for (const PageId id : ids)
        gatherings.emplace_back(id, machines);
    std::vector<Page> pages;
    for (Gathering &gathering : gatherings)
        pages.push_back(gathering.wait(cancel));
    return pages;
}

ReportFormat formatOf(const QString &file)
{
    if (file.endsWith(QStringLiteral(".html"), Qt::CaseInsensitive))
        return ReportFormat::Html;
    return file.endsWith(QStringLiteral(".json"), Qt::CaseInsensitive) ? ReportFormat::Json
                                                                       : ReportFormat::Text;
}

Report makeReport(std::vector<Page> pages, bool complete, Machine &machine)
{
    Report report{.created = QDateTime::currentDateTime(), .complete = complete, .pages = std::move(pages)};
    if (complete)
        return report;
    const SystemFacts facts = machine.system();
    const QStringList names = {facts.computerName, facts.userName,
                               facts.profileFolder.section(QLatin1Char('\\'), -1)};
    for (Page &page : report.pages)
        page = blanked(page, names);
    return report;
}

} // namespace

// Gathers the pages that have not been opened, without creating their forms.
void SystemInfoForm::gatherRest(const std::function<void()> &then)
{
    if (knowsAllPages()) {
        then();
        return;
    }
    if (m_jobs->isBusy())
        return;
    std::vector<PageId> missing;
    for (const PageSource &source : pageSources()) {
        if (!pageOf(slot(source.id)))
            missing.push_back(source.id);
    }
    m_jobs->run(
        {.busyText = tr("the gathering of a report")},
        [missing, machines = machineFactory()](const core::JobControl &job) {
            return gatherAll(missing, machines, job.cancel);
        },
        [this, missing, then](auto &job) {
            const auto found = job.takeResult();
            if (!found || job.stopRequested())
                return;
            for (std::size_t i = 0; i < missing.size(); ++i)
                slot(missing[i]).gathered = (*found)[i];
            then();
        });
}

void SystemInfoForm::search(const QString &text)
{
    m_search = text;
    showHits();
    if (!text.trimmed().isEmpty() && !knowsAllPages())
        gatherRest([this] { showHits(); });
}

void SystemInfoForm::showHits()
{
    const std::vector<Hit> hits = findRows(pages(), m_search, maxHits);
    QString note;
    if (!m_search.trimmed().isEmpty()) {
        if (!knowsAllPages())
            note = tr("Looking through the other pages ...");
        else if (hits.empty())
            note = tr("Nothing found");
        else if (hits.size() == maxHits)
            note = tr("Only the first %1 are listed").arg(maxHits);
    }
    current()->bar()->showHits(hits, note);
}

// The page may have to be created first; the row is selected once it is loaded.
void SystemInfoForm::openHit(const Hit &hit)
{
    const std::vector<Page> searched = pages();
    if (hit.page >= searched.size())
        return;
    for (const PageSource &source : pageSources()) {
        if (emptyPage(source.id).name != searched[hit.page].name)
            continue;
        showPage(source.id);
        InfoPageForm *form = slot(source.id).form;
        if (form->page())
            form->showRow(hit.row);
        else
            connect(
                form, &InfoPageForm::loaded, form, [form, hit] { form->showRow(hit.row); },
                Qt::SingleShotConnection);
    }
}

void SystemInfoForm::saveReport()
{
    SaveReportDialog dialog(current()->page() ? current()->page()->title : QString(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const bool onlyThisPage = dialog.onlyThisPage();
    const bool complete = dialog.includesPrivateValues();
    const QString file = dialog.file();
    if (onlyThisPage)
        writeReport(true, complete, file);
    else
        gatherRest([this, complete, file] { writeReport(false, complete, file); });
}

void SystemInfoForm::writeReport(bool onlyThisPage, bool complete, const QString &file)
{
    if (m_jobs->isBusy() || (onlyThisPage && !current()->page())) {
        current()->notify(tr("The report was not saved: the page is still being gathered."));
        return;
    }
    std::vector<Page> content = onlyThisPage ? std::vector<Page>{*current()->page()} : pages();
    m_jobs->run(
        {.busyText = tr("the saving of a report")},
        [content = std::move(content), complete, file,
         machines = machineFactory()](const core::JobControl &job) {
            const std::unique_ptr<Machine> machine = machines(job.cancel);
            const Report report = makeReport(content, complete, *machine);
            return job.cancel.isSet()
                       ? tr("Cancelled.")
                       : platform::NewFile::save(file, systeminfo::writeReport(report, formatOf(file)));
        },
        [this, file](auto &job) {
            const QString shown = QDir::toNativeSeparators(file);
            const QString problem = job.takeResult().value_or(job.error());
            if (problem.isEmpty())
                current()->notify(tr("The report was saved as %1.").arg(shown), false);
            else
                current()->notify(tr("The report could not be saved as %1: %2").arg(shown, problem));
        });
}

void SystemInfoForm::compareReports()
{
    ReportCompareDialog dialog(this);
    dialog.exec();
}
