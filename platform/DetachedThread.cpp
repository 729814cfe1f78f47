// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DetachedThread.h"

#include "platform/Handle.h"

#include <process.h>

#include <memory>
#include <system_error>
#include <utility>

namespace platform
{

namespace
{

using Task = std::function<void()>;

unsigned __stdcall run(void *argument)
{
    const std::unique_ptr<Task> task(static_cast<Task *>(argument));
    (*task)();
    return 0;
}

} // namespace

void runDetached(Task task)
{
    auto owned = std::make_unique<Task>(std::move(task));
    const ObjectHandle thread(
        reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, run, owned.get(), 0, nullptr)));
    if (!thread)
        throw std::system_error(errno, std::generic_category());
    static_cast<void>(owned.release()); // the thread owns it now
}

} // namespace platform
