// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CompanionLauncher.h"
#include "app/CompanionTrust.h"
#include "app/InstallationFolder.h"
#include "app/ModuleTable.h"
#include "app/OpenAdminModuleDialog.h"
#include "platform/Handle.h"
#include "settings/Keys.h"
#include "settings/Settings.h"
#include "tests/app/LogCapture.h"
#include "tests/app/Names.h"
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

class tst_Companions : public QObject
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
    void survivesTheEndOfItsWindow();
    void asksBeforeAChangeableFileIsStarted();
    void knowsWhatCouldBeExchanged();

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
};

void tst_Companions::init()
{
    m_log.emplace();
    m_registry.emplace();
    m_shell.emplace();
    m_dialogs.emplace();
    installation::setFolder(u"C:/here"_s);
    m_window = std::make_unique<QWidget>();
    m_window->show();
    m_launcher = new CompanionLauncher(m_window.get());
}

void tst_Companions::cleanup()
{
    m_window.reset();
    m_dialogs.reset();
    m_shell.reset();
    m_registry.reset();
    m_log.reset();
}

void tst_Companions::install(const QTemporaryDir &folder)
{
    installation::setFolder(folder.path());
    QFile file(folder.filePath(u"Taskwick.exe"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void tst_Companions::recordsTheFolderOfTheFirstStart()
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

void tst_Companions::startsTheAgentOnlyWhenAllIsOff()
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

void tst_Companions::handsTheExecutableToTheShell()
{
    for (const names::Module &expected : names::modules) {
        if (!expected.executable)
            continue;
        m_launcher->launch(module(expected.id));
        QCOMPARE(m_shell->elevated.last().owner, m_window->winId());
        QCOMPARE(m_shell->elevated.last().file, u"C:/here"_s + QLatin1StringView(expected.executable));
        QCOMPARE(m_shell->elevated.last().folder, u"C:/here"_s);

        const OpenAdminModuleDialog *dialog = dialogs().last();
        QVERIFY(dialog->isVisible());
        QVERIFY(!dialog->isModal());
        QCOMPARE(dialog->windowTitle(), u"Module Launcher"_s);
        QCOMPARE(dialog->findChild<QLabel *>()->text(), u"Preparing to open "_s +
                                                            QLatin1StringView(expected.panelText) +
                                                            u" in administrator mode.\n Please Wait..."_s);
        QVERIFY(!dialog->findChild<QLabel *>(u"notInstalledLabel"_s)->isHidden());
        QCOMPARE(dialog->findChild<QPushButton *>()->text(), u"Cancel"_s);
        for (const char *slot : {"MyTimerSlot()", "on_pushButton_clicked()"})
            QVERIFY(dialog->metaObject()->indexOfSlot(slot) >= 0);
    }
    QCOMPARE(m_shell->elevated.size(), 3);
}

void tst_Companions::waitsForTheWindow()
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

void tst_Companions::opensOneDialogAModuleUntilItIsCancelled()
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

void tst_Companions::isNotEnteredTwice()
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
}

void tst_Companions::survivesTheEndOfItsWindow()
{
    m_shell->whileAsking = [this] { m_window.reset(); };
    m_launcher->launch(module(11));
    QCOMPARE(m_shell->elevated.size(), 1);

    m_window = std::make_unique<QWidget>();
    m_launcher = new CompanionLauncher(m_window.get());
    m_shell->whileAsking = {};
    m_launcher->launch(module(11)); // its dialog goes with the window
}

void tst_Companions::asksBeforeAChangeableFileIsStarted()
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

void tst_Companions::knowsWhatCouldBeExchanged()
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

QTEST_MAIN(tst_Companions)

#include "tst_companions.moc"
