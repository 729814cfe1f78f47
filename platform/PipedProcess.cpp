// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PipedProcess.h"

#include "platform/Handle.h"
#include "platform/Text.h"

#include <QStringBuilder>
#include <QUuid>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <vector>

namespace platform
{

namespace
{

constexpr DWORD pollInterval = 50; // ms
constexpr DWORD pipeBuffer = 1 << 18;
constexpr std::size_t maxTransfer = 1 << 30;

struct Pipe {
    FileHandle ours;   // overlapped
    FileHandle theirs; // inheritable
};

// A named pipe, since an anonymous one does not support timeouts. The name is used once.
bool makePipe(Pipe &pipe, DWORD ourAccess, DWORD theirAccess)
{
    const QString name =
        u"\\\\.\\pipe\\FernlightLarkspur-" % QUuid::createUuid().toString(QUuid::WithoutBraces);
    pipe.ours.reset(CreateNamedPipeW(
        wide(name), ourAccess | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
        PIPE_TYPE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1, pipeBuffer, pipeBuffer, 0, nullptr));
    if (!pipe.ours)
        return false;
    SECURITY_ATTRIBUTES inheritable = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    pipe.theirs.reset(
        CreateFileW(wide(name), theirAccess, 0, &inheritable, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return static_cast<bool>(pipe.theirs);
}

// Only the pipe handles are inherited: another process started at the same time must not keep one open. The
// process is created inside its job, so that it can never outlive this one.
class StartupInfo
{
public:
    StartupInfo(HANDLE input, HANDLE output, HANDLE job) : m_inherited{input, output}, m_job(job)
    {
        constexpr DWORD attributes = 2;
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, attributes, 0, &size);
        m_buffer.resize(size);
        auto *list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_buffer.data());
        m_info.StartupInfo.cb = sizeof m_info;
        m_info.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
        m_info.StartupInfo.hStdInput = input;
        m_info.StartupInfo.hStdOutput = output;
        if (!InitializeProcThreadAttributeList(list, attributes, 0, &size))
            return;
        m_info.lpAttributeList = list;
        m_usable = UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, m_inherited,
                                             sizeof m_inherited, nullptr, nullptr) &&
                   UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_JOB_LIST, &m_job, sizeof m_job,
                                             nullptr, nullptr);
    }
    ~StartupInfo()
    {
        if (m_info.lpAttributeList)
            DeleteProcThreadAttributeList(m_info.lpAttributeList);
    }
    StartupInfo(const StartupInfo &) = delete;
    StartupInfo &operator=(const StartupInfo &) = delete;

    bool isUsable() const { return m_usable; }
    STARTUPINFOW *get() { return &m_info.StartupInfo; }

private:
    HANDLE m_inherited[2];
    HANDLE m_job;
    std::vector<std::byte> m_buffer;
    STARTUPINFOEXW m_info = {};
    bool m_usable = false;
};

LONG WINAPI endAfterException(EXCEPTION_POINTERS *exception)
{
    TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

// Whether the data was written to the offered shared memory or is sent through the pipe.
enum class LargeAnswer : quint8 { Sent, Shared };

std::shared_ptr<std::byte> mapped(HANDLE section, DWORD access, std::size_t bytes)
{
    void *view = section ? MapViewOfFile(section, access, 0, 0, bytes) : nullptr;
    if (!view)
        return nullptr;
    return {static_cast<std::byte *>(view), [](std::byte *at) { UnmapViewOfFile(at); }};
}

constexpr UINT abortCode = 3; // exit code of abort()

void endAfterAbort(int)
{
    TerminateProcess(GetCurrentProcess(), abortCode);
}

void endAfterTerminate()
{
    TerminateProcess(GetCurrentProcess(), abortCode);
}

} // namespace

std::shared_ptr<std::byte> ByteChannel::readLarge(std::size_t bytes)
{
    std::shared_ptr<std::byte> memory(new (std::nothrow) std::byte[bytes],
                                      std::default_delete<std::byte[]>());
    return memory && read(memory.get(), bytes) ? memory : nullptr;
}

// Kills its processes when its handle is closed, also if this process crashes.
struct ProcessGroup::Job {
    ObjectHandle handle; // null if Windows refused
};

ProcessGroup::ProcessGroup(quint64 memoryOfOne, quint64 memoryOfAll) : m_job(std::make_unique<Job>())
{
    ObjectHandle job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE |
                                              JOB_OBJECT_LIMIT_PROCESS_MEMORY | JOB_OBJECT_LIMIT_JOB_MEMORY |
                                              JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
    limits.ProcessMemoryLimit = static_cast<SIZE_T>(memoryOfOne);
    limits.JobMemoryLimit = static_cast<SIZE_T>(memoryOfAll);
    if (job && SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits))
        m_job->handle = std::move(job);
}

ProcessGroup::~ProcessGroup() = default;

struct PipedProcess::Handles {
    ObjectHandle process;
    ObjectHandle moved; // signalled when a piece was read or written
    FileHandle input;
    FileHandle output;

    bool givesUp(const StopCheck &stopCheck) const;
    template <class Begin>
    std::size_t transfer(const FileHandle &pipe, const StopCheck &stopCheck, const Begin &begin) const;
};

bool PipedProcess::Handles::givesUp(const StopCheck &stopCheck) const
{
    if (!stopCheck || !stopCheck())
        return false;
    TerminateProcess(process.get(), 1);
    return true;
}

// Reads or writes one piece through `begin`. Returns 0 if the conversation has ended.
template <class Begin>
std::size_t PipedProcess::Handles::transfer(const FileHandle &pipe, const StopCheck &stopCheck,
                                            const Begin &begin) const
{
    if (givesUp(stopCheck))
        return 0;
    OVERLAPPED overlapped = {};
    overlapped.hEvent = moved.get();
    if (!begin(pipe.get(), &overlapped) && GetLastError() != ERROR_IO_PENDING)
        return 0;
    while (WaitForSingleObject(overlapped.hEvent, pollInterval) == WAIT_TIMEOUT) {
        if (givesUp(stopCheck)) {
            CancelIoEx(pipe.get(), &overlapped);
            break;
        }
    }
    // Must wait: the system may use the caller's buffer until the operation has completed.
    DWORD bytes = 0;
    return GetOverlappedResult(pipe.get(), &overlapped, &bytes, TRUE) ? bytes : 0;
}

PipedProcess::PipedProcess(std::unique_ptr<Handles> handles) : m_handles(std::move(handles)) {}

PipedProcess::~PipedProcess()
{
    TerminateProcess(m_handles->process.get(), 1);
}

std::unique_ptr<PipedProcess> PipedProcess::start(const QString &program, const ProcessGroup &group)
{
    auto handles = std::make_unique<Handles>();
    Pipe toChild;
    Pipe fromChild;
    handles->moved.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!handles->moved || !group.m_job->handle || !makePipe(toChild, PIPE_ACCESS_OUTBOUND, GENERIC_READ) ||
        !makePipe(fromChild, PIPE_ACCESS_INBOUND, GENERIC_WRITE))
        return nullptr;
    handles->input = std::move(toChild.ours);
    handles->output = std::move(fromChild.ours);
    StartupInfo startup(toChild.theirs.get(), fromChild.theirs.get(), group.m_job->handle.get());
    if (!startup.isUsable())
        return nullptr;
    std::wstring command = QString(u'"' % program % u'"').toStdWString(); // CreateProcessW may modify it
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(wide(program), command.data(), nullptr, nullptr, TRUE,
                        CREATE_NO_WINDOW | BELOW_NORMAL_PRIORITY_CLASS | EXTENDED_STARTUPINFO_PRESENT,
                        nullptr, nullptr, startup.get(), &started))
        return nullptr;
    handles->process.reset(started.hProcess);
    const ObjectHandle thread(started.hThread);
    return std::unique_ptr<PipedProcess>(new PipedProcess(std::move(handles)));
}

bool PipedProcess::hasEnded() const
{
    return WaitForSingleObject(m_handles->process.get(), 0) == WAIT_OBJECT_0;
}

bool PipedProcess::read(void *to, std::size_t bytes)
{
    auto *next = static_cast<std::byte *>(to);
    while (bytes > 0) {
        const auto wanted = static_cast<DWORD>(std::min(bytes, maxTransfer));
        const std::size_t got =
            m_handles->transfer(m_handles->output, m_stopCheck, [&](HANDLE pipe, OVERLAPPED *overlapped) {
                return ReadFile(pipe, next, wanted, nullptr, overlapped);
            });
        if (got == 0)
            return false;
        next += got;
        bytes -= got;
    }
    return true;
}

bool PipedProcess::write(const void *from, std::size_t bytes)
{
    const auto *next = static_cast<const std::byte *>(from);
    while (bytes > 0) {
        const auto offered = static_cast<DWORD>(std::min(bytes, maxTransfer));
        const std::size_t taken =
            m_handles->transfer(m_handles->input, m_stopCheck, [&](HANDLE pipe, OVERLAPPED *overlapped) {
                return WriteFile(pipe, next, offered, nullptr, overlapped);
            });
        if (taken == 0)
            return false;
        next += taken;
        bytes -= taken;
    }
    return true;
}

// The other process gets a handle of its own; sends 0 if there is no memory to share.
std::shared_ptr<std::byte> PipedProcess::readLarge(std::size_t bytes)
{
    const auto size = static_cast<quint64>(bytes);
    const ObjectHandle section(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE,
                                                  static_cast<DWORD>(size >> 32), static_cast<DWORD>(size),
                                                  nullptr));
    std::shared_ptr<std::byte> memory = mapped(section.get(), FILE_MAP_READ | FILE_MAP_WRITE, bytes);
    HANDLE theirs = nullptr;
    if (memory && !DuplicateHandle(GetCurrentProcess(), section.get(), m_handles->process.get(), &theirs,
                                   FILE_MAP_READ | FILE_MAP_WRITE, FALSE, 0))
        theirs = nullptr;
    const auto offer = reinterpret_cast<quint64>(theirs);
    LargeAnswer answer = LargeAnswer::Sent;
    if (!write(&offer, sizeof offer) || (theirs && !read(&answer, sizeof answer)))
        return nullptr;
    return answer == LargeAnswer::Shared ? memory : ByteChannel::readLarge(bytes);
}

ParentChannel::ParentChannel()
{
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetUnhandledExceptionFilter(endAfterException);
    // In a program without a console, the C library reports abort() and failed assertions in a message box.
    _set_error_mode(_OUT_TO_STDERR);
    std::signal(SIGABRT, endAfterAbort);
    std::set_terminate(endAfterTerminate);
}

bool ParentChannel::read(void *to, std::size_t bytes)
{
    auto *next = static_cast<std::byte *>(to);
    while (bytes > 0) {
        DWORD got = 0;
        if (!ReadFile(GetStdHandle(STD_INPUT_HANDLE), next, static_cast<DWORD>(std::min(bytes, maxTransfer)),
                      &got, nullptr) ||
            got == 0)
            return false;
        next += got;
        bytes -= got;
    }
    return true;
}

bool ParentChannel::write(const void *from, std::size_t bytes)
{
    const auto *next = static_cast<const std::byte *>(from);
    while (bytes > 0) {
        DWORD written = 0;
        if (!WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), next,
                       static_cast<DWORD>(std::min(bytes, maxTransfer)), &written, nullptr))
            return false;
        next += written;
        bytes -= written;
    }
    return true;
}

bool ParentChannel::writeLarge(const void *from, std::size_t bytes)
{
    quint64 offer = 0;
    if (!read(&offer, sizeof offer))
        return false;
    const ObjectHandle section(reinterpret_cast<HANDLE>(offer));
    const std::shared_ptr<std::byte> memory = mapped(section.get(), FILE_MAP_WRITE, bytes);
    const LargeAnswer answer = memory ? LargeAnswer::Shared : LargeAnswer::Sent;
    if (memory)
        std::memcpy(memory.get(), from, bytes);
    if (section && !write(&answer, sizeof answer))
        return false;
    return memory || write(from, bytes);
}

} // namespace platform
