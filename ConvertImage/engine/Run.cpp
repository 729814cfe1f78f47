// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Run.h"

#include "ConvertImage/engine/ImageWriter.h"
#include "ConvertImage/engine/Render.h"
#include "ConvertImage/engine/Targets.h"
#include "imaging/engine/MemoryBudget.h"

#include <QDebug>
#include <QHash>
#include <QImageWriter>
#include <QScopeGuard>

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <new>
#include <optional>
#include <thread>

namespace conversion
{

namespace
{

class FileRun
{
public:
    FileRun(const std::vector<PlannedFile> &plan, const RunOptions &options, ConversionFiles &files,
            const RunListener &listener, const core::CancelFlag &cancel)
        : m_plan(plan),
          m_options(options),
          m_files(files),
          m_listener(listener),
          m_cancel(cancel),
          m_budget(options.decodedBytes),
          m_results(plan.size()),
          m_earlier(plan.size()),
          m_ended(plan.size(), false)
    {
        QHash<QString, std::size_t> last;
        for (std::size_t i = 0; i < plan.size(); ++i) {
            m_results[i].source = plan[i].source;
            m_results[i].output = plan[i].output;
            const QString key = QString(plan[i].output).replace(u'/', u'\\').toLower();
            if (const auto known = last.constFind(key); known != last.cend())
                m_earlier[i] = *known;
            last.insert(key, i);
        }
    }

    std::vector<FileResult> run()
    {
        std::vector<std::thread> threads;
        const std::size_t wanted =
            std::min<std::size_t>(m_plan.size(), static_cast<std::size_t>(std::max(1, m_options.threads)));
        threads.reserve(wanted);
        try {
            for (std::size_t i = 1; i < wanted; ++i)
                threads.emplace_back([this] { work(); });
        } catch (const std::exception &) {
            // Fewer threads than requested: those that started, and this one, do the work.
        }
        work();
        for (std::thread &thread : threads)
            thread.join();
        if (m_error)
            std::rethrow_exception(m_error);
        return std::move(m_results);
    }

private:
    void work() noexcept;
    void process(std::size_t index);
    std::optional<std::size_t> takeNext();
    void waitForEarlier(std::size_t index);
    bool wasWrittenEarlier(std::size_t index);
    void convert(std::size_t index);
    void write(std::size_t index, const QImage &image, const Metadata &metadata);
    void encode(std::size_t index, QIODevice &device, const QImage &image, const Metadata &metadata);

    const std::vector<PlannedFile> &m_plan;
    const RunOptions &m_options;
    ConversionFiles &m_files;
    const RunListener &m_listener;
    const core::CancelFlag &m_cancel;
    imaging::MemoryBudget m_budget;
    std::mutex m_encoder; // serialises encoders that use all cores themselves

    std::mutex m_mutex; // guards the following members; an unfinished result belongs to its thread
    std::condition_variable m_endedOne;
    std::vector<FileResult> m_results;
    std::vector<std::optional<std::size_t>> m_earlier; // previous file with the same output
    std::vector<bool> m_ended;
    std::size_t m_next = 0;
    std::exception_ptr m_error; // the first one of the listener; ends the run
};

// An exception that leaves a thread ends the program.
void FileRun::work() noexcept
{
    try {
        while (const auto index = takeNext())
            process(*index);
    } catch (...) {
        const std::lock_guard lock(m_mutex);
        if (!m_error)
            m_error = std::current_exception();
    }
}

void FileRun::process(std::size_t index)
{
    {
        // In any case: later files with the same output wait for it.
        const auto ended = qScopeGuard([this, index] {
            const std::lock_guard lock(m_mutex);
            m_ended[index] = true;
            m_endedOne.notify_all();
        });
        FileResult &result = m_results[index];
        try {
            convert(index);
        } catch (const std::bad_alloc &) {
            result.outcome = Outcome::Failed;
            result.problem = problemText(RenderProblem::NoMemory);
        } catch (const std::exception &error) {
            result.outcome = Outcome::Failed;
            result.problem = QString::fromUtf8(error.what());
        }
    }
    const std::lock_guard lock(m_mutex);
    if (m_listener.finished)
        m_listener.finished(m_results[index]);
}

std::optional<std::size_t> FileRun::takeNext()
{
    const std::lock_guard lock(m_mutex);
    if (m_error || m_cancel.isSet() || m_next == m_plan.size())
        return std::nullopt;
    if (m_listener.started)
        m_listener.started(m_plan[m_next].source);
    return m_next++;
}

// Earlier files were started earlier, so another thread is already working on them.
void FileRun::waitForEarlier(std::size_t index)
{
    std::unique_lock lock(m_mutex);
    if (const auto earlier = m_earlier[index])
        m_endedOne.wait(lock, [this, earlier] { return m_ended[*earlier]; });
}

bool FileRun::wasWrittenEarlier(std::size_t index)
{
    const std::lock_guard lock(m_mutex);
    for (auto earlier = m_earlier[index]; earlier; earlier = m_earlier[*earlier]) {
        if (m_results[*earlier].outcome == Outcome::Written)
            return true;
    }
    return false;
}

void FileRun::convert(std::size_t index)
{
    FileResult &result = m_results[index];
    waitForEarlier(index);
    if (wasWrittenEarlier(index) || (!m_options.overwriteAll && m_files.exists(result.output))) {
        result.outcome = Outcome::Exists;
        return;
    }
    imaging::MemoryBudget::Share memory(m_budget);
    const bool wantsMetadata =
        m_options.encoding.keepMetadata && factsOf(m_options.encoding.target).hasMetadata;
    ConversionFiles::Source source = m_files.load(result.source, wantsMetadata, [&memory](qint64 bytes) {
        memory.take(2 * bytes); // the image, and the result of the steps
    });
    if (m_cancel.isSet())
        return; // a cancelled decoding is not a failure
    result.sourceBytes = source.bytes;
    result.note = source.note;
    Rendered rendered;
    if (source.problem.isEmpty())
        rendered = render(std::exchange(source.image, {}), m_options.rendering, m_options.marks, false);
    if (rendered.image.isNull()) {
        result.outcome = Outcome::Failed;
        result.problem = source.problem.isEmpty() ? problemText(rendered.problem) : source.problem;
        return;
    }
    if (m_cancel.isSet())
        return;
    write(index, rendered.image, source.metadata);
}

void FileRun::encode(std::size_t index, QIODevice &device, const QImage &image, const Metadata &metadata)
{
    FileResult &result = m_results[index];
    std::unique_lock lock(m_encoder, std::defer_lock);
    if (factsOf(m_options.encoding.target).isThreaded)
        lock.lock();
    const WriteResult written = writePicture(device, image, m_options.encoding, metadata);
    if (lock)
        lock.unlock();
    result.problem = written.problem;
    if (!result.note.isEmpty() && !written.note.isEmpty())
        result.note += QStringLiteral(". ");
    result.note += written.note;
    if (!result.problem.isEmpty())
        qDebug() << "Cannot write: " << result.output << result.problem
                 << QImageWriter::supportedImageFormats();
    else
        result.problem = device.seek(0) ? checkWritten(device, m_options.encoding.target, image.size())
                                        : device.errorString();
}

void FileRun::write(std::size_t index, const QImage &image, const Metadata &metadata)
{
    FileResult &result = m_results[index];
    result.outcome = Outcome::Failed;
    const std::unique_ptr<PendingOutput> pending =
        m_files.begin(result.output, result.source, result.problem);
    if (!pending)
        return;
    encode(index, pending->device(), image, metadata);
    if (!result.problem.isEmpty()) {
        result.problem = pending->explained(result.problem);
        return;
    }
    const qint64 bytes = pending->device().size();
    switch (pending->place(m_options.overwriteAll, result.problem)) {
    case PendingOutput::Placed::Done:
        result.outcome = Outcome::Written;
        result.outputBytes = bytes;
        result.size = image.size();
        break;
    case PendingOutput::Placed::Exists:
        result.outcome = Outcome::Exists;
        break;
    case PendingOutput::Placed::Failed:
        break;
    }
}

} // namespace

std::vector<FileResult> convertFiles(const std::vector<PlannedFile> &plan, const RunOptions &options,
                                     ConversionFiles &files, const RunListener &listener,
                                     const core::CancelFlag &cancel)
{
    return FileRun(plan, options, files, listener, cancel).run();
}

} // namespace conversion
