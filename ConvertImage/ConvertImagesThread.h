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
    std::vector<conversion::PlannedFile> files; // for one document: its pages, with that output each
    QString markPath;                           // the picture of the watermark; empty for none
    conversion::RunOptions options;
    QString outputFolder;   // is made when it is missing; empty: outputs lie beside their sources
    bool freeNames = false; // outputs get names that nothing bears yet
    bool keepTimes = false;
    std::shared_ptr<imaging::DecoderPool> decoders;
};

// Converts a list of files. Both lists of finish() are in the order of the sources.
class ConvertImagesThread : public core::WorkerThread
{
    Q_OBJECT

public:
    explicit ConvertImagesThread(ConversionJob job);

    // After done().
    std::vector<conversion::FileResult> takeResults() { return std::move(m_results); }
    // Of what was written so far: the bytes of sources less those of outputs. Any thread.
    qint64 bytesSaved() const { return m_bytesSaved; }

signals:
    // On the worker's threads, in the order of the list; take them with a direct connection into a relay.
    void currentFile(const QString &source);
    void fileFinished(int count);
    // One of the two ends every run: the outputs that existed already, and their sources.
    void finish(const QStringList &existingOutputs, const QStringList &theirSources);
    void cancelled();

protected:
    void work() override;

private:
    void prepareFolders() const;
    void freeNames();
    void tellEnd();

    ConversionJob m_job;
    std::vector<conversion::FileResult> m_results;
    std::atomic<qint64> m_bytesSaved{0};
};
