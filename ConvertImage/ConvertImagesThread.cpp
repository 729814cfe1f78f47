// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/ConvertImagesThread.h"

#include "ConvertImage/DiskFiles.h"
#include "imaging/DecoderPool.h"
#include "platform/NewFile.h"
#include "platform/Paths.h"

#include <QDir>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <utility>

using conversion::FileResult;
using conversion::Outcome;

ConvertImagesThread::ConvertImagesThread(ConversionJob job) : m_job(std::move(job))
{
    connect(this, &WorkerThread::done, this, &ConvertImagesThread::reportEnd);
}

void ConvertImagesThread::work()
{
    if (m_job.files.empty())
        return;
    prepareFolders();
    if (m_job.freeNames)
        freeNames();
    DiskFiles files(m_job.decoders, cancelFlag(), m_job.keepTimes);
    if (!m_job.markPath.isEmpty())
        m_job.options.marks.picture = files.load(m_job.markPath, false, {}).image;
    int count = 0;
    const conversion::RunListener listener{[this](const QString &source) { emit currentFile(source); },
                                           [this, &count](const FileResult &result) {
                                               if (result.outcome == Outcome::Written &&
                                                   result.outputBytes > 0)
                                                   m_bytesSaved += result.sourceBytes - result.outputBytes;
                                               emit fileFinished(++count);
                                           }};
    if (m_job.options.encoding.target != conversion::Target::Pdf) {
        m_results = convertFiles(m_job.files, m_job.options, files, listener, cancelFlag());
        return;
    }
    QStringList sources;
    for (const conversion::PlannedFile &file : m_job.files)
        sources.append(file.source);
    m_results =
        convertToPdf(sources, m_job.files.front().output, m_job.options, files, listener, cancelFlag());
}

// Creates the output folders, and removes temporary files that a crashed run left there. If a folder cannot
// be created, each of its files fails with the reason.
void ConvertImagesThread::prepareFolders() const
{
    QHash<QString, QString> folders; // by lower-case name
    for (const conversion::PlannedFile &file : m_job.files) {
        const QString folder = conversion::folderOf(file.output);
        folders.insert(folder.toLower(), folder);
    }
    for (const QString &folder : std::as_const(folders)) {
        if (!m_job.outputFolder.isEmpty())
            QDir().mkpath(folder);
        platform::NewFile::clearLeftovers(folder + u'\\');
    }
}

void ConvertImagesThread::freeNames()
{
    QSet<QString> used;
    for (conversion::PlannedFile &file : m_job.files) {
        file.output = conversion::freeName(file.output, [&used](const QString &path) {
            return used.contains(path.toLower()) || platform::fileExists(path);
        });
        used.insert(file.output.toLower());
    }
}

void ConvertImagesThread::reportEnd()
{
    if (stopRequested()) {
        emit cancelled();
        return;
    }
    QStringList outputs;
    QStringList sources;
    for (const FileResult &result : m_results) {
        if (result.outcome == Outcome::Exists) {
            outputs.append(result.output);
            sources.append(result.source);
        }
    }
    emit finish(outputs, sources);
}
