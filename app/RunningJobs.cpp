// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/RunningJobs.h"

#include <QTimer>

#include <utility>

void RunningJobs::setRunning(int id, bool running, bool onScreen)
{
    const int change = ++m_changes[id];
    if (running)
        QTimer::singleShot(showAfter, this, [this, id, change] {
            if (m_changes.value(id) == change)
                set(id, State::Running);
        });
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
