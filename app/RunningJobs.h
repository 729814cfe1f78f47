// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>

// What runs on the pages, for those who look at another one: the side panel and the home page show it. Pages
// say by showToolbarSignal(false) that a job has begun, and by true that it has ended.
class RunningJobs : public QObject
{
    Q_OBJECT

public:
    enum class State {
        None,
        Running,
        Ended // while another page was on the screen, and nobody has looked since
    };

    explicit RunningJobs(QObject *parent = nullptr) : QObject(parent) {}

    void setRunning(int id, bool running, bool onScreen);
    // The page came on the screen.
    void lookedAt(int id);
    State state(int id) const { return m_states.value(id, State::None); }

    // "Running", in words for cards and tool tips; empty for State::None.
    static QString text(State state);

signals:
    void changed(int id, RunningJobs::State state);

private:
    void set(int id, State state);

    QHash<int, State> m_states; // by module id
};
