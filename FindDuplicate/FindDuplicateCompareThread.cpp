// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateCompareThread.h"

#include "platform/FileProbe.h"
#include "platform/FileReader.h"

namespace
{

class DiskFile : public duplicates::ContentReader::File
{
public:
    explicit DiskFile(std::unique_ptr<platform::FileReader> file) : m_file(std::move(file)) {}
    qint64 read(char *to, qint64 atMost) override { return m_file->read(to, atMost); }

private:
    std::unique_ptr<platform::FileReader> m_file;
};

class DiskReader : public duplicates::ContentReader
{
public:
    std::optional<quint32> attributes(const QString &path) override
    {
        return platform::fileProbe().listedAttributes(path);
    }

    std::unique_ptr<File> open(const QString &path) override
    {
        std::unique_ptr<platform::FileReader> file = platform::FileReader::open(path);
        return file ? std::make_unique<DiskFile>(std::move(file)) : nullptr;
    }
};

} // namespace

FindDuplicateCompareThread::FindDuplicateCompareThread(QStringList paths, quint64 fileSize)
    : m_paths(std::move(paths)),
      m_fileSize(fileSize)
{
    connect(this, &WorkerThread::done, this, &FindDuplicateCompareThread::compareFinish);
}

void FindDuplicateCompareThread::work()
{
    const platform::InterruptibleCalls::Call call(m_calls);
    DiskReader reader;
    const auto progress = [this](quint64 done, quint64 total) {
        if (total > 0)
            m_permille.store(
                static_cast<int>(1000.0 * static_cast<double>(done) / static_cast<double>(total)),
                std::memory_order_relaxed);
    };
    m_states = duplicates::compareContents(m_paths, m_fileSize, reader, progress, cancelFlag());
}
