// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AbandonableTask.h"

#include "platform/DetachedThread.h"

#include <atomic>

namespace platform
{

namespace
{

// Given up and not ended yet.
std::atomic_int hanging = 0;

} // namespace

struct AbandonableTask::State {
    std::atomic_bool left = false; // by the first of owner and task

    // Whether the other side has left already.
    bool leave() { return left.exchange(true); }
};

AbandonableTask::~AbandonableTask()
{
    if (!m_state)
        return;
    ++hanging; // before leaving: the task takes it back when it ends
    if (m_state->leave())
        --hanging;
}

bool AbandonableTask::start(const std::function<void()> &task)
{
    if (hanging >= maxHanging)
        return false;
    const auto state = std::make_shared<State>();
    runDetached([state, task] {
        task();
        if (state->leave())
            --hanging;
    });
    m_state = state;
    return true;
}

} // namespace platform
