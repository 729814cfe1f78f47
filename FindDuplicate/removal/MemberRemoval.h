// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/removal/RemovalThread.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace duplicates
{

// How a removal ended.
struct RemovalResult {
    enum class Outcome {
        Moved,    // to the recycle bin
        Untraced, // it is gone from its place, and Windows did not tell where to
        Failed,   // Windows was asked to move it, and did not
        LeftAlone // it was not tried, or the user said no
    };

    Outcome outcome = Outcome::LeftAlone;
    // Why the file is where it was, in words for the user; empty when it was moved, or the user said no.
    QString notice;
    // What the disk says about the group's members now, when the file is the last copy. Empty
    // otherwise: they are to be read again then, and nobody has to wait for it.
    std::vector<MemberFacts> members;
};

// The removal of one member of a group, asked each time. Three steps: a check of the disk, the question, the
// move with another check right before it. What is moved is the file that was shown, or nothing. The last
// copy of a group is not asked about at first: the user is told in words, and has to ask for it again. For
// the page that shows the group; interface thread.
class MemberRemoval : public QObject
{
    Q_OBJECT

public:
    explicit MemberRemoval(QObject *parent = nullptr);
    // Waits for a running move and for the check right before it, so that nothing is moved afterwards, but
    // not for the first check.
    ~MemberRemoval() override;

    // Does nothing while one is running; finished() follows, never at once. `stillShown` is called when the
    // user has said yes: whether the page still shows what the question was about.
    void start(RemovalRequest request, std::function<bool()> stillShown);
    bool isRunning() const { return m_check || m_move || m_asking; }
    // The window is to close: the first check ends at once with finished(), and whatever is answered is a no.
    // A move that has begun ends as it does.
    void requestStop();

signals:
    // The first check takes long; followed by checkEnded(), before the question or finished().
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
    bool m_toldLong = false;
    QString m_toldLastCopy;                       // the path of which the last result said so
    core::RetiringPointer<RemovalThread> m_check; // its disk may take minutes to answer
    core::WorkerPointer<RemovalThread> m_move;
};

} // namespace duplicates
