// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileReader.h"

#include "platform/Handle.h"
#include "platform/Paths.h"

#include <algorithm>

namespace platform
{

namespace
{

class OpenedFile : public FileReader
{
public:
    explicit OpenedFile(FileHandle file) : m_file(std::move(file)) {}

    qint64 read(char *to, qint64 atMost) override
    {
        constexpr qint64 mostAtOnce = qint64{1} << 30; // the call takes 32 bits
        DWORD got = 0;
        const auto wanted = static_cast<DWORD>(std::min(atMost, mostAtOnce));
        return ReadFile(m_file.get(), to, wanted, &got, nullptr) ? qint64{got} : -1;
    }

private:
    FileHandle m_file;
};

} // namespace

std::unique_ptr<FileReader> FileReader::open(const QString &path)
{
    FileHandle file(CreateFileW(
        apiPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN | FILE_FLAG_OPEN_NO_RECALL, nullptr));
    if (!file)
        return nullptr;
    return std::make_unique<OpenedFile>(std::move(file));
}

} // namespace platform
