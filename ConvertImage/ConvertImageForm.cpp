// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/ConvertImageForm.h"

#include "ConvertImage/ConvertPage.h"
#include "ConvertImage/ConvertProgressForm.h"
#include "ConvertImage/ConvertResultPage.h"
#include "ConvertImage/FindSources.h"
#include "ConvertImage/OverwriteFileDialog.h"
#include "ConvertImage/SettingsBinder.h"
#include "ConvertImage/engine/Targets.h"
#include "core/CountText.h"
#include "imaging/DecoderPool.h"
#include "platform/Dialogs.h"
#include "platform/Paths.h"
#include "platform/Processors.h"
#include "platform/Win32Enumerator.h"
#include "widgets/NoticeBar.h"

#include <QDir>
#include <QStackedLayout>

#include <algorithm>
#include <utility>

using conversion::FileResult;
using conversion::Outcome;
using conversion::PlannedFile;

namespace
{

constexpr int maxThreads = 8; // more do not pay: disk and memory are shared

bool isDocument(const SettingsBinder *binder)
{
    return binder->settings().encoding.target == conversion::Target::Pdf;
}

} // namespace

ConvertImageForm::ConvertImageForm(QWidget *parent)
    : FLWidget(parent),
      m_decoders(std::make_shared<imaging::DecoderPool>(
          imaging::DecoderPool::Options{imaging::DecoderPool::decoderProgram()})),
      m_binder(new SettingsBinder(this)),
      m_pages(new QStackedLayout(this)),
      m_page(new ConvertPage(m_decoders, m_binder, this)),
      m_progress(new ConvertProgressForm(this)),
      m_results(new ConvertResultPage(this)),
      m_search(this),
      m_jobs(this)
{
    setObjectName(QStringLiteral("convertImageForm"));
    buildPages();
}

ConvertImageForm::~ConvertImageForm() = default;

void ConvertImageForm::buildPages()
{
    m_pages->addWidget(m_page);
    m_pages->addWidget(m_progress);
    m_pages->addWidget(m_results);
    connect(m_page, &ConvertPage::pathsAdded, this, &ConvertImageForm::addPaths);
    connect(m_page, &ConvertPage::convertRequested, this, &ConvertImageForm::convert);
    connect(m_progress, &ConvertProgressForm::cancelRequested, this, [this] {
        m_jobs.cancel();
        m_progress->showStopping();
    });
    connect(m_results, &ConvertResultPage::back, this, [this] {
        m_pages->setCurrentWidget(m_page);
        m_page->refreshPreview();
    });
    connect(m_results, &ConvertResultPage::tryAgain, this, &ConvertImageForm::tryAgain);
}

void ConvertImageForm::addPaths(const QStringList &paths)
{
    if (m_search.isBusy() || m_jobs.isBusy())
        return;
    const bool withSubfolders = m_binder->settings().withSubfolders;
    m_search.run(
        {.busyText = tr("the search for pictures")},
        [paths, withSubfolders](const core::JobControl &job) {
            platform::Win32Enumerator enumerator;
            return findSources(paths, withSubfolders, enumerator, job.cancel);
        },
        [this](auto &job) {
            const std::optional<FoundSources> found = job.takeResult();
            if (!found || job.stopRequested())
                return;
            const int added = m_page->sources()->add(found->files);
            const int leftOut = found->others + found->unread;
            if (leftOut > 0)
                m_page->notice()->showNotice(
                    NoticeBar::Kind::Warning,
                    tr("%1 could not be added: gone, without rights, or in a cloud only.").arg(leftOut));
            else if (added == 0)
                m_page->notice()->showNotice(NoticeBar::Kind::Info, tr("There is no further picture there."));
            else
                m_page->notice()->hide();
        });
}

void ConvertImageForm::convert()
{
    convertList(m_page->sources()->paths());
}

void ConvertImageForm::convertList(const QStringList &sources)
{
    std::vector<PlannedFile> files;
    if (m_jobs.isBusy() || sources.isEmpty() || !mayStart() || !plan(sources, files))
        return;
    m_run = {};
    m_run.sources = sources;
    for (const PlannedFile &file : files) {
        m_run.results.emplace_back();
        m_run.results.back().source = file.source;
        m_run.results.back().output = file.output;
    }
    m_skipped.clear();
    m_keepBoth.clear();
    m_clock.start();
    start(std::move(files), false);
}

bool ConvertImageForm::mayStart()
{
    if (isDocument(m_binder))
        return chooseDocument();
    if (m_binder->settings().besideSource)
        return true;
    if (m_binder->settings().outputFolder.isEmpty()) {
        const QString folder = platform::dialogs().chooseFolder(this, tr("Output folder"));
        if (folder.isEmpty())
            return false;
        m_binder->set(u"OutputFolder", folder);
    }
    const QString folder = m_binder->settings().outputFolder;
    if (QDir(folder).exists())
        return true;
    if (platform::dialogs().ask(this, tr("Output folder"),
                                tr("The folder \"%1\" does not exist. Make it?").arg(folder)) !=
        QMessageBox::Yes)
        return false;
    if (QDir().mkpath(folder))
        return true;
    platform::dialogs().warn(this, tr("Output folder"), tr("The folder \"%1\" cannot be made.").arg(folder));
    return false;
}

// A path that was remembered is asked about, as nobody has just said that its file is to go.
bool ConvertImageForm::chooseDocument()
{
    QString path = m_binder->settings().pdfFileName;
    if (path.isEmpty()) {
        path =
            platform::dialogs().chooseFileToSave(this, tr("PDF document"), {}, tr("PDF documents (*.pdf)"));
        m_binder->set(u"pdfFileName", path);
        return !path.isEmpty();
    }
    return !platform::fileExists(path) ||
           platform::dialogs().ask(this, tr("PDF document"), tr("Replace the document \"%1\"?").arg(path)) ==
               QMessageBox::Yes;
}

bool ConvertImageForm::plan(const QStringList &sources, std::vector<PlannedFile> &files)
{
    const conversion::Settings &settings = m_binder->settings();
    if (isDocument(m_binder)) {
        for (const QString &source : sources)
            files.push_back({source, settings.pdfFileName});
        return true;
    }
    files = conversion::plannedFiles(
        sources, settings.besideSource ? QString() : settings.outputFolder,
        QString::fromLatin1(conversion::factsOf(settings.encoding.target).extension));
    return settleClashes(files);
}

bool ConvertImageForm::settleClashes(std::vector<PlannedFile> &files)
{
    constexpr std::size_t maxNamed = 6;
    std::vector<PlannedFile> resolved = files;
    conversion::resolveClashes(resolved, [](const QString &path) { return platform::fileExists(path); });
    QStringList lines;
    std::size_t changed = 0;
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (files[i].output == resolved[i].output)
            continue;
        if (++changed <= maxNamed)
            lines.append(QDir::toNativeSeparators(files[i].source) + QStringLiteral("  ->  ") +
                         resolved[i].output);
    }
    if (changed == 0)
        return true;
    if (changed > maxNamed)
        lines.append(tr("and %1 more").arg(changed - maxNamed));
    const auto answer = platform::dialogs().ask(
        this, tr("Several pictures would get one name"),
        tr("%1 Give them these names?\n\n%2\n\nWith \"No\" the first picture of each name is converted, and "
           "you are "
           "asked about the others.")
            .arg(core::countText(changed, tr("One picture would get the name of another one."),
                                 tr("%1 pictures would get the names of others.")),
                 lines.join(u'\n')),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
    if (answer == QMessageBox::Yes)
        files = std::move(resolved);
    return answer == QMessageBox::Yes || answer == QMessageBox::No;
}

ConversionJob ConvertImageForm::makeJob(std::vector<PlannedFile> files, bool overwriteAll) const
{
    const conversion::Settings &settings = m_binder->settings();
    ConversionJob job;
    job.files = std::move(files);
    job.markPath = settings.rendering.marks.picture.path;
    job.options.rendering = settings.rendering;
    job.options.encoding = settings.encoding;
    job.options.paper = settings.paper;
    job.options.marks.defaultFont = font().family();
    job.options.overwriteAll = overwriteAll;
    job.options.threads = std::min(platform::osIdleCores() + 1, maxThreads);
    job.keepTimes = settings.keepTimes;
    job.decoders = m_decoders;
    return job;
}

void ConvertImageForm::start(std::vector<PlannedFile> files, bool overwriteAll)
{
    m_page->refreshPreview(); // what is kept of a source is read again after the run
    const int count = static_cast<int>(files.size());
    auto *thread = new ConvertImagesThread(makeJob(std::move(files), overwriteAll));
    connect(thread, &ConvertImagesThread::currentFile, &m_jobs.relay(), &core::ProgressRelay::setPath,
            Qt::DirectConnection);
    connect(thread, &ConvertImagesThread::fileFinished, &m_jobs.relay(), &core::ProgressRelay::setItems,
            Qt::DirectConnection);
    m_progress->begin(count);
    m_pages->setCurrentWidget(m_progress);
    m_jobs.start({.busyText = tr("the conversion of pictures"),
                  .progress =
                      [this, thread](const core::ScanProgress &progress) {
                          m_progress->showProgress(progress.path, progress.items, thread->bytesSaved());
                      }},
                 thread, [this](ConvertImagesThread &ended) { onEnded(ended); });
}

void ConvertImageForm::onEnded(ConvertImagesThread &thread)
{
    takeResults(thread.takeResults());
    m_run.error = thread.error();
    m_run.cancelled = thread.stopRequested();
    if (m_run.cancelled || !m_run.error.isEmpty()) {
        showResults();
        return;
    }
    // After the job's host is through with this one: a dialog runs an event loop of its own.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!m_keepBoth.empty())
                start(std::exchange(m_keepBoth, {}), false);
            else if (!askAboutExisting())
                showResults();
        },
        Qt::QueuedConnection);
}

void ConvertImageForm::takeResults(std::vector<FileResult> results)
{
    for (FileResult &result : results) {
        const auto known = std::ranges::find(m_run.results, result.source, &FileResult::source);
        if (known != m_run.results.end())
            *known = std::move(result);
    }
}

// False when there is nothing to ask, or nothing to do after the answers.
bool ConvertImageForm::askAboutExisting()
{
    QStringList outputs;
    QStringList sources;
    for (const FileResult &result : m_run.results) {
        if (result.outcome == Outcome::Exists && !m_skipped.contains(result.source)) {
            outputs.append(result.output);
            sources.append(result.source);
        }
    }
    if (outputs.isEmpty())
        return false;
    OverwriteFileDialog dialog(outputs, sources, m_run.sources, m_decoders, this);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    const std::vector<OverwriteFileDialog::Answer> answers = dialog.answers();
    std::vector<PlannedFile> replaced;
    for (qsizetype i = 0; i < outputs.size(); ++i) {
        const PlannedFile file{sources[i], outputs[i]};
        switch (answers[static_cast<std::size_t>(i)]) {
        case OverwriteFileDialog::Answer::Replace:
            replaced.push_back(file);
            break;
        case OverwriteFileDialog::Answer::KeepBoth:
            m_keepBoth.push_back({file.source, conversion::freeName(file.output, [this](const QString &path) {
                                      return platform::fileExists(path) ||
                                             std::ranges::find(m_keepBoth, path, &PlannedFile::output) !=
                                                 m_keepBoth.end();
                                  })});
            break;
        case OverwriteFileDialog::Answer::Skip:
            m_skipped.insert(file.source);
            break;
        }
    }
    if (!replaced.empty())
        start(std::move(replaced), true);
    else if (!m_keepBoth.empty())
        start(std::exchange(m_keepBoth, {}), false);
    else
        return false;
    return true;
}

void ConvertImageForm::showResults()
{
    m_results->showResults(m_run.results, m_run.cancelled, m_clock.elapsed());
    m_results->showError(m_run.error);
    m_pages->setCurrentWidget(m_results);
    emit resultsShown();
}

void ConvertImageForm::tryAgain()
{
    convertList(m_results->failedSources());
}
