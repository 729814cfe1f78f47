// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/LatestAnswer.h"

namespace core
{

namespace
{

constexpr int retryInterval = 100; // ms

// Hanging calls of all LatestAnswer objects; interface thread.
QList<QPointer<QObject>> &allHanging()
{
    static QList<QPointer<QObject>> threads;
    return threads;
}

qsizetype countAlive(QList<QPointer<QObject>> &threads)
{
    threads.removeIf([](const QPointer<QObject> &thread) { return !thread; });
    return threads.size();
}

} // namespace

class LatestAnswer::Thread : public WorkerThread
{
public:
    explicit Thread(Question question) : m_question(std::move(question)) {}

    const Question &question() const { return m_question; }
    // Valid after done(); empty if the query failed.
    Effect takeEffect() { return std::move(m_effect); }

protected:
    void work() override
    {
        m_effect = m_question.ask(Asking(cancelFlag(), [this](std::function<void()> part) {
            deliver([this, part = std::move(part)] {
                if (!stopRequested())
                    part();
            });
        }));
    }
    void interrupt() override
    {
        if (m_question.interrupt)
            m_question.interrupt();
    }

private:
    Question m_question;
    Effect m_effect;
};

LatestAnswer::LatestAnswer(QObject *parent) : QObject(parent)
{
    m_retry.setInterval(retryInterval);
    connect(&m_retry, &QTimer::timeout, this, &LatestAnswer::startNext);
}

LatestAnswer::~LatestAnswer()
{
    forget();
}

void LatestAnswer::forget()
{
    m_next.reset();
    m_retry.stop();
    retireCurrent();
}

void LatestAnswer::runQuestion(Question question)
{
    auto *thread = new Thread(std::move(question));
    // The callback may ask the next question, which replaces this thread.
    connect(thread, &WorkerThread::done, this, [this, thread] {
        m_done = true;
        const Effect effect = thread->takeEffect();
        const std::function<void(const QString &)> failed = thread->question().failed;
        if (effect)
            effect();
        else if (failed)
            failed(thread->error());
    });
    run(thread);
}

void LatestAnswer::run(WorkerThread *worker)
{
    retireCurrent();
    m_next.reset(worker);
    startNext();
}

void LatestAnswer::startNext()
{
    if (!mayStart()) {
        m_retry.start();
        return;
    }
    m_retry.stop();
    m_current = std::move(m_next);
    m_done = false;
    connect(m_current.get(), &WorkerThread::done, this, [this] { m_done = true; });
    m_current->start();
}

bool LatestAnswer::mayStart()
{
    return countAlive(m_hanging) < maxHanging && countAlive(allHanging()) < maxHangingTogether;
}

void LatestAnswer::retireCurrent()
{
    const QPointer<QObject> thread(m_current.get());
    m_current.reset();
    if (!thread) // it had already finished
        return;
    m_hanging.append(thread);
    allHanging().append(thread);
}

} // namespace core
