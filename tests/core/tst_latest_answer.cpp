// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/LatestAnswer.h"

#include <QSemaphore>
#include <QTest>

#include <memory>
#include <new>

using namespace Qt::StringLiterals;
using core::Asking;
using core::LatestAnswer;

namespace
{

// A disk that answers each question when it is let go. The threads share it: some outlive the test's objects.
struct Disk {
    QSemaphore go;
    std::atomic_int asked = 0;
};

} // namespace

class LatestAnswerTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_disk = std::make_shared<Disk>();
        m_answers.clear();
    }
    void cleanup()
    {
        m_disk->go.release(1000);
        core::waitForRetiredWorkers();
    }

    void aNewerQuestionTakesTheOldOnesPlace();
    void hangingCallsAreBounded();
    void theBoundHoldsAcrossObjects();
    void partsComeBeforeTheAnswer();
    void aFailureIsTold();
    void nothingComesAfterTheEnd();
    void aGivenUpCallIsInterrupted();

private:
    void ask(LatestAnswer &latest, int question)
    {
        latest.ask(
            [disk = m_disk, question](const Asking &) {
                ++disk->asked;
                disk->go.acquire();
                return question;
            },
            [this](int answer) { m_answers.append(answer); });
    }

    std::shared_ptr<Disk> m_disk;
    QList<int> m_answers;
};

void LatestAnswerTest::aNewerQuestionTakesTheOldOnesPlace()
{
    LatestAnswer latest;
    ask(latest, 1);
    QTRY_COMPARE(m_disk->asked.load(), 1);
    ask(latest, 2); // without waiting for the first one
    QTRY_COMPARE(m_disk->asked.load(), 2);
    QVERIFY(latest.isWaiting());
    m_disk->go.release(2);
    QTRY_COMPARE(m_answers, QList<int>({2}));
    m_answers.clear();
    QVERIFY(!latest.isWaiting());
    ask(latest, 3);
    m_disk->go.release();
    QTRY_COMPARE(m_answers, QList<int>({3}));
    m_answers.clear();
}

void LatestAnswerTest::hangingCallsAreBounded()
{
    LatestAnswer latest;
    for (int question = 0; question < 50; ++question)
        ask(latest, question);
    QTest::qWait(300);
    QCOMPARE(m_disk->asked.load(), LatestAnswer::maxHanging);
    QVERIFY(latest.isWaiting());
    m_disk->go.release(); // one of those that nobody waits for
    QTRY_COMPARE(m_disk->asked.load(), LatestAnswer::maxHanging + 1);
    m_disk->go.release(100);
    QTRY_COMPARE(m_answers, QList<int>({49}));
    m_answers.clear(); // the newest
    QVERIFY(!latest.isWaiting());
}

// Also of those that are gone.
void LatestAnswerTest::theBoundHoldsAcrossObjects()
{
    for (int page = 0; page < 10; ++page) {
        LatestAnswer latest;
        for (int question = 0; question < 5; ++question)
            ask(latest, question);
    }
    LatestAnswer latest;
    ask(latest, 99);
    QTest::qWait(300);
    QCOMPARE(m_disk->asked.load(), LatestAnswer::maxHangingTogether);
    QVERIFY(m_answers.isEmpty());
    m_disk->go.release(100);
    QTRY_COMPARE(m_answers, QList<int>({99}));
    m_answers.clear();
}

void LatestAnswerTest::partsComeBeforeTheAnswer()
{
    LatestAnswer latest;
    const auto askInParts = [&](int question) {
        latest.ask(
            [this, disk = m_disk, question](const Asking &asking) {
                for (int part = 0; part < 3; ++part)
                    asking.tell([this, question, part] { m_answers.append(10 * question + part); });
                disk->go.acquire();
                return question;
            },
            [this](int answer) { m_answers.append(answer); });
    };
    askInParts(1);
    QTRY_COMPARE(m_answers, (QList<int>{10, 11, 12}));
    m_answers.clear();
    m_disk->go.release();
    QTRY_COMPARE(m_answers, QList<int>({1}));
    m_answers.clear();
    askInParts(2);
    QTest::qSleep(50); // its parts are on their way
    latest.forget();
    QTest::qWait(50);
    QVERIFY(m_answers.isEmpty());
}

void LatestAnswerTest::aFailureIsTold()
{
    LatestAnswer latest;
    QString told;
    latest.ask([](const Asking &) -> int { throw std::bad_alloc(); }, [](int) { QFAIL("answered"); },
               [&told](const QString &text) { told = text; });
    QTRY_COMPARE(told, u"There is not enough memory."_s);
    QVERIFY(!latest.isWaiting());
}

void LatestAnswerTest::nothingComesAfterTheEnd()
{
    {
        LatestAnswer latest;
        ask(latest, 1);
        QTRY_COMPARE(m_disk->asked.load(), 1);
    } // would hang here
    m_disk->go.release();
    LatestAnswer latest;
    ask(latest, 2);
    m_disk->go.release();
    QTest::qSleep(50); // the answer stands in the queue
    latest.forget();
    QTest::qWait(50);
    QVERIFY(m_answers.isEmpty() && !latest.isWaiting());
}

void LatestAnswerTest::aGivenUpCallIsInterrupted()
{
    {
        LatestAnswer latest;
        latest.ask(
            [disk = m_disk](const Asking &asking) {
                while (!asking.isCancelled() || !disk->go.tryAcquire(1, 5000))
                    QThread::msleep(1);
                return 1;
            },
            [](int) {}, {}, [disk = m_disk] { disk->go.release(); });
    }
    core::waitForRetiredWorkers(); // would hang here
}

QTEST_GUILESS_MAIN(LatestAnswerTest)
#include "tst_latest_answer.moc"
