// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Run.h"
#include "core/WorkerThread.h"

#include <QStringList>

#include <atomic>

namespace imaging
{
class DecoderPool;
}

struct ConversionJob {
    std::vector<conversion::PlannedFile> files; // for a document: its pages, all with the same output
    QString markPath;                           // the watermark image; empty for none
    conversion::RunOptions options;
    QString outputFolder;   // created if missing; if empty, outputs are written beside their sources
    bool freeNames = false; // outputs get names that do not exist yet
    bool keepTimes = false;
    std::shared_ptr<imaging::DecoderPool> decoders;
};

// Converts a list of files. Both lists of finish() are in source order.
class ConvertImagesThread : public core::WorkerThread
{
    Q_OBJECT

public:
    explicit ConvertImagesThread(ConversionJob job);

    // Valid after done().
    std::vector<conversion::FileResult> takeResults() { return std::move(m_results); }
    // Total size of the converted sources minus that of their outputs, so far. Any thread.
    qint64 bytesSaved() const { return m_bytesSaved; }

signals:
    // Emitted on worker threads, in list order; connect directly to a relay.
    void currentFile(const QString &source);
    void fileFinished(int count);
    // One of these two ends every run: the outputs that existed already, and their sources.
    void finish(const QStringList &existingOutputs, const QStringList &theirSources);
    void cancelled();

protected:
    void work() override;

private:
    void prepareFolders() const;
    void freeNames();
    void reportEnd();

    ConversionJob m_job;
    std::vector<conversion::FileResult> m_results;
    std::atomic<qint64> m_bytesSaved{0};
};
