// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SingleInstance.h"

#include <QTest>
#include <QWidget>

#include <optional>

#include <windows.h>

// Both instances live in this process: the mark knows no difference.
class tst_SingleInstance : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theNextShowsTheWindowOfTheFirst();
    void theNextOpensOneWhereThereIsNone();

private:
    const QString m_title = QStringLiteral("Window of the first instance");
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
    QVERIFY(!next.activateFirst(QStringLiteral("Another title")));
    QVERIFY(next.activateFirst(m_title));
    QVERIFY(!m_first->activateFirst(m_title)); // the first itself has none to look for
    m_window->hide();
    QVERIFY(!next.activateFirst(m_title));
}

QTEST_MAIN(tst_SingleInstance)

#include "tst_single_instance.moc"
