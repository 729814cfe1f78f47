// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/machine/WindowsMachine.h"

#include "SystemInfo/engine/TaskXml.h"
#include "platform/Com.h"
#include "platform/Text.h"

#include <initguid.h>

#include <oleauto.h>
#include <taskschd.h>

namespace systeminfo
{

using platform::ComPointer;

namespace
{

constexpr std::size_t maxTasks = 5000;
constexpr int maxDepth = 32;

// BSTRs returned by COM.
struct BasicStringTraits {
    using Raw = BSTR;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { SysFreeString(raw); }
};
using BasicString = platform::UniqueHandle<BasicStringTraits>;

template <class Object>
QString textOf(Object &object, HRESULT (STDMETHODCALLTYPE Object::*get)(BSTR *))
{
    BasicString text;
    if (FAILED((object.*get)(text.put())) || !text)
        return {};
    return platform::fromWide(text.get(), static_cast<qsizetype>(SysStringLen(text.get())));
}

// For "never" the scheduler returns 30 December 1899 (zero in its date type) or a day in November 1999.
QDateTime timeOf(IRegisteredTask &task, HRESULT (STDMETHODCALLTYPE IRegisteredTask::*get)(DATE *))
{
    DATE date = 0;
    SYSTEMTIME time = {};
    if (FAILED((task.*get)(&date)) || !VariantTimeToSystemTime(date, &time) || time.wYear < 2000)
        return {};
    return QDateTime(QDate(time.wYear, time.wMonth, time.wDay),
                     QTime(time.wHour, time.wMinute, time.wSecond));
}

VARIANT numbered(LONG index)
{
    VARIANT variant;
    VariantInit(&variant);
    variant.vt = VT_I4;
    variant.lVal = index;
    return variant;
}

class TaskWalk
{
public:
    explicit TaskWalk(const Machine &machine) : m_machine(machine) {}

    TaskList run()
    {
        VARIANT here;
        VariantInit(&here);
        ComPointer<ITaskService> service;
        ComPointer<ITaskFolder> root;
        const BasicString path(SysAllocString(L"\\"));
        m_list.read = SUCCEEDED(CoCreateInstance(CLSID_TaskScheduler, nullptr, CLSCTX_INPROC_SERVER,
                                                 IID_ITaskService, service.putVoid())) &&
                      SUCCEEDED(service->Connect(here, here, here, here)) &&
                      SUCCEEDED(service->GetFolder(path.get(), root.put()));
        if (m_list.read)
            walk(*root.get(), 0);
        return std::move(m_list);
    }

private:
    void walk(ITaskFolder &folder, int depth)
    {
        addTasks(folder);
        ComPointer<ITaskFolderCollection> folders;
        LONG count = 0;
        if (depth == maxDepth || FAILED(folder.GetFolders(0, folders.put())) ||
            FAILED(folders->get_Count(&count)))
            return;
        for (LONG i = 1; i <= count && !m_list.cutOff && !m_machine.stopRequested(); ++i) {
            ComPointer<ITaskFolder> child;
            if (SUCCEEDED(folders->get_Item(numbered(i), child.put())))
                walk(*child.get(), depth + 1);
        }
    }

    void addTasks(ITaskFolder &folder)
    {
        ComPointer<IRegisteredTaskCollection> tasks;
        LONG count = 0;
        if (FAILED(folder.GetTasks(TASK_ENUM_HIDDEN, tasks.put())) || FAILED(tasks->get_Count(&count)))
            return;
        const QString path = textOf(folder, &ITaskFolder::get_Path);
        for (LONG i = 1; i <= count && !m_machine.stopRequested(); ++i) {
            ComPointer<IRegisteredTask> task;
            m_list.cutOff = m_list.tasks.size() >= maxTasks;
            if (m_list.cutOff)
                return;
            if (SUCCEEDED(tasks->get_Item(numbered(i), task.put())))
                add(*task.get(), path);
        }
    }

    void add(IRegisteredTask &task, const QString &folder)
    {
        ScheduledTask found;
        found.name = textOf(task, &IRegisteredTask::get_Name);
        found.folder = folder;
        TASK_STATE state = TASK_STATE_UNKNOWN;
        if (SUCCEEDED(task.get_State(&state)))
            found.state = state;
        LONG result = 0;
        if (SUCCEEDED(task.get_LastTaskResult(&result)))
            found.lastResult = static_cast<quint32>(result);
        found.lastRun = timeOf(task, &IRegisteredTask::get_LastRunTime);
        found.nextRun = timeOf(task, &IRegisteredTask::get_NextRunTime);
        readTaskDefinition(textOf(task, &IRegisteredTask::get_Xml), found);
        m_list.tasks.push_back(std::move(found));
    }

    const Machine &m_machine;
    TaskList m_list;
};

} // namespace

TaskList WindowsMachine::tasks()
{
    return TaskWalk(*this).run();
}

} // namespace systeminfo
