// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SingleInstance.h"

#include <QTest>
#include <QWidget>

#include <chrono>
#include <future>
#include <optional>

#include <windows.h>

using namespace Qt::StringLiterals;

// Both instances live in this process: the mark knows no difference.
class tst_SingleInstance : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theNextShowsTheWindowOfTheFirst();
    void theNextOpensOneWhereThereIsNone();
    void theNextWaitsForAWindowOnItsWay();

private:
    const QString m_title = u"Window of the first instance"_s;
    std::optional<SingleInstance> m_first;
    std::optional<QWidget> m_window;
};

void tst_SingleInstance::init()
{
    m_first.emplace();
    m_window.emplace();
    m_window->setWindowTitle(m_title);
}

void tst_SingleInstance::cleanup()
{
    m_window.reset();
    m_first.reset();
}

void tst_SingleInstance::theNextShowsTheWindowOfTheFirst()
{
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(&*m_window));
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    const SingleInstance next;
    QVERIFY(next.activateFirst(m_title));
    QTRY_VERIFY(m_window->isActiveWindow());

    const HWND handle = reinterpret_cast<HWND>(m_window->winId());
    m_window->showMinimized();
    QTRY_VERIFY(IsIconic(handle));
    QVERIFY(next.activateFirst(m_title));
    QVERIFY(!IsIconic(handle));
}

void tst_SingleInstance::theNextOpensOneWhereThereIsNone()
{
    const SingleInstance next;
    QVERIFY(!next.activateFirst(m_title)); // not made yet
    m_window->winId();
    QVERIFY(!next.activateFirst(m_title)); // not shown yet
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(&*m_window));
    QVERIFY(!next.activateFirst(u"Another title"_s));
    QVERIFY(next.activateFirst(m_title));
    QVERIFY(!m_first->activateFirst(m_title)); // the first itself has none to look for
    m_window->hide();
    QVERIFY(!next.activateFirst(m_title));
}

void tst_SingleInstance::theNextWaitsForAWindowOnItsWay()
{
    // The mark is a thread's.
    const auto start = [this] {
        return std::async(std::launch::async, [this] { return SingleInstance().activateFirst(m_title); });
    };
    const auto ended = [](const std::future<bool> &next) {
        return next.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    };
    std::future<bool> next = start();
    QTest::qWait(300);
    QVERIFY(!ended(next));
    m_window->show();
    QTRY_VERIFY(ended(next));
    QVERIFY(next.get());
    // When the first one ends, nobody waits for it.
    m_window->hide();
    next = start();
    QTest::qWait(300);
    QVERIFY(!ended(next));
    m_first.reset();
    QTRY_VERIFY_WITH_TIMEOUT(ended(next), 1000);
    QVERIFY(!next.get());
}

QTEST_MAIN(tst_SingleInstance)

#include "tst_single_instance.moc"
