// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Naming.h"
#include "ConvertImage/engine/Options.h"
#include "ConvertImage/engine/Watermarking.h"
#include "ConvertImage/engine/metadata/Metadata.h"
#include "core/CancelFlag.h"

#include <QIODevice>

#include <functional>
#include <memory>
#include <optional>

// A conversion from the list of sources to the list of results. Files are reached only through what is handed
// in, so that the same code runs on any disk, in tests, and on the build machine.
namespace conversion
{

// An output that is being written under a temporary name. What is not put in place goes with the object.
class PendingOutput
{
public:
    virtual ~PendingOutput() = default;

    // Open for writing and reading, empty.
    virtual QIODevice &device() = 0;
    enum class Placed { Done, Exists, Failed };
    // Gives the file its final name in one step; the device is closed by that. Exists: there is a file of
    // that name which is not to be replaced. `problem` is set with Failed.
    virtual Placed place(bool replace, QString &problem) = 0;
    // What is told after a failed write: encoders often say no more than that it failed.
    virtual QString explained(const QString &problem) { return problem; }
};

// All functions are called on several threads at once.
class ConversionFiles
{
public:
    virtual ~ConversionFiles() = default;

    struct Source {
        QImage image; // null: it cannot be read, see `problem`
        Metadata metadata;
        qint64 bytes = 0; // of the file
        QString problem;
        QString note; // what is wrong with it all the same
    };
    // `beforeDecode` as that of the image loader: it may block until there is memory.
    virtual Source load(const QString &path, bool withMetadata,
                        const std::function<void(qint64 bytes)> &beforeDecode) = 0;
    virtual bool exists(const QString &path) = 0;
    // Null when it cannot be begun; then `problem` is set. `source` may be asked for its times.
    virtual std::unique_ptr<PendingOutput> begin(const QString &output, const QString &source,
                                                 QString &problem) = 0;
};

enum class Outcome {
    Waiting, // not reached: the run was cancelled
    Written,
    Exists, // there is a file already, and the user has not been asked about it
    Failed
};

struct FileResult {
    QString source;
    QString output;
    Outcome outcome = Outcome::Waiting;
    QString problem; // with Failed
    QString note;    // with Written: what was lost, or missing before
    qint64 sourceBytes = 0;
    qint64 outputBytes = 0;
    QSize size; // of what was written
};

struct RunOptions {
    Rendering rendering;
    Encoding encoding;
    PaperSize paper = PaperSize::Letter;
    MarkSources marks;
    bool overwriteAll = false;
    int threads = 1;                         // that render side by side
    qint64 decodedBytes = qint64(600) << 20; // of pictures in memory at a time, all threads together
};

struct RunListener {
    std::function<void(const QString &source)> started; // in list order; any thread, one at a time
    std::function<void(const FileResult &)> finished;   // in the order in which they end; likewise
};

// Converts each file of the plan to a file of its own. The results are in the order of the plan. Of files
// with one output, a later one waits for the earlier ones, and is told as existing after the first that was
// written, also when everything may be overwritten: what this run made is not yet what the user has seen.
std::vector<FileResult> convertFiles(const std::vector<PlannedFile> &plan, const RunOptions &options,
                                     ConversionFiles &files, const RunListener &listener,
                                     const core::CancelFlag &cancel);

// All into one document, which replaces any that is there; one that was cancelled or could not be written
// leaves the old one. The results are those of the pages.
std::vector<FileResult> convertToPdf(const QStringList &sources, const QString &document,
                                     const RunOptions &options, ConversionFiles &files,
                                     const RunListener &listener, const core::CancelFlag &cancel);

} // namespace conversion
