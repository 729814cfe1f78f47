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

// A conversion, from the list of sources to the list of results. Files are accessed only through an
// interface, so that the same code runs on any disk, in tests and on the build machine.
namespace conversion
{

// An output that is being written under a temporary name. It is deleted with the object unless it was put in
// place.
class PendingOutput
{
public:
    virtual ~PendingOutput() = default;

    // Initially empty, open for reading and writing.
    virtual QIODevice &device() = 0;
    enum class Placed { Done, Exists, Failed };
    // Renames the file to its final name in one step, which closes the device. Exists: the final name is
    // taken and must not be replaced. With Failed, `problem` is set.
    virtual Placed place(bool replace, QString &problem) = 0;
    // A better explanation of a failed write: encoders often report only that it failed.
    virtual QString explained(const QString &problem) { return problem; }
};

// All functions are called on several threads at once.
class ConversionFiles
{
public:
    virtual ~ConversionFiles() = default;

    struct Source {
        QImage image; // null if it cannot be read, see `problem`
        Metadata metadata;
        qint64 bytes = 0; // file size
        QString problem;
        QString note; // a defect of a source that could still be read
    };
    // `beforeDecode` as for the image loader: it may block until memory is free.
    virtual Source load(const QString &path, bool withMetadata,
                        const std::function<void(qint64 bytes)> &beforeDecode) = 0;
    virtual bool exists(const QString &path) = 0;
    // Null if it cannot be created; then `problem` is set. `source` is used for its file times.
    virtual std::unique_ptr<PendingOutput> begin(const QString &output, const QString &source,
                                                 QString &problem) = 0;
};

enum class Outcome {
    Waiting, // not started: the run was cancelled
    Written,
    Exists, // the output exists, and the user has not been asked yet
    Failed
};

struct FileResult {
    QString source;
    QString output;
    Outcome outcome = Outcome::Waiting;
    QString problem; // set with Failed
    QString note;    // set with Written: what was lost, or missing in the source
    qint64 sourceBytes = 0;
    qint64 outputBytes = 0;
    QSize size; // of the output
};

struct RunOptions {
    Rendering rendering;
    Encoding encoding;
    PaperSize paper = PaperSize::Letter;
    MarkSources marks;
    bool overwriteAll = false;
    int threads = 1;                         // rendering in parallel
    qint64 decodedBytes = qint64(600) << 20; // decoded images in memory, over all threads
};

struct RunListener {
    std::function<void(const QString &source)> started; // in list order; from any thread, one call at a time
    std::function<void(const FileResult &)> finished;   // in completion order; likewise
};

// Converts each file of the plan to a file of its own. Results are in plan order. If several files have the
// same output, later ones wait for the earlier ones, and are reported as Exists after the first that was
// written, even with overwriteAll: the user has not agreed to replace files of this very run.
std::vector<FileResult> convertFiles(const std::vector<PlannedFile> &plan, const RunOptions &options,
                                     ConversionFiles &files, const RunListener &listener,
                                     const core::CancelFlag &cancel);

// Converts all sources into one document, which replaces an existing one. A cancelled or failed run keeps the
// old one. The results are those of the pages.
std::vector<FileResult> convertToPdf(const QStringList &sources, const QString &document,
                                     const RunOptions &options, ConversionFiles &files,
                                     const RunListener &listener, const core::CancelFlag &cancel);

} // namespace conversion
