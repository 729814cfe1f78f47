// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace platform
{

// Runs the task on a detached thread: for calls that may hang and cannot be cancelled. The task is destroyed
// when it has finished. Throws std::system_error if no thread can be created.
//
// Does not use std::thread::detach(): in winpthreads, detaching a thread that is just ending releases its
// entry for reuse while the thread still uses it, and a later join() of another thread may crash the program.
void runDetached(std::function<void()> task);

} // namespace platform
