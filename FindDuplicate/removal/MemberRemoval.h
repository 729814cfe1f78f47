// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/removal/RemovalThread.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace duplicates
{

// The outcome of a removal.
struct RemovalResult {
    enum class Outcome {
        Moved,    // to the recycle bin
        Untraced, // it is gone from its location, but Windows did not report the new one
        Failed,   // Windows could not move it
        LeftAlone // not attempted, or the user said no
    };

    Outcome outcome = Outcome::LeftAlone;
    // Why the file was not moved, as a text for the user; empty if it was moved, or if the user said no.
    QString notice;
    // The current facts of the group's members if the file is the last copy. Otherwise empty: they must then
    // be read again, which nobody has to wait for.
    std::vector<MemberFacts> members;
};

// Removes one member of a group after asking the user. Three steps: a disk check, the question, and the move
// with another check just before it. Either the file that was shown is moved, or nothing. For the last copy
// of a group the first request only shows a notice; the user has to request it again. Used by the page that
// shows the group; interface thread.
class MemberRemoval : public QObject
{
    Q_OBJECT

public:
    explicit MemberRemoval(QObject *parent = nullptr);
    // Waits for a running move and the check just before it, so that nothing is moved afterwards, but not for
    // the first check.
    ~MemberRemoval() override;

    // Does nothing while a removal is running; finished() is always emitted later. `stillShown` is called
    // after a Yes and returns whether the page still shows the file in question.
    void start(RemovalRequest request, std::function<bool()> stillShown);
    bool isRunning() const { return m_check || m_move || m_asking; }
    // The window is about to close: the first check ends at once with finished(), and any answer counts as a
    // no. A move that has started is completed.
    void requestStop();

signals:
    // The first check is slow; followed by checkEnded() before the question or finished().
    void checkTakesLong();
    void checkEnded();
    void finished(const duplicates::RemovalResult &result);

private:
    void startThread(RemovalThread::Step step, RemovalRequest request);
    void onProcessFinish();
    void endPatience();
    void ask(RemovalRequest request);
    void finish(RemovalResult result = {});

    std::function<bool()> m_stillShown;
    bool m_asking = false;
    bool m_stopRequested = false;
    QTimer m_patience;
    bool m_slowReported = false;
    QString m_lastCopyNoticePath;                 // path for which the last result was this notice
    core::RetiringPointer<RemovalThread> m_check; // its disk may take minutes to respond
    core::WorkerPointer<RemovalThread> m_move;
};

} // namespace duplicates
