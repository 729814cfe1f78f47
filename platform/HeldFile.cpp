// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/HeldFile.h"

#include "platform/Paths.h"
#include "platform/Text.h"

namespace platform
{

namespace
{

quint64 wholeNumber(DWORD high, DWORD low)
{
    return quint64{high} << 32 | low;
}

} // namespace

// The flag lets folders be opened.
HeldFile::HeldFile(const QString &path)
    : m_file(CreateFileW(apiPath(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                         nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr))
{
}

std::optional<core::FileFacts> HeldFile::facts() const
{
    BY_HANDLE_FILE_INFORMATION facts = {};
    if (!m_file || !GetFileInformationByHandle(m_file.get(), &facts))
        return std::nullopt;
    return core::FileFacts{
        .identity = {facts.dwVolumeSerialNumber, wholeNumber(facts.nFileIndexHigh, facts.nFileIndexLow)},
        .linkCount = facts.nNumberOfLinks,
        .attributes = facts.dwFileAttributes,
        .size = wholeNumber(facts.nFileSizeHigh, facts.nFileSizeLow),
        .lastWriteTime =
            wholeNumber(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime),
    };
}

QString HeldFile::finalPath() const
{
    std::wstring buffer(MAX_PATH, L'\0');
    while (m_file) {
        const DWORD length =
            GetFinalPathNameByHandleW(m_file.get(), buffer.data(), static_cast<DWORD>(buffer.size()),
                                      FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
        if (length == 0)
            break;
        // When the buffer is too small, the answer is the size that would do, and so larger than the buffer.
        if (length < buffer.size())
            return shownPath(fromWide(buffer.data(), length));
        buffer.resize(length + 1);
    }
    return {};
}

} // namespace platform
