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

// Available to a query while it runs on its own thread.
class Asking
{
public:
    using Tell = std::function<void(std::function<void()>)>;

    Asking(const CancelFlag &cancel, Tell tell) : m_cancel(cancel), m_tell(std::move(tell)) {}

    // Set when the answer is no longer wanted.
    const CancelFlag &cancel() const noexcept { return m_cancel; }
    bool isCancelled() const noexcept { return m_cancel.isSet(); }
    // Delivers a partial answer: `part` is called later on the interface thread, unless the query is
    // abandoned first.
    void tell(std::function<void()> part) const { m_tell(std::move(part)); }

private:
    const CancelFlag &m_cancel;
    Tell m_tell;
};

// Runs disk queries about what is on the screen. By the time an answer comes the user may have moved on: a
// sleeping disk takes seconds, a lost share minutes. Each query runs on its own thread; a newer one replaces
// it, and nothing waits for a hanging call. The number of hanging calls is limited: at the limit, the newest
// query waits until one of them returns. Interface thread.
class LatestAnswer : public QObject
{
public:
    static constexpr int maxHanging = 3;          // abandoned calls per object
    static constexpr int maxHangingTogether = 12; // abandoned calls of all objects

    explicit LatestAnswer(QObject *parent = nullptr);
    // Calls forget().
    ~LatestAnswer() override;

    // `ask(asking)` runs on its own thread and must own everything it uses, as it may outlive this object.
    // `answered(answer)` is called on the interface thread, unless a newer query or forget() came first.
    // `failed` receives the text of an exception thrown by `ask`; if it is empty, failures are ignored.
    // `interrupt` cancels a blocking call of `ask`, where the system supports it; called on the interface
    // thread.
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
    // The same for a custom worker that answers by its own signals and owns all of its data. Takes ownership;
    // starts it at once, or as soon as the limit allows.
    void run(WorkerThread *worker);
    // The last started worker, for slots of its signals; null after forget().
    template <class Worker>
    Worker *current() const
    {
        return static_cast<Worker *>(m_current.get());
    }
    // Abandons the running and the waiting query.
    void forget();
    // True while a query is unanswered.
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
    RetiringPointer<WorkerThread> m_next; // waits for a hanging query to return
    QList<QPointer<QObject>> m_hanging;
    QTimer m_retry;
};

} // namespace core
