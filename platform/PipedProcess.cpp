// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PipedProcess.h"

#include "platform/Handle.h"
#include "platform/Text.h"

#include <QStringBuilder>
#include <QUuid>

#include <algorithm>
#include <vector>

namespace platform
{

namespace
{

constexpr DWORD pollInterval = 50; // ms
constexpr DWORD pipeBuffer = 1 << 18;
constexpr std::size_t largestTransfer = 1 << 30;

struct Pipe {
    FileHandle ours;
    FileHandle theirs; // inheritable
};

// An anonymous pipe cannot be read with a time limit, a named one can. The name is used once.
bool makePipes(Pipe &toChild, Pipe &fromChild)
{
    const QString name =
        u"\\\\.\\pipe\\FernlightLarkspur-" % QUuid::createUuid().toString(QUuid::WithoutBraces);
    fromChild.ours.reset(CreateNamedPipeW(
        wide(name), PIPE_ACCESS_INBOUND | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
        PIPE_TYPE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1, pipeBuffer, pipeBuffer, 0, nullptr));
    if (!fromChild.ours)
        return false;
    SECURITY_ATTRIBUTES inheritable = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    fromChild.theirs.reset(CreateFileW(wide(name), GENERIC_WRITE, 0, &inheritable, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!fromChild.theirs)
        return false;
    if (!CreatePipe(toChild.theirs.put(), toChild.ours.put(), &inheritable, pipeBuffer))
        return false;
    return SetHandleInformation(toChild.ours.get(), HANDLE_FLAG_INHERIT, 0) != 0;
}

// Only these handles are inherited: another process started at the same moment must not keep a pipe open.
class StartupInfo
{
public:
    StartupInfo(HANDLE input, HANDLE output) : m_inherited{input, output}
    {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        m_buffer.resize(size);
        auto *list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_buffer.data());
        m_info.StartupInfo.cb = sizeof m_info;
        m_info.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
        m_info.StartupInfo.hStdInput = input;
        m_info.StartupInfo.hStdOutput = output;
        if (!InitializeProcThreadAttributeList(list, 1, 0, &size))
            return;
        m_info.lpAttributeList = list;
        m_usable = UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, m_inherited,
                                             sizeof m_inherited, nullptr, nullptr) != 0;
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
    std::vector<std::byte> m_buffer;
    STARTUPINFOEXW m_info = {};
    bool m_usable = false;
};

// Ends its processes when the last handle to it goes, that is, also when this process crashes.
ObjectHandle makeJob(quint64 memoryLimit)
{
    ObjectHandle job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE |
                                              JOB_OBJECT_LIMIT_PROCESS_MEMORY |
                                              JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
    limits.ProcessMemoryLimit = static_cast<SIZE_T>(memoryLimit);
    if (job)
        SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

LONG WINAPI endAtOnce(EXCEPTION_POINTERS *exception)
{
    TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

} // namespace

struct PipedProcess::Handles {
    ObjectHandle job;
    ObjectHandle process;
    ObjectHandle arrived; // set when a read is done
    FileHandle input;
    FileHandle output;
};

PipedProcess::PipedProcess(std::unique_ptr<Handles> handles) : m_handles(std::move(handles)) {}

PipedProcess::~PipedProcess()
{
    TerminateProcess(m_handles->process.get(), 1);
}

std::unique_ptr<PipedProcess> PipedProcess::start(const QString &program, quint64 memoryLimit)
{
    Pipe toChild;
    Pipe fromChild;
    if (!makePipes(toChild, fromChild))
        return nullptr;
    StartupInfo startup(toChild.theirs.get(), fromChild.theirs.get());
    if (!startup.isUsable())
        return nullptr;
    std::wstring command = QString(u'"' % program % u'"').toStdWString(); // the call may write into it
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(wide(program), command.data(), nullptr, nullptr, TRUE,
                        CREATE_NO_WINDOW | CREATE_SUSPENDED | BELOW_NORMAL_PRIORITY_CLASS |
                            EXTENDED_STARTUPINFO_PRESENT,
                        nullptr, nullptr, startup.get(), &started))
        return nullptr;
    auto handles = std::make_unique<Handles>();
    handles->process.reset(started.hProcess);
    const ObjectHandle thread(started.hThread);
    handles->job = makeJob(memoryLimit);
    // Where a job is refused, the end of the pipe ends the program as well, only without the memory limit.
    if (handles->job)
        AssignProcessToJobObject(handles->job.get(), handles->process.get());
    handles->arrived.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    handles->input = std::move(toChild.ours);
    handles->output = std::move(fromChild.ours);
    std::unique_ptr<PipedProcess> process(new PipedProcess(std::move(handles)));
    if (!process->m_handles->arrived || ResumeThread(thread.get()) == static_cast<DWORD>(-1))
        return nullptr;
    return process;
}

std::size_t PipedProcess::readSome(void *to, std::size_t bytes)
{
    OVERLAPPED overlapped = {};
    overlapped.hEvent = m_handles->arrived.get();
    const auto wanted = static_cast<DWORD>(std::min(bytes, largestTransfer));
    DWORD got = 0;
    if (!ReadFile(m_handles->output.get(), to, wanted, nullptr, &overlapped) &&
        GetLastError() != ERROR_IO_PENDING)
        return 0;
    while (WaitForSingleObject(overlapped.hEvent, pollInterval) == WAIT_TIMEOUT) {
        if (!m_giveUp || !m_giveUp())
            continue;
        TerminateProcess(m_handles->process.get(), 1);
        CancelIoEx(m_handles->output.get(), &overlapped);
        break;
    }
    // Waits: until the call is over, the system may write to `to`.
    return GetOverlappedResult(m_handles->output.get(), &overlapped, &got, TRUE) ? got : 0;
}

bool PipedProcess::read(void *to, std::size_t bytes)
{
    auto *next = static_cast<std::byte *>(to);
    while (bytes > 0) {
        const std::size_t got = readSome(next, bytes);
        if (got == 0)
            return false;
        next += got;
        bytes -= got;
    }
    return true;
}

bool PipedProcess::write(const void *from, std::size_t bytes)
{
    // Requests fit the pipe's buffer, so that this does not wait.
    DWORD written = 0;
    return WriteFile(m_handles->input.get(), from, static_cast<DWORD>(bytes), &written, nullptr) &&
           written == bytes;
}

ParentChannel::ParentChannel()
{
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetUnhandledExceptionFilter(endAtOnce);
}

bool ParentChannel::read(void *to, std::size_t bytes)
{
    auto *next = static_cast<std::byte *>(to);
    while (bytes > 0) {
        DWORD got = 0;
        if (!ReadFile(GetStdHandle(STD_INPUT_HANDLE), next,
                      static_cast<DWORD>(std::min(bytes, largestTransfer)), &got, nullptr) ||
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
                       static_cast<DWORD>(std::min(bytes, largestTransfer)), &written, nullptr))
            return false;
        next += written;
        bytes -= written;
    }
    return true;
}

} // namespace platform
