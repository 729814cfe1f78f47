// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/PdfWriter.h"
#include "ConvertImage/engine/Render.h"
#include "ConvertImage/engine/Run.h"

#include <QCoreApplication>
#include <QDebug>

#include <algorithm>
#include <future>

namespace conversion
{

namespace
{

struct Page {
    Rendered rendered;
    QString problem;
    qint64 sourceBytes = 0;
    QString note;
};

Page makePage(const QString &source, const RunOptions &options, ConversionFiles &files)
{
    try {
        ConversionFiles::Source loaded = files.load(source, false, {});
        Page page{{}, loaded.problem, loaded.bytes, loaded.note};
        if (page.problem.isEmpty())
            page.rendered = render(std::exchange(loaded.image, {}), options.rendering, options.marks, false);
        if (page.problem.isEmpty())
            page.problem = problemText(page.rendered.problem);
        return page;
    } catch (const std::bad_alloc &) {
        return {{}, problemText(RenderProblem::NoMemory), 0, {}};
    }
}

void failAll(std::vector<FileResult> &results, const QString &problem)
{
    qDebug() << "Cannot write: " << problem;
    for (FileResult &result : results) {
        result.outcome = Outcome::Failed;
        if (result.problem.isEmpty())
            result.problem = problem;
    }
}

// Renders the next page while the previous one is written.
QString writePages(const QStringList &sources, PdfDocument &document, std::vector<FileResult> &results,
                   const RunOptions &options, ConversionFiles &files, const RunListener &listener,
                   const core::CancelFlag &cancel)
{
    std::future<Page> next;
    const auto prepare = [&](std::size_t index) {
        if (index < results.size() && !cancel.isSet())
            next = std::async(std::launch::async, [&, index] {
                return makePage(sources[static_cast<qsizetype>(index)], options, files);
            });
    };
    prepare(0);
    for (std::size_t i = 0; i < results.size(); ++i) {
        if (cancel.isSet())
            return {}; // the destructor of `next` waits for its page
        FileResult &result = results[i];
        if (listener.started)
            listener.started(result.source);
        const Page page = next.get();
        prepare(i + 1);
        result.sourceBytes = page.sourceBytes;
        result.problem = page.problem;
        result.note = page.note;
        result.size = page.rendered.image.size();
        result.outcome = page.problem.isEmpty() ? Outcome::Written : Outcome::Failed;
        const QString problem = document.addPage(page.rendered.image);
        if (!problem.isEmpty())
            return problem;
        if (listener.finished)
            listener.finished(result);
    }
    return {};
}

} // namespace

std::vector<FileResult> convertToPdf(const QStringList &sources, const QString &document,
                                     const RunOptions &options, ConversionFiles &files,
                                     const RunListener &listener, const core::CancelFlag &cancel)
{
    std::vector<FileResult> results;
    for (const QString &source : sources) {
        results.emplace_back();
        results.back().source = source;
        results.back().output = document;
    }
    if (results.empty())
        return results;
    QString problem;
    const std::unique_ptr<PendingOutput> pending = files.begin(document, {}, problem);
    if (!pending) {
        failAll(results, problem);
        return results;
    }
    PdfDocument pdf(pending->device(), options.paper);
    problem = writePages(sources, pdf, results, options, files, listener, cancel);
    if (cancel.isSet()) {
        for (FileResult &result : results)
            result.outcome = Outcome::Waiting;
        return results;
    }
    const bool whole = pdf.finish();
    if (problem.isEmpty() && (!whole || pending->device().size() == 0))
        problem = QCoreApplication::translate("conversion", "The document cannot be written");
    if (!problem.isEmpty())
        problem = pending->explained(problem);
    if (problem.isEmpty() && pending->place(true, problem) == PendingOutput::Placed::Done)
        return results;
    failAll(results, problem);
    return results;
}

} // namespace conversion
