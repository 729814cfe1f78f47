// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CompanionLauncher.h"
#include "app/CompanionTrust.h"
#include "app/InstallationFolder.h"
#include "app/ModuleTable.h"
#include "app/OpenAdminModuleDialog.h"
#include "app/SingleInstance.h"
#include "platform/Handle.h"
#include "settings/Keys.h"
#include "settings/Settings.h"
#include "tests/app/LogCapture.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeShell.h"
#include "tests/support/FakeWindow.h"
#include "tests/support/TestPrefix.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <future>

using namespace Qt::StringLiterals;

namespace
{

// Lets something happen while the user is being asked for elevation.
class AskingShell : public tests::FakeShell
{
public:
    void runElevated(WId owner, const QString &file, const QString &folder) override
    {
        FakeShell::runElevated(owner, file, folder);
        if (whileAsking)
            whileAsking();
    }
    std::function<void()> whileAsking;
};

} // namespace

// Other processes of the suite: companions and further instances.
class tst_Processes : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void recordsTheFolderOfTheFirstStart();
    void startsTheAgentOnlyWhenAllIsOff();
    void handsTheExecutableToTheShell();
    void waitsForTheWindow();
    void opensOneDialogAModuleUntilItIsCancelled();
    void isNotEnteredTwice();
    void asksBeforeAChangeableFileIsStarted();
    void knowsWhatCouldBeExchanged();
    void theNextShowsTheWindowOfTheFirst();
    void theNextOpensOneWhereThereIsNone();
    void theNextWaitsForAWindowOnItsWay();

private:
    const Module &module(int id) const { return *moduleTable().find(id); }
    QList<OpenAdminModuleDialog *> dialogs() const
    {
        return m_window->findChildren<OpenAdminModuleDialog *>();
    }
    // A folder with the executable of module 11 in it.
    void install(const QTemporaryDir &folder);

    std::optional<tests::LogCapture> m_log;
    std::optional<tests::RegistryGuard> m_registry;
    std::optional<AskingShell> m_shell;
    std::optional<tests::FakeDialogs> m_dialogs;
    std::unique_ptr<QWidget> m_window;
    CompanionLauncher *m_launcher = nullptr;

    const QString m_title = u"Window of the first instance"_s;
    std::optional<SingleInstance>
        m_first; // both instances live in this process: the mark knows no difference
};

void tst_Processes::init()
{
    m_log.emplace();
    m_registry.emplace();
    m_shell.emplace();
    m_dialogs.emplace();
    installation::setFolder(u"C:/here"_s);
    m_first.emplace();
    m_window = std::make_unique<QWidget>();
    m_window->setWindowTitle(m_title);
    m_launcher = new CompanionLauncher(m_window.get());
}

void tst_Processes::cleanup()
{
    m_window.reset();
    m_first.reset();
    m_dialogs.reset();
    m_shell.reset();
    m_registry.reset();
    m_log.reset();
}

void tst_Processes::install(const QTemporaryDir &folder)
{
    installation::setFolder(folder.path());
    QFile file(folder.filePath(u"Taskwick.exe"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void tst_Processes::recordsTheFolderOfTheFirstStart()
{
    settings::writeString(settings::keys::root, u"Path", u"C:\\Suite");
    installation::load();
    QCOMPARE(settings::installationFolder(), u"C:\\Suite"_s);

    settings::writeString(settings::keys::root, u"Path", u"");
    installation::load();
    QCOMPARE(settings::installationFolder(), QDir::currentPath());

    settings::deleteValue(settings::keys::root, u"Path");
    installation::load();
    QCOMPARE(installation::folder(), QDir::currentPath());
}

void tst_Processes::startsTheAgentOnlyWhenAllIsOff()
{
    settings::writeDword(settings::keys::hotKey, u"Enabled", 1);
    startAgentIfIdle();
    QVERIFY(m_shell->agents.isEmpty());
    settings::writeDword(settings::keys::hotKey, u"Enabled", 0);
    {
        const tests::FakeWindow running(u"GLASSWICK"_s, u"Transparent Taskbar"_s);
        startAgentIfIdle();
        QVERIFY(m_shell->agents.isEmpty());
    }
    startAgentIfIdle();
    QCOMPARE(m_shell->agents, tests::strings({"C:/here\\Glasswick.exe"}));
}

void tst_Processes::handsTheExecutableToTheShell()
{
    m_launcher->launch(module(11));
    QCOMPARE(m_shell->elevated.last().owner, m_window->winId());
    QCOMPARE(m_shell->elevated.last().file, u"C:/here\\Taskwick.exe"_s);
    QCOMPARE(m_shell->elevated.last().folder, u"C:/here"_s);
    const OpenAdminModuleDialog *dialog = dialogs().last();
    QVERIFY(dialog->isVisible() && !dialog->isModal());
    QCOMPARE(dialog->findChild<QLabel *>()->text(),
             u"Preparing to open Process Manager in administrator mode.\n Please Wait..."_s);
    QVERIFY(!dialog->findChild<QLabel *>(u"notInstalledLabel"_s)->isHidden());
}

void tst_Processes::waitsForTheWindow()
{
    QSignalSpy finished(m_launcher, &CompanionLauncher::finished);
    const tests::FakeWindow awaited(u"Qt653QWindowIcon"_s, u"Process Manager"_s);
    QElapsedTimer time;
    time.start();
    m_launcher->launch(module(9));
    m_launcher->launch(module(11));
    QVERIFY(finished.wait(10'000));
    QVERIFY(time.elapsed() >= 900); // the first look is after a second, not at once
    QTest::qWait(1200);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.first().first().toInt(), 11);
    QCOMPARE(dialogs().size(), 1);
}

void tst_Processes::opensOneDialogAModuleUntilItIsCancelled()
{
    QSignalSpy finished(m_launcher, &CompanionLauncher::finished);
    m_launcher->launch(module(14));
    m_launcher->launch(module(14));
    QCOMPARE(m_shell->elevated.size(), 2);
    QCOMPARE(dialogs().size(), 1);
    m_launcher->launch(module(9));
    QCOMPARE(dialogs().size(), 2);
    QTest::mouseClick(dialogs().first()->findChild<QPushButton *>(), Qt::LeftButton);
    QTRY_COMPARE(finished.size(), 1);
    QCOMPARE(dialogs().size(), 1);
}

void tst_Processes::isNotEnteredTwice()
{
    QSignalSpy finished(m_launcher, &CompanionLauncher::finished);
    m_shell->whileAsking = [this] { m_launcher->launch(module(9)); };
    m_launcher->launch(module(11));
    QCOMPARE(m_shell->elevated.size(), 1);
    QCOMPARE(dialogs().size(), 1);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.first().first().toInt(), 9);
    m_shell->whileAsking = {};
    m_launcher->launch(module(9)); // and now it may
    QCOMPARE(m_shell->elevated.size(), 2);
    m_shell->whileAsking = [this] { m_window.reset(); }; // the launcher goes while the user is being asked
    m_launcher->launch(module(11));
    QCOMPARE(m_shell->elevated.size(), 3);
}

void tst_Processes::asksBeforeAChangeableFileIsStarted()
{
    m_launcher->setChangeableTest([](const QString &, const QString &) { return true; });
    QSignalSpy finished(m_launcher, &CompanionLauncher::finished);
    m_launcher->launch(module(14)); // a file that is missing needs no question
    QVERIFY(m_dialogs->questions.isEmpty());
    QCOMPARE(dialogs().size(), 1);

    const QTemporaryDir folder;
    install(folder);
    m_dialogs->nextAnswer.enqueue(QMessageBox::No);
    m_launcher->launch(module(11));
    QCOMPARE(m_dialogs->questions.size(), 1);
    QVERIFY(m_dialogs->questions.first().text.contains(u"Process Manager"_s));
    QCOMPARE(m_shell->elevated.size(), 1);
    QCOMPARE(dialogs().size(), 1);
    QCOMPARE(finished.size(), 1);

    m_dialogs->nextAnswer.enqueue(QMessageBox::Yes);
    m_launcher->launch(module(11));
    m_launcher->launch(module(11)); // not asked again for this folder
    QCOMPARE(m_dialogs->questions.size(), 2);
    QCOMPARE(m_shell->elevated.size(), 3);

    m_dialogs->nextAnswer.enqueue(QMessageBox::Yes);
    m_dialogs->whileOpen = [this] { m_window.reset(); };
    const QTemporaryDir another;
    install(another);
    m_launcher->launch(module(11));
    QCOMPARE(m_shell->elevated.size(), 3);
}

void tst_Processes::knowsWhatCouldBeExchanged()
{
    const QTemporaryDir root;
    const QString plain = root.filePath(u"plain"_s);
    const QString held = root.filePath(u"held"_s);
    const QString missing = root.filePath(u"missing"_s);
    for (const QString &path : {plain, held}) {
        QFile made(path);
        QVERIFY(made.open(QIODevice::WriteOnly));
        made.write("as before");
    }
    const platform::FileHandle holder(CreateFileW(held.toStdWString().c_str(), GENERIC_READ, FILE_SHARE_READ,
                                                  nullptr, OPEN_EXISTING, 0, nullptr));
    QVERIFY(holder);
    // A folder that is missing and a file that is held stand for what the user has no right to write to.
    QVERIFY(changeableByThisProcess(plain, root.path()));
    QVERIFY(changeableByThisProcess(held, root.path())); // the folder alone
    QVERIFY(changeableByThisProcess(plain, missing));    // the file alone
    QVERIFY(!changeableByThisProcess(held, missing));
    QVERIFY(!changeableByThisProcess(missing, missing));
    // Trying leaves no trace.
    QCOMPARE(QDir(root.path()).entryList(QDir::Files).size(), 2);
    QFile file(plain);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("as before"));
}

void tst_Processes::theNextShowsTheWindowOfTheFirst()
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

void tst_Processes::theNextOpensOneWhereThereIsNone()
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

void tst_Processes::theNextWaitsForAWindowOnItsWay()
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

QTEST_MAIN(tst_Processes)

#include "tst_processes.moc"
