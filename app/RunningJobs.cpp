// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/RunningJobs.h"

void RunningJobs::setRunning(int id, bool running, bool onScreen)
{
    if (running)
        set(id, State::Running);
    else if (state(id) == State::Running)
        set(id, onScreen ? State::None : State::Ended);
}

void RunningJobs::lookedAt(int id)
{
    if (state(id) == State::Ended)
        set(id, State::None);
}

void RunningJobs::set(int id, State state)
{
    if (std::exchange(m_states[id], state) != state)
        emit changed(id, state);
}

QString RunningJobs::text(State state)
{
    switch (state) {
    case State::Running:
        return tr("Running");
    case State::Ended:
        return tr("Finished");
    default:
        return {};
    }
}
