// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/WorkerThread.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace core
{

// What a question can use while it is being answered, on its own thread.
class Asking
{
public:
    using Tell = std::function<void(std::function<void()>)>;

    Asking(const CancelFlag &cancel, Tell tell) : m_cancel(cancel), m_tell(std::move(tell)) {}

    // The answer is not wanted any more.
    const CancelFlag &cancel() const noexcept { return m_cancel; }
    bool isCancelled() const noexcept { return m_cancel.isSet(); }
    // A part of the answer: calls `part` later on the interface thread, unless the question is given up
    // first.
    void tell(std::function<void()> part) const { m_tell(std::move(part)); }

private:
    const CancelFlag &m_cancel;
    Tell m_tell;
};

// Asks the disk about what is on the screen. The answer may come when the user has moved on: a sleeping disk
// takes seconds, a lost share minutes. Each question runs on its own thread; a newer one replaces it, and
// nobody waits for a call that hangs. The number of hanging calls is bounded: at the bound, the newest
// question waits until one of them ends. Lives on the interface thread.
class LatestAnswer : public QObject
{
public:
    static constexpr int maxHanging = 3;          // calls that one object leaves behind
    static constexpr int maxHangingTogether = 12; // that all of them do

    explicit LatestAnswer(QObject *parent = nullptr);
    // As forget().
    ~LatestAnswer() override;

    // `ask(asking)` runs on a thread of its own and must hold everything it uses, for it may outlive this
    // object. `answered(answer)` is called on the interface thread, unless a newer question or forget() came
    // first. `failed` gets the text of what `ask` threw; without one the screen stays as it is. `interrupt`
    // ends a call that `ask` hangs in, where the system can, and is called from the interface thread.
    template <class Ask, class Answered>
    void ask(Ask ask, Answered answered, std::function<void(const QString &)> failed = {},
             std::function<void()> interrupt = {})
    {
        using Answer = std::invoke_result_t<Ask &, const Asking &>;
        runQuestion({[ask = std::move(ask), answered = std::move(answered)](const Asking &asking) mutable {
                         auto answer = std::make_shared<Answer>(ask(asking));
                         return Effect([answer, answered] { answered(std::move(*answer)); });
                     },
                     std::move(failed), std::move(interrupt)});
    }
    // The same for a worker of a class of its own, which answers by its signals and holds nothing but its own
    // data. Takes it over; started at once, or when it may be.
    void run(WorkerThread *worker);
    // The worker that was started last; null after forget(). For a slot of its signals.
    template <class Worker>
    Worker *current() const
    {
        return static_cast<Worker *>(m_current.get());
    }
    // Gives up the question that is being answered or waits.
    void forget();
    // A question has not been answered.
    bool isWaiting() const { return (m_current && !m_done) || m_next; }

private:
    using Effect = std::function<void()>;
    struct Question {
        std::function<Effect(const Asking &)> ask;
        std::function<void(const QString &)> failed;
        std::function<void()> interrupt;
    };
    class Thread;

    void runQuestion(Question question);
    void startNext();
    void retireCurrent();
    bool mayStart();

    RetiringPointer<WorkerThread> m_current;
    bool m_done = false;                  // the current one
    RetiringPointer<WorkerThread> m_next; // waits for a hanging one to end
    QList<QPointer<QObject>> m_hanging;
    QTimer m_retry;
};

} // namespace core
