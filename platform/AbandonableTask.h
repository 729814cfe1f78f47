// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

namespace platform
{

// A task on a detached thread for calls that may hang and cannot be interrupted. Its owner waits for the
// result as long as it likes, by its own means, and destroys this object to give the task up. Tasks that were
// given up and still hang are bounded for the whole program, since nothing else would stop them from piling
// up. start() and the destructor on one thread at a time.
class AbandonableTask
{
public:
    static constexpr int maxHanging = 8;

    AbandonableTask() = default;
    ~AbandonableTask();
    AbandonableTask(AbandonableTask &&) noexcept = default;
    AbandonableTask &operator=(AbandonableTask &&) = delete;

    // Once at most. Returns false without starting it while `maxHanging` tasks hang; the owner can try again
    // later. The task must own all that it uses. Throws std::system_error if there is no thread left.
    bool start(const std::function<void()> &task);

private:
    struct State;

    std::shared_ptr<State> m_state; // null until it is started
};

} // namespace platform
