// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace platform
{

// Runs the task on a thread of its own that nobody can wait for: for calls that may hang and cannot be
// interrupted. The task is destroyed when it has ended. Throws std::system_error when there is no thread to
// be had.
//
// Not std::thread with detach(): in the thread library of mingw, detaching a thread that is just ending hands
// its entry to another thread while the first still uses it, and a later join() somewhere else then ends the
// program.
void runDetached(std::function<void()> task);

} // namespace platform
