// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Run.h"

#include <QString>

#include <memory>

namespace imaging
{
class DecoderPool;
}

// File access for a conversion: sources are decoded in separate processes, outputs are written through
// platform::NewFile. Any thread.
class DiskFiles : public conversion::ConversionFiles
{
public:
    // `keepTimes`: outputs get the file times of their sources.
    DiskFiles(std::shared_ptr<imaging::DecoderPool> decoders, const core::CancelFlag &cancel, bool keepTimes);

    Source load(const QString &path, bool withMetadata,
                const std::function<void(qint64 bytes)> &beforeDecode) override;
    bool exists(const QString &path) override;
    std::unique_ptr<conversion::PendingOutput> begin(const QString &output, const QString &source,
                                                     QString &problem) override;

private:
    std::shared_ptr<imaging::DecoderPool> m_decoders;
    const core::CancelFlag &m_cancel;
    bool m_keepTimes;
};
