// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/HomeForm.h"
#include "app/ModuleCard.h"
#include "platform/TopLevelWindows.h"
#include "tests/app/ShellTest.h"

#include <QAction>
#include <QDialog>
#include <QToolBar>

#include <windows.h>

using namespace Qt::StringLiterals;

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

    void numbersWhatIsOpened_data();
    void numbersWhatIsOpened();
    void opensEverythingByEveryWay();
    void startsACompanionUntilItIsRefused();
    void tellsElsewhereWhatRuns();
    void passesMessagesOnAndAsksForTheTitleOnce();
    void passesKeysOn();

private:
    QStringList checkedButtons() const;
    void open(int id) const;
    int shownId() const;
};

QStringList tst_MainWindow::checkedButtons() const
{
    QStringList names;
    for (const QToolButton *each :
         m_window->findChild<QWidget *>(u"sidePanelWidget"_s)->findChildren<QToolButton *>()) {
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

void tst_MainWindow::numbersWhatIsOpened_data()
{
    QTest::addColumn<QList<int>>("opened");
    QTest::addColumn<QList<int>>("numbers");
    QTest::addColumn<QList<int>>("seen");
    using Ids = QList<int>;
    QTest::newRow("pages") << Ids{2, 3, 2, home, 3} << QList<int>{1, 2, 1, 0, 2} << Ids{2, 3, 2, home, 3};
    QTest::newRow("companion between") << Ids{2, 11, 3, 2} << QList<int>{1, 2, 3, 1} << Ids{2, 2, 3, 2};
    QTest::newRow("a number that names a foreign page")
        << Ids{9, 2, 3, 4, 2, 3} << QList<int>{1, 2, 3, 4, 2, 3} << Ids{home, 2, 3, 4, 2, 3};
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
    QCOMPARE(m_log->numbers(u"showApp:"_s), numbers);
    QCOMPARE(saw, seen);
    // Only real pages are in the stack.
    QCOMPARE(m_window->findChild<QStackedLayout *>()->count(), 1 + pages.size());
}

void tst_MainWindow::opensEverythingByEveryWay()
{
    for (const int unknown : {-1, -2, 21, 2000000000})
        m_window->onOpenModule(unknown);
    QList<int> numbers;
    for (const Module &module : m_modules->table.rows()) {
        open(module.id);
        numbers.append(static_cast<int>(numbers.size()) + 1);
    }
    QCOMPARE(m_log->numbers(u"showApp:"_s), numbers);
    QCOMPARE(m_modules->pageCount(), 18);
    QCOMPARE(m_shell->elevated.size(), 3);

    m_log->clear();
    QList<int> byButton;
    for (qsizetype i = 0; i < numbers.size(); ++i) {
        const Module &module = m_modules->table.rows().at(i);
        if (!module.hasButton())
            continue;
        const QByteArray slot = QByteArray("on_") + module.buttonName + "_clicked";
        QVERIFY2(QMetaObject::invokeMethod(&*m_window, slot.constData()), slot.constData());
        byButton.append(numbers.at(i));
    }
    QCOMPARE(m_log->numbers(u"showApp:"_s), byButton);

    m_log->clear();
    for (const Module &module : m_modules->table.rows()) {
        m_window->onOpenModule(module.id);
        const bool isChecked = module.hasButton() && module.kind == Module::Kind::Page;
        QCOMPARE(checkedButtons(),
                 isChecked ? QStringList{QLatin1StringView(module.buttonName)} : QStringList());
    }
    QCOMPARE(m_log->numbers(u"showApp:"_s), numbers);
    // These two, and only through a card, are named in the log.
    QCOMPARE(m_log->count(u"autoDarkMode"_s), 1);
    QCOMPARE(m_log->count(u"autoWallpaperChanger"_s), 1);
    open(0);
    QCOMPARE(m_log->count(u"autoDarkMode"_s), 1);

    // Now by the mouse on the tool bar and on a card.
    m_log->clear();
    const auto *bar = m_window->findChild<QToolBar *>(u"toolbar"_s);
    QTest::mouseClick(bar->widgetForAction(bar->actions().first()), Qt::LeftButton);
    QTest::mouseClick(m_window->findChild<HomeForm *>()->card(2), Qt::LeftButton);
    QCOMPARE(m_log->numbers(u"showApp:"_s), (QList<int>{0, 4}));
    QCOMPARE(shownId(), 2);
}

void tst_MainWindow::startsACompanionUntilItIsRefused()
{
    const auto refuse = [this] {
        m_window->findChild<QDialog *>()->close();
        QTRY_COMPARE(m_window->findChildren<QDialog *>().size(), 0);
    };
    open(2);
    open(11);
    open(11); // awaited already
    QCOMPARE(m_shell->elevated.size(), 1);
    QCOMPARE(m_window->findChildren<QDialog *>().size(), 1);
    QCOMPARE(checkedButtons(), tests::strings({"processManagerButton"}));
    refuse();
    QCOMPARE(checkedButtons(), tests::strings({"diskUsageButton"}));
    open(11);
    QCOMPARE(m_shell->elevated.size(), 2);

    // A page opened meanwhile is the current one, so opening it again does nothing.
    open(3);
    refuse();
    QCOMPARE(checkedButtons(), tests::strings({"findDuplicateButton"}));
    open(3); // unchecks the button, if it is left to itself
    QCOMPARE(checkedButtons(), tests::strings({"findDuplicateButton"}));
    QCOMPARE(shownId(), 3);
    open(home);
    QCOMPARE(checkedButtons(), tests::strings({"HomeButton"}));
    QCOMPARE(m_log->numbers(u"showApp:"_s), (QList<int>{1, 2, 2, 2, 3, 3, 0}));
}

void tst_MainWindow::tellsElsewhereWhatRuns()
{
    const auto told = [this](int id) {
        return std::pair{
            m_window->findChild<HomeForm *>()->card(id)->accessibleDescription().section(u'.', 0, 0),
            button("findDuplicateButton")->accessibleName()};
    };
    const QString about = u"Find and remove duplicate files"_s;
    open(15);
    emit page(15)->showToolbarSignal(false);
    open(3);
    emit page(3)->showToolbarSignal(false);
    QCOMPARE(told(3), std::pair(about, u"Find Duplicate"_s)); // not at once: it may end within a blink
    QTRY_COMPARE(told(3), std::pair(u"Running"_s, u"Find Duplicate: Running"_s));
    QCOMPARE(told(15).first, u"Running"_s);
    // The user walks, and the job ends meanwhile.
    open(home);
    QCOMPARE(shownId(), home);
    open(2);
    emit page(3)->showToolbarSignal(true);
    emit page(2)->showToolbarSignal(true); // none had begun
    QCOMPARE(told(3), std::pair(u"Finished"_s, u"Find Duplicate: Finished"_s));
    QCOMPARE(button("diskUsageButton")->accessibleName(), u"Folder Size Analyzer"_s);
    open(3);
    QCOMPARE(told(3), std::pair(about, u"Find Duplicate"_s));
    // One that ends before the eyes of the user leaves nothing to tell.
    emit page(3)->showToolbarSignal(false);
    emit page(3)->showToolbarSignal(true);
    QTest::qWait(RunningJobs::showAfter + 100);
    QCOMPARE(told(3), std::pair(about, u"Find Duplicate"_s));
    // A page that goes with the window must not call back into it.
    emit page(3)->showToolbarSignal(false);
}

void tst_MainWindow::passesMessagesOnAndAsksForTheTitleOnce()
{
    const auto post = [this](unsigned message, quintptr value) {
        QVERIFY(platform::postToWindow(m_window->winId(), message, value));
    };
    // Without the pages: nothing is made.
    post(WM_USER + 107, 0);
    post(WM_USER + 704, 1);
    post(1132, 0);
    QTRY_COMPARE(m_log->count(u"Message recieved"_s), 1);
    QCOMPARE(m_modules->pageCount(), 0);

    m_window->onOpenModule(18);
    m_window->onOpenModule(19);
    m_window->onOpenModule(18);
    post(1131, 0);
    post(1728, 0x1'8000'0001u);
    post(1132, 0);
    QTRY_COMPARE(m_log->count(u"Message recieved"_s), 2);
    using Heard = QList<QPair<ShellEvent, quint32>>;
    QCOMPARE(page(18)->heard, (Heard{{ShellEvent::WindowTitle, 0}, {ShellEvent::RefreshIcons, 0}}));
    QCOMPARE(page(18)->window(), &*m_window);
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

QTEST_MAIN(tst_MainWindow)

#include "tst_main_window.moc"
