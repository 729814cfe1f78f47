// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/ConvertImageForm.h"

#include "ConvertImage/ConvertPage.h"
#include "ConvertImage/ConvertProgressForm.h"
#include "ConvertImage/FindSources.h"
#include "ConvertImage/PrepareRun.h"
#include "ConvertImage/engine/Targets.h"
#include "ConvertImage/results/ConvertResultPage.h"
#include "ConvertImage/results/OverwriteFileDialog.h"
#include "core/CountText.h"
#include "imaging/DecoderPool.h"
#include "platform/Dialogs.h"
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
namespace stored = conversion::stored;

namespace
{

constexpr int maxThreads = 8; // more do not help: disk and memory bandwidth are shared

bool isDocument(const conversion::Settings &settings)
{
    return settings.encoding.target == conversion::Target::Pdf;
}

} // namespace

ConvertImageForm::ConvertImageForm(QWidget *parent)
    : FLWidget(parent),
      m_decoders(std::make_shared<imaging::DecoderPool>(
          imaging::DecoderPool::Options{imaging::DecoderPool::decoderProgram()})),
      m_binding(SettingsBinding::Write::OnChange),
      m_pages(new QStackedLayout(this)),
      m_page(new ConvertPage(m_decoders, &m_binding, this)),
      m_progress(new ConvertProgressForm(this)),
      m_results(new ConvertResultPage(this)),
      m_search(this),
      m_jobs(this)
{
    setObjectName(QStringLiteral("convertImageForm"));
    buildPages();
}

ConvertImageForm::~ConvertImageForm() = default;

conversion::Settings ConvertImageForm::settings() const
{
    return conversion::settingsFrom(m_binding.values());
}

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
    if (m_search.isBusy() || m_jobs.isBusy()) {
        m_waiting += paths;
        return;
    }
    const bool withSubfolders = settings().withSubfolders;
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
            if (!m_waiting.isEmpty())
                addPaths(std::exchange(m_waiting, {}));
        });
}

void ConvertImageForm::convert()
{
    convertList(m_page->sources()->paths());
}

// The disk is checked on a worker: an unreachable share takes long to fail.
void ConvertImageForm::convertList(const QStringList &sources)
{
    if (m_jobs.isBusy() || m_search.isBusy() || sources.isEmpty() || !chooseTarget())
        return;
    const conversion::Settings settings = this->settings();
    const QHash<QString, QString> subfolders = m_page->sources()->subfolders();
    m_search.run(
        {.busyText = tr("the check of the output folder")},
        [sources, subfolders, settings, decoders = m_decoders](const core::JobControl &job) {
            return std::pair(settings, prepareRun(sources, subfolders, settings, *decoders, job.cancel));
        },
        [this, sources](auto &job) {
            auto prepared = job.takeResult();
            if (!prepared || job.stopRequested())
                return;
            // Queued, since a dialog runs an event loop: the job host must have finished with this job first.
            QMetaObject::invokeMethod(
                this,
                [this, sources, prepared = std::move(*prepared)] {
                    if (prepared.first == this->settings())
                        begin(sources, prepared.second);
                    else
                        convertList(sources); // the settings have changed meanwhile
                },
                Qt::QueuedConnection);
        });
}

// False if the user cancels the choice of a folder.
bool ConvertImageForm::chooseTarget()
{
    m_documentIsFresh = false;
    const conversion::Settings settings = this->settings();
    if (isDocument(settings)) {
        if (!settings.pdfFileName.isEmpty())
            return true;
        m_binding.show({{stored::pdfFileName.name.toString(),
                         platform::dialogs().chooseFileToSave(this, tr("PDF document"), {},
                                                              tr("PDF documents (*.pdf)"))}});
        m_documentIsFresh = true; // the file dialog has asked about replacing already
        return !this->settings().pdfFileName.isEmpty();
    }
    if (!settings.besideSource && settings.outputFolder.isEmpty())
        m_binding.show({{stored::outputFolder.name.toString(),
                         platform::dialogs().chooseFolder(this, tr("Output folder"))}});
    return settings.besideSource || !this->settings().outputFolder.isEmpty();
}

void ConvertImageForm::begin(const QStringList &sources, const PreparedRun &prepared)
{
    std::vector<PlannedFile> files = prepared.files;
    if (m_jobs.isBusy() || !mayStart(prepared) || !settleClashes(files, prepared.resolved))
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
    m_milliseconds = 0;
    start(std::move(files), Existing::List);
}

// Asks before starting if a mark cannot be drawn, if the output folder is missing, or if the document exists
// and its path was remembered: then the user has not agreed to replace it this time.
bool ConvertImageForm::mayStart(const PreparedRun &prepared)
{
    const conversion::Settings settings = this->settings();
    const auto isYes = [this](const QString &title, const QString &question) {
        return platform::dialogs().ask(this, title, question) == QMessageBox::Yes;
    };
    const conversion::QrMark &code = settings.rendering.marks.qr;
    if (prepared.markIsUnreadable &&
        !isYes(tr("Watermark"), tr("The picture of the watermark cannot be read. Convert without it?")))
        return false;
    if (!code.text.isEmpty() && conversion::qrModulePixels(code.text, code.size) == 0 &&
        !isYes(tr("Watermark"), tr("The text is too long for a QR code. Convert without the code?")))
        return false;
    if (prepared.documentExists && !m_documentIsFresh)
        return isYes(tr("PDF document"), tr("Replace the document \"%1\"?").arg(settings.pdfFileName));
    return !prepared.folderMissing ||
           isYes(tr("Output folder"),
                 tr("The folder \"%1\" does not exist. Create it?").arg(settings.outputFolder));
}

// Several sources have the same output: shows other names for them and lets the user decide.
bool ConvertImageForm::settleClashes(std::vector<PlannedFile> &files,
                                     const std::vector<PlannedFile> &resolved)
{
    constexpr std::size_t maxNamed = 6;
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
        this, tr("Several pictures would get the same name"),
        tr("%1 Give them these names?\n\n%2\n\nWith \"No\" the first picture of each name is converted, and "
           "you are "
           "asked about the others.")
            .arg(core::countText(changed, tr("One picture would get the name of another one."),
                                 tr("%1 pictures would get the names of others.")),
                 lines.join(u'\n')),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
    if (answer == QMessageBox::Yes)
        files = resolved;
    return answer == QMessageBox::Yes || answer == QMessageBox::No;
}

ConversionJob ConvertImageForm::makeJob(std::vector<PlannedFile> files, Existing existing) const
{
    const conversion::Settings settings = this->settings();
    ConversionJob job;
    job.files = std::move(files);
    job.markPath = settings.rendering.marks.picture.path;
    job.options.rendering = settings.rendering;
    job.options.encoding = settings.encoding;
    job.options.paper = settings.paper;
    job.options.marks.defaultFont = font().family();
    job.options.overwriteAll = existing == Existing::Replace;
    job.freeNames = existing == Existing::KeepBoth;
    job.outputFolder = isDocument(settings) || settings.besideSource ? QString() : settings.outputFolder;
    job.options.threads = std::min(platform::osIdleCores() + 1, maxThreads);
    job.keepTimes = settings.keepTimes;
    job.decoders = m_decoders;
    return job;
}

void ConvertImageForm::start(std::vector<PlannedFile> files, Existing existing)
{
    m_page->refreshPreview(); // the cached source is reloaded after the run
    const int count = static_cast<int>(files.size());
    auto *thread = new ConvertImagesThread(makeJob(std::move(files), existing));
    connect(thread, &ConvertImagesThread::currentFile, &m_jobs.relay(), &core::ProgressRelay::setPath,
            Qt::DirectConnection);
    connect(thread, &ConvertImagesThread::fileFinished, &m_jobs.relay(), &core::ProgressRelay::setItems,
            Qt::DirectConnection);
    m_progress->begin(count);
    m_clock.start(); // the time that the user takes to answer is not counted
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
    m_milliseconds += m_clock.elapsed();
    takeResults(thread.takeResults());
    m_run.error = thread.error();
    m_run.cancelled = thread.stopRequested();
    if (m_run.cancelled || !m_run.error.isEmpty()) {
        showResults();
        return;
    }
    // Queued, since a dialog runs an event loop: the job host must have finished with this job first.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!m_keepBoth.empty())
                start(std::exchange(m_keepBoth, {}), Existing::KeepBoth);
            else if (!askAboutExisting())
                showResults();
        },
        Qt::QueuedConnection);
}

void ConvertImageForm::takeResults(std::vector<FileResult> results)
{
    QHash<QString, std::size_t> places;
    for (std::size_t i = 0; i < m_run.results.size(); ++i)
        places.insert(m_run.results[i].source, i);
    for (FileResult &result : results) {
        if (const auto known = places.constFind(result.source); known != places.cend())
            m_run.results[*known] = std::move(result);
    }
}

// False if there is nothing to ask, or nothing left to convert after the answers.
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
    OverwriteFileDialog dialog(outputs, sources, m_page->sources()->paths(), m_decoders, this);
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
            m_keepBoth.push_back(file);
            break;
        case OverwriteFileDialog::Answer::Skip:
            m_skipped.insert(file.source);
            break;
        }
    }
    if (!replaced.empty())
        start(std::move(replaced), Existing::Replace);
    else if (!m_keepBoth.empty())
        start(std::exchange(m_keepBoth, {}), Existing::KeepBoth);
    else
        return false;
    return true;
}

void ConvertImageForm::showResults()
{
    m_results->showResults(m_run.results, m_run.cancelled, m_milliseconds);
    m_results->showError(m_run.error);
    m_pages->setCurrentWidget(m_results);
    emit resultsShown();
}

void ConvertImageForm::tryAgain()
{
    // A document is converted as a whole: with the failed pages alone it would lose the others.
    convertList(isDocument(settings()) ? m_run.sources : m_results->failedSources());
}
