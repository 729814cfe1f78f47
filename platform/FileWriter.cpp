// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileWriter.h"

#include "platform/Paths.h"
#include "platform/Text.h"

#include <winioctl.h>
#include <winternl.h>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace platform
{

namespace
{

// Enough for a few thousand runs or streams per call.
constexpr std::size_t answerSize = 64 * 1024;
constexpr std::size_t maxRuns = 10'000'000;

using Answer = std::vector<std::max_align_t>;

Answer answerBuffer()
{
    return Answer(answerSize / sizeof(std::max_align_t));
}

bool move(HANDLE file, qint64 distance, DWORD from)
{
    LARGE_INTEGER position;
    position.QuadPart = distance;
    return SetFilePointerEx(file, position, nullptr, from);
}

constexpr auto bufferOverflow = static_cast<NTSTATUS>(0x80000005); // more runs follow
constexpr auto endOfFile = static_cast<NTSTATUS>(0xC0000011);      // no cluster after the requested start

NTSTATUS askForRuns(HANDLE file, qint64 first, Answer &answer)
{
    STARTING_VCN_INPUT_BUFFER start = {};
    start.StartingVcn.QuadPart = first;
    IO_STATUS_BLOCK done = {};
    NTSTATUS status = NtFsControlFile(file, nullptr, nullptr, nullptr, &done, FSCTL_GET_RETRIEVAL_POINTERS,
                                      &start, sizeof start, answer.data(), static_cast<ULONG>(answerSize));
    if (status == STATUS_PENDING) {
        WaitForSingleObject(file, INFINITE);
        status = done.Status;
    }
    return status;
}

// Appends the runs of one result; false if they are inconsistent.
bool appendRuns(const Answer &answer, std::vector<ClusterRun> &runs)
{
    const auto *found = reinterpret_cast<const RETRIEVAL_POINTERS_BUFFER *>(answer.data());
    constexpr std::size_t most = (answerSize - offsetof(RETRIEVAL_POINTERS_BUFFER, Extents)) /
                                 sizeof(RETRIEVAL_POINTERS_BUFFER::Extents[0]);
    if (found->ExtentCount == 0 || found->ExtentCount > most)
        return false;
    qint64 first = found->StartingVcn.QuadPart;
    for (DWORD index = 0; index < found->ExtentCount; ++index) {
        const auto &extent = found->Extents[index];
        if (extent.NextVcn.QuadPart <= first)
            return false;
        runs.push_back({first, extent.Lcn.QuadPart, extent.NextVcn.QuadPart - first});
        first = extent.NextVcn.QuadPart;
    }
    return true;
}

} // namespace

bool FileWriter::moveTo(quint64 position)
{
    return position <= static_cast<quint64>(std::numeric_limits<qint64>::max()) &&
           move(m_file, static_cast<qint64>(position), FILE_BEGIN);
}

bool FileWriter::moveBack(quint64 bytes)
{
    return bytes <= static_cast<quint64>(std::numeric_limits<qint64>::max()) &&
           move(m_file, -static_cast<qint64>(bytes), FILE_CURRENT);
}

quint64 FileWriter::write(const char *data, quint64 bytes)
{
    constexpr quint64 most = std::numeric_limits<DWORD>::max();
    DWORD written = 0;
    return WriteFile(m_file, data, static_cast<DWORD>(std::min(bytes, most)), &written, nullptr) ? written
                                                                                                 : 0;
}

bool setLastWriteTime(HANDLE file, quint64 time)
{
    const FILETIME written{static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
    return SetFileTime(file, nullptr, nullptr, &written);
}

std::vector<FileStream> alternateStreams(HANDLE file)
{
    std::vector<FileStream> streams;
    Answer answer = answerBuffer();
    const auto size = [&answer] { return answer.size() * sizeof(std::max_align_t); };
    while (!GetFileInformationByHandleEx(file, FileStreamInfo, answer.data(), static_cast<DWORD>(size()))) {
        constexpr std::size_t maxBytes = 64 << 20; // enough for hundreds of thousands of streams
        if (GetLastError() != ERROR_MORE_DATA || size() >= maxBytes)
            return streams;
        answer.resize(4 * answer.size());
    }
    const auto *bytes = reinterpret_cast<const std::byte *>(answer.data());
    for (std::size_t at = 0;;) {
        const auto *info = reinterpret_cast<const FILE_STREAM_INFO *>(bytes + at);
        const QString name = fromWide(info->StreamName, info->StreamNameLength / sizeof(wchar_t));
        if (name != QLatin1String("::$DATA"))
            streams.push_back({name, static_cast<quint64>(info->StreamSize.QuadPart)});
        if (info->NextEntryOffset == 0 || at + info->NextEntryOffset + sizeof(FILE_STREAM_INFO) > size())
            return streams;
        at += info->NextEntryOffset;
    }
}

std::optional<std::vector<ByteRange>> allocatedRanges(HANDLE file, quint64 size)
{
    std::vector<ByteRange> ranges;
    Answer answer = answerBuffer();
    FILE_ALLOCATED_RANGE_BUFFER wanted = {};
    wanted.Length.QuadPart = static_cast<LONGLONG>(size);
    for (;;) {
        DWORD bytes = 0;
        const bool complete = DeviceIoControl(file, FSCTL_QUERY_ALLOCATED_RANGES, &wanted, sizeof wanted,
                                              answer.data(), static_cast<DWORD>(answerSize), &bytes, nullptr);
        if (!complete && GetLastError() != ERROR_MORE_DATA)
            return std::nullopt;
        const auto *found = reinterpret_cast<const FILE_ALLOCATED_RANGE_BUFFER *>(answer.data());
        const std::size_t count = bytes / sizeof *found;
        for (std::size_t index = 0; index < count; ++index) {
            ranges.push_back({static_cast<quint64>(found[index].FileOffset.QuadPart),
                              static_cast<quint64>(found[index].Length.QuadPart)});
        }
        if (complete)
            return ranges;
        if (count == 0)
            return std::nullopt;
        const quint64 next = ranges.back().offset + ranges.back().length;
        wanted.FileOffset.QuadPart = static_cast<LONGLONG>(next);
        wanted.Length.QuadPart = static_cast<LONGLONG>(size - std::min(next, size));
    }
}

std::optional<std::vector<ClusterRun>> clusterRuns(HANDLE file)
{
    std::vector<ClusterRun> runs;
    Answer answer = answerBuffer();
    for (;;) {
        const qint64 first = runs.empty() ? 0 : runs.back().virtualCluster + runs.back().clusters;
        const NTSTATUS status = askForRuns(file, first, answer);
        if (status == endOfFile && runs.empty())
            return std::nullopt;
        if ((status < 0 && status != bufferOverflow) || !appendRuns(answer, runs) || runs.size() > maxRuns)
            return std::nullopt;
        if (status != bufferOverflow)
            return runs;
    }
}

quint64 freeBytes(const QString &folder)
{
    ULARGE_INTEGER free = {};
    return GetDiskFreeSpaceExW(apiPath(folder).c_str(), &free, nullptr, nullptr) ? free.QuadPart : 0;
}

} // namespace platform
