// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/HeldFile.h"

#include "platform/HandleFacts.h"
#include "platform/Paths.h"

#include <cstring>
#include <limits>

namespace platform
{

namespace
{

quint64 wholeNumber(DWORD high, DWORD low)
{
    return quint64{high} << 32 | low;
}

// nullopt if the file system has no ids, which it reports as all zeros or all ones (FILE_ID_INFO and
// BY_HANDLE_FILE_INFORMATION).
std::optional<core::FileIdentity> identityOf(HANDLE file, const BY_HANDLE_FILE_INFORMATION &facts)
{
    core::FileIdentity identity{facts.dwVolumeSerialNumber,
                                wholeNumber(facts.nFileIndexHigh, facts.nFileIndexLow)};
    FILE_ID_INFO whole;
    if (GetFileInformationByHandleEx(file, FileIdInfo, &whole, sizeof whole)) {
        static_assert(sizeof whole.FileId == sizeof identity.file + sizeof identity.fileHigh);
        identity.volume = whole.VolumeSerialNumber;
        std::memcpy(&identity.file, &whole.FileId, sizeof identity.file);
        std::memcpy(&identity.fileHigh, whole.FileId.Identifier + sizeof identity.file,
                    sizeof identity.fileHigh);
    }
    constexpr quint64 none = std::numeric_limits<quint64>::max();
    const bool isNone = identity.file == none && (identity.fileHigh == none || identity.fileHigh == 0);
    return isNone || (identity.file == 0 && identity.fileHigh == 0) ? std::nullopt : std::optional(identity);
}

bool isRemote(HANDLE file)
{
    FILE_REMOTE_PROTOCOL_INFO protocol;
    return GetFileInformationByHandleEx(file, FileRemoteProtocolInfo, &protocol, sizeof protocol);
}

bool hasWholeIdentity(HANDLE file)
{
    FILE_ID_INFO whole;
    return GetFileInformationByHandleEx(file, FileIdInfo, &whole, sizeof whole);
}

} // namespace

DWORD finalPathFlags(HeldFile::Form form)
{
    switch (form) {
    case HeldFile::Form::Drive:
        return FILE_NAME_NORMALIZED | VOLUME_NAME_DOS;
    case HeldFile::Form::Device:
        return FILE_NAME_NORMALIZED | VOLUME_NAME_NT;
    case HeldFile::Form::DeviceAsOpened:
        break;
    }
    return FILE_NAME_OPENED | VOLUME_NAME_NT;
}

std::optional<core::FileFacts> factsOf(HANDLE file)
{
    BY_HANDLE_FILE_INFORMATION facts = {};
    if (!GetFileInformationByHandle(file, &facts))
        return std::nullopt;
    return core::FileFacts{
        .identity = identityOf(file, facts),
        .identityIsCertain = !isRemote(file) || hasWholeIdentity(file),
        .linkCount = facts.nNumberOfLinks,
        .attributes = facts.dwFileAttributes,
        .size = wholeNumber(facts.nFileSizeHigh, facts.nFileSizeLow),
        .lastWriteTime =
            wholeNumber(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime),
    };
}

std::wstring rawFinalPath(HANDLE file, HeldFile::Form form)
{
    std::wstring buffer(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetFinalPathNameByHandleW(file, buffer.data(), static_cast<DWORD>(buffer.size()),
                                                       finalPathFlags(form));
        // If the buffer is too small, the result is the required size.
        if (length < buffer.size()) {
            buffer.resize(length);
            return buffer;
        }
        buffer.resize(length + 1);
    }
}

// FILE_FLAG_BACKUP_SEMANTICS is needed to open folders.
HeldFile::HeldFile(const QString &path)
    : m_file(CreateFileW(apiPath(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                         nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr))
{
}

std::optional<core::FileFacts> HeldFile::facts() const
{
    return m_file ? factsOf(m_file.get()) : std::nullopt;
}

QString HeldFile::finalPath(Form form) const
{
    return m_file ? shownPath(QString::fromStdWString(rawFinalPath(m_file.get(), form))) : QString();
}

} // namespace platform
