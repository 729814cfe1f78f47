// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileReader.h"

#include "platform/Handle.h"
#include "platform/Paths.h"

#include <QFile>

#include <algorithm>

#include <fcntl.h>
#include <io.h>

namespace platform
{

namespace
{

FileHandle openForReading(const QString &path, DWORD flags)
{
    return FileHandle(CreateFileW(apiPath(path).c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, flags, nullptr));
}

class OpenedFile : public FileReader
{
public:
    explicit OpenedFile(FileHandle file) : m_file(std::move(file)) {}

    qint64 read(char *to, qint64 atMost) override
    {
        constexpr qint64 maxAtOnce = qint64{1} << 30; // ReadFile takes a 32-bit size
        DWORD got = 0;
        const auto wanted = static_cast<DWORD>(std::min(atMost, maxAtOnce));
        return ReadFile(m_file.get(), to, wanted, &got, nullptr) ? qint64{got} : -1;
    }

private:
    FileHandle m_file;
};

} // namespace

std::unique_ptr<QIODevice> openShared(const QString &path)
{
    FileHandle file = openForReading(path, FILE_ATTRIBUTE_NORMAL);
    if (!file || GetFileType(file.get()) != FILE_TYPE_DISK)
        return nullptr;
    const int descriptor = _open_osfhandle(reinterpret_cast<intptr_t>(file.get()), _O_RDONLY | _O_BINARY);
    if (descriptor < 0)
        return nullptr;
    file.release(); // now owned by the descriptor
    auto device = std::make_unique<QFile>();
    if (!device->open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        _close(descriptor);
        return nullptr;
    }
    return device;
}

std::unique_ptr<FileReader> FileReader::open(const QString &path)
{
    FileHandle file = openForReading(path, FILE_FLAG_SEQUENTIAL_SCAN | FILE_FLAG_OPEN_NO_RECALL);
    if (!file)
        return nullptr;
    return std::make_unique<OpenedFile>(std::move(file));
}

} // namespace platform
