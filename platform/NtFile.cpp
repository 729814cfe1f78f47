// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/NtFile.h"

#include "platform/HandleFacts.h"

#include <cstddef>
#include <vector>

namespace platform
{

namespace
{

UNICODE_STRING unicode(QStringView text)
{
    const auto bytes = static_cast<USHORT>(text.size() * 2);
    return {bytes, bytes, const_cast<PWSTR>(reinterpret_cast<const wchar_t *>(text.utf16()))};
}

} // namespace

NTSTATUS openAt(HANDLE folder, QStringView name, ACCESS_MASK access, ULONG share, ULONG options,
                FileHandle &file)
{
    constexpr qsizetype maxName = 32'767; // UNICODE_STRING has a 16-bit size in bytes
    if (name.size() > maxName)
        return static_cast<NTSTATUS>(STATUS_INVALID_PARAMETER);
    UNICODE_STRING text = unicode(name);
    OBJECT_ATTRIBUTES attributes = {};
    InitializeObjectAttributes(&attributes, &text, OBJ_CASE_INSENSITIVE, folder, nullptr);
    IO_STATUS_BLOCK done = {};
    HANDLE opened = nullptr;
    const NTSTATUS status = NtOpenFile(&opened, access, &attributes, &done, share, options);
    if (status >= 0)
        file.reset(opened);
    return status;
}

NTSTATUS renameAt(HANDLE file, HANDLE folder, QStringView name)
{
    const auto bytes = static_cast<std::size_t>(name.size()) * sizeof(wchar_t);
    const std::size_t size = offsetof(FILE_RENAME_INFO, FileName) + bytes + sizeof(wchar_t);
    std::vector<std::max_align_t> buffer(size / sizeof(std::max_align_t) + 1);
    auto *information = new (buffer.data()) FILE_RENAME_INFO{};
    information->RootDirectory = folder;
    information->FileNameLength = static_cast<DWORD>(bytes);
    std::memcpy(information->FileName, name.utf16(), bytes);
    IO_STATUS_BLOCK done = {};
    return NtSetInformationFile(file, &done, information, static_cast<ULONG>(size), FileRenameInformation);
}

NTSTATUS markForRemoval(HANDLE file)
{
    FILE_DISPOSITION_INFO information = {};
    information.DeleteFile = TRUE;
    IO_STATUS_BLOCK done = {};
    return NtSetInformationFile(file, &done, &information, sizeof information, FileDispositionInformation);
}

// Two queries that Wine answers from the open file; the single combined one would make it build the path.
std::optional<QuickFacts> quickFactsOf(HANDLE file)
{
    IO_STATUS_BLOCK done = {};
    FILE_BASIC_INFORMATION basic;
    FILE_STANDARD_INFORMATION standard;
    if (NtQueryInformationFile(file, &done, &basic, sizeof basic, FileBasicInformation) < 0 ||
        NtQueryInformationFile(file, &done, &standard, sizeof standard, FileStandardInformation) < 0)
        return std::nullopt;
    return QuickFacts{.attributes = basic.FileAttributes,
                      .size = static_cast<quint64>(standard.EndOfFile.QuadPart),
                      .lastWriteTime = static_cast<quint64>(basic.LastWriteTime.QuadPart),
                      .linkCount = standard.NumberOfLinks};
}

std::optional<quint64> fileNumberOf(HANDLE file)
{
    IO_STATUS_BLOCK done = {};
    FILE_INTERNAL_INFORMATION information;
    if (NtQueryInformationFile(file, &done, &information, sizeof information, FileInternalInformation) < 0)
        return std::nullopt;
    const auto number = static_cast<quint64>(information.IndexNumber.QuadPart);
    constexpr quint64 none = ~quint64{0}; // the id needs more than 64 bits (ReFS)
    return number == 0 || number == none ? std::nullopt : std::optional(number);
}

DWORD reparseTagOf(HANDLE file)
{
    FILE_ATTRIBUTE_TAG_INFO information = {};
    return GetFileInformationByHandleEx(file, FileAttributeTagInfo, &information, sizeof information)
               ? information.ReparseTag
               : 0;
}

bool isLinkTag(DWORD tag)
{
    return tag == 0 || IsReparseTagNameSurrogate(tag);
}

Guarded guardedError(DWORD error)
{
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH:
        return Guarded::Vanished;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return Guarded::InUse;
    case ERROR_ACCESS_DENIED:
    case ERROR_PRIVILEGE_NOT_HELD:
        return Guarded::Denied;
    case ERROR_DIR_NOT_EMPTY:
        return Guarded::NotEmpty;
    case ERROR_ALREADY_EXISTS:
    case ERROR_FILE_EXISTS:
        return Guarded::NameTaken;
    default:
        return Guarded::Failed;
    }
}

Guarded guardedStatus(NTSTATUS status)
{
    constexpr auto deletePending = static_cast<NTSTATUS>(0xC0000056);
    constexpr auto cannotDelete = static_cast<NTSTATUS>(0xC0000121);
    constexpr auto isADirectory = static_cast<NTSTATUS>(0xC00000BA);
    // Win32 maps all three to ERROR_ACCESS_DENIED.
    if (status == deletePending)
        return Guarded::Vanished;
    if (status == cannotDelete)
        return Guarded::InUse;
    if (status == isADirectory)
        return Guarded::Changed;
    return guardedError(RtlNtStatusToDosError(status));
}

} // namespace platform
