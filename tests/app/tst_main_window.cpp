// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/HomeForm.h"
#include "app/ModuleCard.h"
#include "platform/TopLevelWindows.h"
#include "tests/app/Names.h"
#include "tests/app/ShellTest.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QLayout>
#include <QToolBar>

#include <windows.h>

namespace
{

constexpr int home = -1;
constexpr int misc = -2;

} // namespace

class tst_MainWindow : public tests::ShellTest
{
    Q_OBJECT

private slots:
    void init() { openShell(); }
    void cleanup() { closeShell(); }

    void hasItsNames();
    void laysTheSidePanelOut();
    void hasItsToolBar();
    void numbersWhatIsOpened_data();
    void numbersWhatIsOpened();
    void opensEverythingOnceByOneClick();
    void opensNothingTwice();
    void startsARefusedCompanionAgain();
    void goesOnWhileACompanionIsAwaited();
    void checksTheButtonOfTheModule();
    void ignoresUnknownModules();
    void locksTheNavigation();
    void passesMessagesOn();
    void passesKeysOn();
    void asksForTheTitleOnce();
    void saysWhatIsMissing();

private:
    QStringList checkedButtons() const;
    void open(int id) const;
    int shownId() const;
};

QStringList tst_MainWindow::checkedButtons() const
{
    QStringList names;
    for (const QToolButton *each :
         m_window->findChild<QWidget *>(QStringLiteral("sidePanelWidget"))->findChildren<QToolButton *>()) {
        if (each->isChecked())
            names.append(each->objectName());
    }
    return names;
}

// As a user does: by the side panel where there is a button, else by the card.
void tst_MainWindow::open(int id) const
{
    if (id == home)
        button("HomeButton")->click();
    else if (id == misc)
        button("miscToolsButton")->click();
    else if (const Module *module = m_modules->table.find(id); module->hasButton())
        button(module->buttonName)->click();
    else
        m_window->findChild<HomeForm *>()->card(id)->click();
}

int tst_MainWindow::shownId() const
{
    if (qobject_cast<HomeForm *>(shown()))
        return home;
    for (const Module &module : m_modules->table.rows()) {
        if (page(module.id) && page(module.id) == shown())
            return module.id;
    }
    return -99;
}

void tst_MainWindow::hasItsNames()
{
    for (const char *slot : names::windowSlots)
        QVERIFY2(MainWindow::staticMetaObject.indexOfSlot(slot) >= 0, slot);
    for (const char *name : {"centralwidget", "sidePanelWidget", "HomeButton", "miscToolsButton",
                             "scrollArea", "scrollAreaWidgetContents", "menubar"})
        QVERIFY2(m_window->findChild<QWidget *>(QLatin1StringView(name)), name);
    for (const names::Module &module : names::modules) {
        if (!module.button)
            continue;
        const QToolButton *found = button(module.button);
        QVERIFY2(found, module.button);
        QCOMPARE(found->text(), QLatin1StringView(module.panelText));
        QVERIFY(!found->accessibleName().isEmpty());
    }
    QCOMPARE(button("HomeButton")->text(), QStringLiteral("Home"));
    QCOMPARE(button("miscToolsButton")->text(), QStringLiteral("Miscellaneous Tools"));
}

void tst_MainWindow::laysTheSidePanelOut()
{
    const QWidget *panel = m_window->findChild<QWidget *>(QStringLiteral("sidePanelWidget"));
    QVERIFY(panel->isHidden());
    QVERIFY(button("HomeButton")->isHidden());
    QVERIFY(button("miscToolsButton")->isHidden());
    QCOMPARE(panel->maximumWidth(), 180);

    QLayout *layout = m_window->findChild<QWidget *>(QStringLiteral("scrollAreaWidgetContents"))->layout();
    QVERIFY(layout->alignment() & Qt::AlignTop);
    QStringList order;
    for (int i = 0; i < layout->count(); ++i)
        order.append(layout->itemAt(i)->widget()->objectName());
    order.removeOne(QStringLiteral("miscToolsButton"));
    QVERIFY(order.removeOne(QStringLiteral("findDuplicateImageButton")));
    QCOMPARE(order.size(), qsizetype(std::size(names::panelOrder)));
    for (qsizetype i = 0; i < order.size(); ++i)
        QCOMPARE(order[i], QLatin1StringView(names::panelOrder[i]));

    // The images in the same order; the last one is that of the miscellaneous tools.
    constexpr qsizetype images = std::size(names::panelIcons);
    for (qsizetype i = 0; i < images; ++i) {
        const char *name = i + 1 < images ? names::panelOrder[i] : "miscToolsButton";
        QVERIFY2(button(name)->icon().pixmap(48).toImage() ==
                     QPixmap(QLatin1StringView(names::panelIcons[i])).toImage(),
                 name);
    }
}

void tst_MainWindow::hasItsToolBar()
{
    const auto *bar = m_window->findChild<QToolBar *>(QStringLiteral("toolbar"));
    QVERIFY(bar);
    QCOMPARE(bar->windowTitle(), QStringLiteral("Tabs toolbar"));
    QCOMPARE(bar->orientation(), Qt::Vertical);
    QCOMPARE(m_window->toolBarArea(bar), Qt::LeftToolBarArea);
    QVERIFY(!bar->isMovable());
    QCOMPARE(bar->iconSize(), QSize(24, 24));
    QCOMPARE(bar->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    QStringList actions;
    for (const QAction *action : bar->actions()) {
        actions.append(action->isSeparator() ? QStringLiteral("|") : action->text());
        QVERIFY(action->isSeparator() || !action->icon().isNull());
    }
    QCOMPARE(actions, (tests::strings({"Home", "|", "Check Update", "|", "About"})));
}

void tst_MainWindow::numbersWhatIsOpened_data()
{
    QTest::addColumn<QList<int>>("opened");
    QTest::addColumn<QList<int>>("numbers");
    QTest::addColumn<QList<int>>("seen");
    using Ids = QList<int>;
    QTest::newRow("pages") << Ids{2, 3, 2, home, 3} << QList<int>{1, 2, 1, 0, 2} << Ids{2, 3, 2, home, 3};
    QTest::newRow("companion first") << Ids{11, 2, 11, 4} << QList<int>{1, 2, 1, 3} << Ids{home, 2, 2, 4};
    QTest::newRow("companion between") << Ids{2, 11, 3, 2} << QList<int>{1, 2, 3, 1} << Ids{2, 2, 3, 2};
    QTest::newRow("a number that names a foreign page")
        << Ids{9, 2, 3, 4, 2, 3} << QList<int>{1, 2, 3, 4, 2, 3} << Ids{home, 2, 3, 4, 2, 3};
    QTest::newRow("all companions first")
        << Ids{9, 11, 14, 5, home, 5} << QList<int>{1, 2, 3, 4, 0, 4} << Ids{home, home, home, 5, home, 5};
    QTest::newRow("miscellaneous tools")
        << Ids{2, misc, 3, misc} << QList<int>{1, 2, 3, 2} << Ids{2, 2, 3, 3};
}

void tst_MainWindow::numbersWhatIsOpened()
{
    QFETCH(const QList<int>, opened);
    QFETCH(const QList<int>, numbers);
    QFETCH(const QList<int>, seen);
    QList<int> saw;
    QSet<int> pages;
    for (const int id : opened) {
        open(id);
        saw.append(shownId());
        QVERIFY(shown()->isVisible());
        if (saw.last() != home)
            pages.insert(saw.last());
    }
    QCOMPARE(m_log->numbers(QStringLiteral("showApp:")), numbers);
    QCOMPARE(saw, seen);
    // Only real pages are in the stack.
    QCOMPARE(m_window->findChild<QStackedLayout *>()->count(), 1 + pages.size());
}

void tst_MainWindow::opensEverythingOnceByOneClick()
{
    QList<int> numbers;
    int number = 0;
    for (const names::Module &module : names::modules) {
        open(module.id);
        numbers.append(++number);
    }
    QCOMPARE(m_log->numbers(QStringLiteral("showApp:")), numbers);
    QCOMPARE(m_shell->elevated.size(), 3);

    QCOMPARE(m_modules->pageCount(), 18);

    // Now by the mouse on the tool bar and on a card.
    m_log->clear();
    const auto *bar = m_window->findChild<QToolBar *>(QStringLiteral("toolbar"));
    QTest::mouseClick(bar->widgetForAction(bar->actions().first()), Qt::LeftButton);
    QTest::mouseClick(m_window->findChild<HomeForm *>()->card(2), Qt::LeftButton);
    QCOMPARE(m_log->numbers(QStringLiteral("showApp:")), (QList<int>{0, 3}));
    QCOMPARE(shownId(), 2);
}

void tst_MainWindow::opensNothingTwice()
{
    open(2);
    const QWidget *page = shown();
    open(2);
    QCOMPARE(shown(), page);
    open(11);
    open(11);
    QCOMPARE(m_log->numbers(QStringLiteral("showApp:")), (QList<int>{1, 1, 2, 2}));
    QCOMPARE(m_shell->elevated.size(), 1);
    QCOMPARE(m_window->findChildren<QDialog *>().size(), 1);
}

void tst_MainWindow::startsARefusedCompanionAgain()
{
    open(2);
    open(11);
    QCOMPARE(checkedButtons(), tests::strings({"processManagerButton"}));
    m_window->findChild<QDialog *>()->close();
    QTRY_COMPARE(m_window->findChildren<QDialog *>().size(), 0);
    QCOMPARE(checkedButtons(), tests::strings({"diskUsageButton"}));
    open(11);
    QCOMPARE(m_shell->elevated.size(), 2);
    m_window->findChild<QDialog *>()->close();
    QTRY_COMPARE(m_window->findChildren<QDialog *>().size(), 0);
    open(2);
    QCOMPARE(m_log->numbers(QStringLiteral("showApp:")), (QList<int>{1, 2, 2, 1}));
}

void tst_MainWindow::goesOnWhileACompanionIsAwaited()
{
    open(11);
    open(2);
    m_window->findChild<QDialog *>()->close();
    QTRY_COMPARE(m_window->findChildren<QDialog *>().size(), 0);
    // The page opened meanwhile is the current one, so opening it again does nothing.
    QCOMPARE(checkedButtons(), tests::strings({"diskUsageButton"}));
    open(2);
    QCOMPARE(shownId(), 2);
    QCOMPARE(m_log->numbers(QStringLiteral("showApp:")), (QList<int>{1, 2, 2}));
}

void tst_MainWindow::checksTheButtonOfTheModule()
{
    const auto openByCard = [this](int id) {
        m_window->onOpenModule(id);
        return checkedButtons();
    };
    for (const names::Module &module : names::modules) {
        const bool isPage = !module.executable;
        const QStringList expected =
            isPage && module.button ? QStringList{QLatin1StringView(module.button)} : QStringList();
        QCOMPARE(openByCard(module.id), expected);
    }
    open(3);
    open(3); // unchecks the button, if it is left to itself
    QCOMPARE(checkedButtons(), tests::strings({"findDuplicateButton"}));
    open(home);
    QCOMPARE(checkedButtons(), tests::strings({"HomeButton"}));
    // These two, and only through a card, are named in the log.
    QCOMPARE(m_log->count(QStringLiteral("autoDarkMode")), 1);
    QCOMPARE(m_log->count(QStringLiteral("autoWallpaperChanger")), 1);
    open(0);
    QCOMPARE(m_log->count(QStringLiteral("autoDarkMode")), 1);
}

void tst_MainWindow::ignoresUnknownModules()
{
    for (const int id : {-1, -2, 21, 2000000000})
        m_window->onOpenModule(id);
    m_window->onOpenModule(5);
    QCOMPARE(m_log->numbers(QStringLiteral("showApp:")), QList<int>{1});
}

void tst_MainWindow::locksTheNavigation()
{
    const QAction *homeAction = m_window->findChild<QToolBar *>()->actions().first();
    const QWidget *panel = m_window->findChild<QWidget *>(QStringLiteral("sidePanelWidget"));
    open(3);
    open(2);
    tests::FakePage *first = page(2);
    emit first->showToolbarSignal(false);
    QVERIFY(!homeAction->isEnabled());
    QVERIFY(!panel->isEnabled());
    emit first->showToolbarSignal(false);
    emit page(3)->showToolbarSignal(false);
    emit first->showToolbarSignal(true);
    QVERIFY(!homeAction->isEnabled()); // the other page's job goes on
    emit page(3)->showToolbarSignal(true);
    QVERIFY(homeAction->isEnabled());
    QVERIFY(panel->isEnabled());
    emit first->showToolbarSignal(true); // once too often
    QVERIFY(homeAction->isEnabled());

    emit first->showToolbarSignal(false);
    first->close();
    QVERIFY(homeAction->isEnabled());

    open(4);
    emit page(4)->showToolbarSignal(false);
    QVERIFY(!homeAction->isEnabled());
    // A page that goes with the window must not call back into it.
}

void tst_MainWindow::passesMessagesOn()
{
    const auto post = [this](unsigned message, quintptr value) {
        QVERIFY(platform::postToWindow(m_window->winId(), message, value));
    };
    // Without the pages: nothing is made.
    post(WM_USER + 107, 0);
    post(WM_USER + 704, 1);
    post(1132, 0);
    QTRY_COMPARE(m_log->count(QStringLiteral("Message recieved")), 1);
    QCOMPARE(m_modules->pageCount(), 0);

    m_window->onOpenModule(19);
    m_window->onOpenModule(18);
    page(18)->heard.clear();
    post(1131, 0);
    post(1728, 0x1'8000'0001u);
    post(1132, 0);
    QTRY_COMPARE(m_log->count(QStringLiteral("Message recieved")), 2);
    using Heard = QList<QPair<ShellEvent, quint32>>;
    QCOMPARE(page(18)->heard, (Heard{{ShellEvent::RefreshIcons, 0}}));
    QCOMPARE(page(19)->heard, (Heard{{ShellEvent::StayAwakeState, 0x80000001u}}));
}

void tst_MainWindow::passesKeysOn()
{
    QTest::keyClick(&*m_window, Qt::Key_Shift); // nobody is there
    m_window->onOpenModule(17);
    m_window->onOpenModule(3);
    tests::FakePage *generator = page(17);
    QVERIFY(generator->heard.isEmpty());
    QTest::keyPress(&*m_window, Qt::Key_Shift);
    QTest::keyPress(&*m_window, Qt::Key_A);
    QTest::keyRelease(&*m_window, Qt::Key_A);
    QTest::keyRelease(&*m_window, Qt::Key_Shift);
    using Heard = QList<QPair<ShellEvent, quint32>>;
    QCOMPARE(generator->heard,
             (Heard{{ShellEvent::ShiftDown, 0}, {ShellEvent::ShiftUp, 0}, {ShellEvent::ShiftUp, 0}}));
    QVERIFY(page(3)->heard.isEmpty());
}

void tst_MainWindow::asksForTheTitleOnce()
{
    m_window->onOpenModule(18);
    m_window->onOpenModule(2);
    m_window->onOpenModule(18);
    using Heard = QList<QPair<ShellEvent, quint32>>;
    QCOMPARE(page(18)->heard, (Heard{{ShellEvent::WindowTitle, 0}}));
    QCOMPARE(page(18)->window(), &*m_window);
}

void tst_MainWindow::saysWhatIsMissing()
{
    QList<Module> rows = ModuleTable::suite().rows();
    for (Module &module : rows)
        module.create = {};
    const ModuleTable table(rows);
    MainWindow window(nullptr, table);
    window.onOpenModule(4);
    const auto *page = window.findChild<QStackedLayout *>()->currentWidget();
    const auto *sentence = page->findChild<QLabel *>(QStringLiteral("unavailableLabel"));
    QVERIFY(sentence);
    QCOMPARE(sentence->text(), QStringLiteral("Secure Delete is not part of this build yet."));
}

QTEST_MAIN(tst_MainWindow)

#include "tst_main_window.moc"
