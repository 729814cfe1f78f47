// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AboutDialog.h"
#include "app/HomeForm.h"
#include "app/ModuleCard.h"
#include "tests/DiskUsage/Scans.h"
#include "tests/app/ShellTest.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QLayout>
#include <QMenu>
#include <QTimer>
#include <QToolBar>
#include <QWindow>

using namespace Qt::StringLiterals;

// Moving between pages and leaving the program, by keyboard and menu. Keys are sent to the native window, the
// way real ones come: shortcuts first, then the widget that has the focus.
class tst_Navigation : public tests::ShellTest
{
    Q_OBJECT

private slots:
    void init() { openShell(); }
    void cleanup() { closeShell(); }

    void goesBack();
    void leavesTheBackKeyToThePageFirst();
    void staysOnAPageThatMayNotBeLeft();
    void reachesTheToolBarByKeyboard();
    void showsTheSidePanelAndOffersEverythingInTheMenu();
    void exits();

private:
    bool isHome() const { return qobject_cast<HomeForm *>(shown()) != nullptr; }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(m_window->windowHandle(), key, modifiers);
    }
};

void tst_Navigation::goesBack()
{
    m_window->onOpenModule(2);
    m_window->onOpenModule(11);
    m_window->onOpenModule(3);
    m_window->findChild<QDialog *>()->close(); // of the companion, module 11
    m_window->on_HomeButton_clicked();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&*m_window));
    m_log->clear();
    // Not the business of the widget that has the focus, which would move to the card on its left.
    m_window->findChild<HomeForm *>()->card(2)->setFocus();
    press(Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(shown(), page(3));
    QVERIFY(button("findDuplicateButton")->isChecked());
    press(Qt::Key_Back);
    QCOMPARE(shown(), page(2));
    QTest::mouseClick(&*m_window, Qt::BackButton);
    QVERIFY(isHome());
    press(Qt::Key_Left, Qt::AltModifier);
    QVERIFY(isHome());
    QCOMPARE(m_log->numbers(u"showApp:"_s), (QList<int>{3, 1, 0}));

    // Also from a page with a job: the user comes back to it.
    m_window->onOpenModule(3);
    emit page(3)->showToolbarSignal(false);
    press(Qt::Key_Left, Qt::AltModifier);
    QVERIFY(isHome());
}

void tst_Navigation::leavesTheBackKeyToThePageFirst()
{
    tests::MemoryEnumerator disk;
    QList<Module> rows = m_modules->table.rows();
    for (Module &module : rows) {
        if (module.id == 2)
            module.create = [&disk](QWidget *parent) {
                return new DiskUsageForm(tests::lending(disk), tests::noDrive, parent);
            };
    }
    const ModuleTable table(rows);
    openWindow(table);
    m_window->onOpenModule(2);
    auto *analyzer = qobject_cast<DiskUsageForm *>(shown());
    QVERIFY(analyzer);

    auto *options = analyzer->findChild<QAbstractButton *>(u"optionsButton"_s);
    options->click();
    QTRY_VERIFY(!options->isVisible());
    press(Qt::Key_Left, Qt::AltModifier);
    QTRY_VERIFY(options->isVisible());
    QCOMPARE(shown(), analyzer);

    press(Qt::Key_Left, Qt::AltModifier);
    QVERIFY(isHome());
    m_window.reset(); // before the table
}

void tst_Navigation::staysOnAPageThatMayNotBeLeft()
{
    m_window->onOpenModule(3);
    m_window->onOpenModule(2);
    button("diskUsageButton")->click(); // where it is already
    m_window->onOpenModule(11);         // a companion has no page
    m_window->on_miscToolsButton_clicked();
    QCOMPARE(page(2)->timesAskedToLeave, 0);
    page(2)->letsGo = false;
    const auto homeAction = m_window->findChild<QToolBar *>()->actions().first();
    const auto refused = [this] { return shown() == page(2) && button("diskUsageButton")->isChecked(); };

    homeAction->trigger();
    QVERIFY(refused());
    QVERIFY(!button("HomeButton")->isChecked());
    button("findDuplicateButton")->click();
    QVERIFY(refused());
    QVERIFY(!button("findDuplicateButton")->isChecked());
    m_window->onOpenModule(16); // never opened before
    QVERIFY(refused());
    QVERIFY(!page(16));
    press(Qt::Key_Left, Qt::AltModifier);
    QVERIFY(refused());
    QCOMPARE(page(2)->timesAskedToLeave, 4);

    // A refused way back is still there.
    page(2)->letsGo = true;
    press(Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(shown(), page(3));
    button("diskUsageButton")->click();
    homeAction->trigger();
    QVERIFY(isHome());
}

void tst_Navigation::reachesTheToolBarByKeyboard()
{
    QCOMPARE(QApplication::focusWidget()->objectName(), u"searchLineEdit"_s); // the page comes first
    const auto *bar = m_window->findChild<QToolBar *>();
    QSet<QWidget *> wanted;
    for (QAction *action : bar->actions()) {
        if (!action->isSeparator())
            wanted.insert(bar->widgetForAction(action));
    }
    QCOMPARE(wanted.size(), 3);
    QWidget *about = bar->widgetForAction(bar->actions().last());
    for (int presses = 0; presses < 50 && !wanted.isEmpty(); ++presses) {
        press(Qt::Key_Tab);
        wanted.remove(QApplication::focusWidget());
    }
    QVERIFY(wanted.isEmpty());
    about->setFocus();
    press(Qt::Key_Space);
    QTRY_VERIFY(m_window->findChild<AboutDialog *>());
}

void tst_Navigation::showsTheSidePanelAndOffersEverythingInTheMenu()
{
    const QWidget *panel = m_window->findChild<QWidget *>(u"sidePanelWidget"_s);
    QVERIFY(panel->isHidden());
    QStringList order;
    const QLayout *layout = m_window->findChild<QWidget *>(u"scrollAreaWidgetContents"_s)->layout();
    for (int i = 0; i < layout->count(); ++i)
        order.append(layout->itemAt(i)->widget()->objectName());
    order.removeOne(u"miscToolsButton"_s);
    QStringList expected{u"HomeButton"_s};
    for (const Module *module : m_modules->table.inPanelOrder())
        expected.append(QLatin1StringView(module->buttonName));
    QCOMPARE(order, expected);
    m_window->onOpenModule(2);
    press(Qt::Key_B, Qt::ControlModifier);
    QVERIFY(panel->isVisible());
    QCOMPARE(panel->width(), 180);
    QVERIFY(button("diskUsageButton")->isChecked());
    press(Qt::Key_F9);
    QVERIFY(panel->isHidden());

    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(200, 200),
                            m_window->mapToGlobal(QPoint(200, 200)));
    QApplication::sendEvent(&*m_window, &event);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    QStringList texts;
    for (const QAction *action : menu->actions())
        texts.append(action->isSeparator() ? u"|"_s : action->text());
    QCOMPARE(texts, QStringList({u"Home"_s, u"Back"_s, u"|"_s, u"Side panel"_s, u"|"_s, u"Check Update"_s,
                                 u"About"_s, u"|"_s, u"Exit"_s}));
    menu->actions().at(texts.indexOf(u"Side panel"_s))->trigger();
    QVERIFY(panel->isVisible());
    menu->close();
}

void tst_Navigation::exits()
{
    constexpr int stillRunning = 7;
    const auto runAndPress = [this] {
        QTimer guard;
        connect(&guard, &QTimer::timeout, qApp, [] { QCoreApplication::exit(stillRunning); });
        guard.start(1000);
        QTimer::singleShot(0, &*m_window, [this] { press(Qt::Key_Q, Qt::ControlModifier); });
        return QApplication::exec();
    };
    m_window->onOpenModule(2);
    page(2)->busy = true;
    page(2)->letsGo = false;
    QCOMPARE(runAndPress(), stillRunning);
    QVERIFY(m_modules->asked.isEmpty()); // no job is stopped for a window that stays
    page(2)->letsGo = true;
    QCOMPARE(runAndPress(), stillRunning);
    QCOMPARE(m_modules->asked, QList<int>{2});
    QVERIFY(m_window->isVisible());
    page(2)->busy = false;
    QCOMPARE(runAndPress(), 0);
    QVERIFY(!m_window->isVisible());
}

QTEST_MAIN(tst_Navigation)

#include "tst_navigation.moc"
