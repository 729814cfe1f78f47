// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>

// What runs on the pages, so that the side panel and the home page can show it while the user is on another
// page. Pages emit showToolbarSignal(false) when a job begins, and true when it has ended.
class RunningJobs : public QObject
{
    Q_OBJECT

public:
    enum class State {
        None,
        Running,
        Ended // while another page was on the screen, and nobody has looked since
    };

    // A job is shown once it has run this long: a shorter one would only make the card flicker.
    static constexpr int showAfter = 500; // ms

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
    QHash<int, int> m_changes;  // calls of setRunning(), by module id
};
