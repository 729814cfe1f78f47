// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/DiskFiles.h"

#include "ConvertImage/engine/metadata/JpegMetadata.h"
#include "core/SizeText.h"
#include "imaging/DecoderPool.h"
#include "imaging/engine/ImageLoader.h"
#include "platform/FileWriter.h"
#include "platform/NewFile.h"
#include "platform/Paths.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace
{

QString tr(const char *text)
{
    return QCoreApplication::translate("DiskFiles", text);
}

// Why the image could not be decoded.
QString refusal(const QString &path, bool isTooLarge)
{
    if (isTooLarge)
        return tr("Too large: more than %1 of memory")
            .arg(core::sizeText(qint64(imaging::imageAllocationLimit) << 20));
    return QFile(path).open(QIODevice::ReadOnly) ? tr("The file is not a readable picture")
                                                 : tr("The file cannot be opened");
}

class DiskOutput : public conversion::PendingOutput
{
public:
    DiskOutput(const QString &output, const QDateTime &time) : m_file(output), m_time(time) {}

    bool isOpen() { return m_file.file().isOpen(); }
    QString problem() { return m_file.file().errorString(); }
    QIODevice &device() override { return m_file.file(); }

    Placed place(bool replace, QString &problem) override
    {
        m_file.file().flush(); // a later write would set the current time again
        if (m_time.isValid())
            m_file.file().setFileTime(m_time, QFileDevice::FileModificationTime);
        switch (m_file.place(replace, problem)) {
        case platform::NewFile::Placed::Done:
            return Placed::Done;
        case platform::NewFile::Placed::NameTaken:
            return Placed::Exists;
        case platform::NewFile::Placed::Failed:
            break;
        }
        return Placed::Failed;
    }
    QString explained(const QString &problem) override
    {
        constexpr quint64 room = 1 << 20; // after a short write the disk is nearly full
        const QString folder = QFileInfo(m_file.file().fileName()).path();
        return QFileInfo(folder).isDir() && platform::freeBytes(folder) < room ? tr("The disk is full")
                                                                               : problem;
    }

private:
    platform::NewFile m_file;
    QDateTime m_time;
};

} // namespace

DiskFiles::DiskFiles(std::shared_ptr<imaging::DecoderPool> decoders, const core::CancelFlag &cancel,
                     bool keepTimes)
    : m_decoders(std::move(decoders)),
      m_cancel(cancel),
      m_keepTimes(keepTimes)
{
}

conversion::ConversionFiles::Source DiskFiles::load(const QString &path, bool withMetadata,
                                                    const std::function<void(qint64)> &beforeDecode)
{
    Source source;
    const QFileInfo facts(path);
    if (!facts.isFile()) {
        source.problem = tr("The file is no longer there");
        return source;
    }
    source.bytes = facts.size();
    if (withMetadata) {
        if (QFile file(path); file.open(QIODevice::ReadOnly))
            source.metadata = conversion::readMetadata(file);
    }
    bool isTooLarge = false;
    std::optional<imaging::LoadedImage> loaded =
        m_decoders->source(path, beforeDecode, m_cancel, &isTooLarge);
    if (!loaded) {
        source.problem = refusal(path, isTooLarge);
        return source;
    }
    source.image = std::move(loaded->image);
    if (QFile file(path); file.open(QIODevice::ReadOnly) && conversion::isCutOffJpeg(file))
        source.note = tr("The end of the source is missing");
    return source;
}

bool DiskFiles::exists(const QString &path)
{
    return platform::fileExists(path);
}

std::unique_ptr<conversion::PendingOutput> DiskFiles::begin(const QString &output, const QString &source,
                                                            QString &problem)
{
    QDateTime time;
    if (m_keepTimes && !source.isEmpty())
        time = QFileInfo(source).lastModified();
    auto pending = std::make_unique<DiskOutput>(output, time);
    if (pending->isOpen())
        return pending;
    problem = pending->problem();
    return nullptr;
}
