// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CompanionLauncher.h"
#include "app/CompanionTrust.h"
#include "app/InstallationFolder.h"
#include "app/ModuleTable.h"
#include "app/OpenAdminModuleDialog.h"
#include "app/settings/Keys.h"
#include "app/settings/Settings.h"
#include "platform/Handle.h"
#include "platform/TopLevelWindows.h"
#include "tests/app/FakeWindow.h"
#include "tests/app/LogCapture.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeShell.h"
#include "tests/support/TestPrefix.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

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
    void startsTheAgentOnlyWhenAllIsOff_data();
    void startsTheAgentOnlyWhenAllIsOff();
    void leavesARunningAgentAlone();
    void handsTheExecutableToTheShell_data();
    void handsTheExecutableToTheShell();
    void waitsForTheWindow_data();
    void waitsForTheWindow();
    void waitsUntilCancelled();
    void opensOneDialogAModule();
    void isNotEnteredTwice();
    void survivesTheEndOfItsWindow();
    void asksBeforeAChangeableFileIsStarted();
    void aFileThatIsMissingNeedsNoQuestion();
    void knowsWhatCouldBeExchanged_data();
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
    installation::setFolder(QStringLiteral("C:/here"));
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
    QFile file(folder.filePath(QStringLiteral("Taskwick.exe")));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void tst_Companions::recordsTheFolderOfTheFirstStart()
{
    const auto stored = [] { return settings::installationFolder(); };
    settings::deleteValue(settings::keys::root, u"Path");
    installation::load();
    QCOMPARE(stored(), QDir::currentPath());
    QCOMPARE(installation::folder(), QDir::currentPath());

    settings::writeString(settings::keys::root, u"Path", u"C:\\Suite");
    installation::load();
    QCOMPARE(stored(), QStringLiteral("C:\\Suite"));
    QCOMPARE(installation::companion(QStringLiteral("\\Regwick.exe")),
             QStringLiteral("C:\\Suite\\Regwick.exe"));

    settings::writeString(settings::keys::root, u"Path", u"");
    installation::load();
    QCOMPARE(stored(), QDir::currentPath());
}

void tst_Companions::startsTheAgentOnlyWhenAllIsOff_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("name");
    QTest::addColumn<quint32>("value");
    QTest::addColumn<bool>("starts");
    const QString root = settings::keys::root.toString();
    const QString enabled = QStringLiteral("Enabled");
    QTest::newRow("nothing stored") << QString() << QString() << 0u << true;
    QTest::newRow("off") << settings::keys::hotKey.toString() << enabled << 0u << true;
    QTest::newRow("dark mode") << settings::keys::autoDarkMode.toString() << enabled << 1u << false;
    QTest::newRow("taskbar") << settings::keys::glasswick.toString() << enabled << 1u << false;
    QTest::newRow("tray icon") << root << QStringLiteral("ShowTrayIcon") << 1u << false;
    QTest::newRow("stay awake") << root << QStringLiteral("StayAwakeActive") << 1u << false;
    QTest::newRow("hot keys, an odd value") << settings::keys::hotKey.toString() << enabled << 2u << false;
}

void tst_Companions::startsTheAgentOnlyWhenAllIsOff()
{
    QFETCH(const QString, key);
    QFETCH(const QString, name);
    QFETCH(const quint32, value);
    QFETCH(const bool, starts);
    if (!key.isEmpty())
        settings::writeDword(key, name, value);
    startAgentIfIdle();
    QCOMPARE(m_shell->agents, starts ? tests::strings({"C:/here\\Glasswick.exe"}) : QStringList());
}

void tst_Companions::leavesARunningAgentAlone()
{
    const tests::FakeWindow agent(QStringLiteral("GLASSWICK"), QStringLiteral("Transparent Taskbar"));
    startAgentIfIdle();
    QVERIFY(m_shell->agents.isEmpty());
}

void tst_Companions::handsTheExecutableToTheShell_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");
    QTest::newRow("9") << 9 << QStringLiteral("C:/here\\LarkspurSettings.exe")
                       << QStringLiteral("Larkspur Settings");
    QTest::newRow("11") << 11 << QStringLiteral("C:/here\\Taskwick.exe") << QStringLiteral("Process Manager");
    QTest::newRow("14") << 14 << QStringLiteral("C:/here\\Regwick.exe") << QStringLiteral("Registry Cleaner");
}

void tst_Companions::handsTheExecutableToTheShell()
{
    QFETCH(const int, id);
    QFETCH(const QString, file);
    QFETCH(const QString, name);
    m_launcher->launch(module(id));
    QCOMPARE(m_shell->elevated.size(), 1);
    QCOMPARE(m_shell->elevated.first().owner, m_window->winId());
    QCOMPARE(m_shell->elevated.first().file, file);
    QCOMPARE(m_shell->elevated.first().folder, QStringLiteral("C:/here"));

    QCOMPARE(dialogs().size(), 1);
    const OpenAdminModuleDialog *dialog = dialogs().first();
    QVERIFY(dialog->isVisible());
    QVERIFY(!dialog->isModal());
    QCOMPARE(dialog->windowTitle(), QStringLiteral("Module Launcher"));
    QCOMPARE(dialog->findChild<QLabel *>()->text(),
             QStringLiteral("Preparing to open ") + name +
                 QStringLiteral(" in administrator mode.\n Please Wait..."));
    QCOMPARE(dialog->findChild<QPushButton *>()->text(), QStringLiteral("Cancel"));
    for (const char *slot : {"MyTimerSlot()", "on_pushButton_clicked()"})
        QVERIFY(dialog->metaObject()->indexOfSlot(slot) >= 0);
}

void tst_Companions::waitsForTheWindow_data()
{
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("found");
    const QString processManager = QStringLiteral("Process Manager");
    QTest::newRow("the first companions") << QStringLiteral("Qt653QWindowIcon") << processManager << true;
    QTest::newRow("built with this Qt") << platform::toolkitWindowClass() << processManager << true;
    QTest::newRow("another title") << QStringLiteral("Qt653QWindowIcon") << QStringLiteral("Registry Cleaner")
                                   << false;
    QTest::newRow("another class") << QStringLiteral("SomeOtherWindow") << processManager << false;
}

void tst_Companions::waitsForTheWindow()
{
    QFETCH(const QString, className);
    QFETCH(const QString, title);
    QFETCH(const bool, found);
    std::optional<QWidget> own;
    std::optional<tests::FakeWindow> other;
    if (className == platform::toolkitWindowClass()) {
        own.emplace();
        own->setWindowTitle(title);
        own->show();
    } else {
        other.emplace(className, title);
    }
    QSignalSpy finished(m_launcher, &CompanionLauncher::finished);
    QElapsedTimer time;
    time.start();
    m_launcher->launch(module(11));
    const bool went = finished.wait(2500);
    QCOMPARE(went, found);
    QCOMPARE(dialogs().isEmpty(), found);
    if (found) {
        QVERIFY(time.elapsed() >= 900); // the first look is after a second, not at once
        QCOMPARE(finished.first().first().toInt(), 11);
    }
}

void tst_Companions::waitsUntilCancelled()
{
    QSignalSpy finished(m_launcher, &CompanionLauncher::finished);
    m_launcher->launch(module(14));
    QTest::mouseClick(dialogs().first()->findChild<QPushButton *>(), Qt::LeftButton);
    QTRY_COMPARE(finished.size(), 1);
    QVERIFY(dialogs().isEmpty());
}

void tst_Companions::opensOneDialogAModule()
{
    m_launcher->launch(module(14));
    m_launcher->launch(module(14));
    QCOMPARE(m_shell->elevated.size(), 2);
    QCOMPARE(dialogs().size(), 1);
    m_launcher->launch(module(9));
    QCOMPARE(dialogs().size(), 2);
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
    const QTemporaryDir folder;
    install(folder);
    m_launcher->setChangeableTest([](const QString &, const QString &) { return true; });
    QSignalSpy finished(m_launcher, &CompanionLauncher::finished);

    m_dialogs->nextAnswer.enqueue(QMessageBox::No);
    m_launcher->launch(module(11));
    QCOMPARE(m_dialogs->questions.size(), 1);
    QVERIFY(m_dialogs->questions.first().text.contains(QStringLiteral("Process Manager")));
    QVERIFY(m_shell->elevated.isEmpty());
    QVERIFY(dialogs().isEmpty());
    QCOMPARE(finished.size(), 1);

    m_dialogs->nextAnswer.enqueue(QMessageBox::Yes);
    m_launcher->launch(module(11));
    m_launcher->launch(module(11)); // not asked again for this folder
    QCOMPARE(m_dialogs->questions.size(), 2);
    QCOMPARE(m_shell->elevated.size(), 2);

    m_dialogs->nextAnswer.enqueue(QMessageBox::Yes);
    m_dialogs->whileOpen = [this] { m_window.reset(); };
    const QTemporaryDir another;
    install(another);
    m_launcher->launch(module(11));
    QCOMPARE(m_shell->elevated.size(), 2);
}

void tst_Companions::aFileThatIsMissingNeedsNoQuestion()
{
    m_launcher->setChangeableTest([](const QString &, const QString &) { return true; });
    m_launcher->launch(module(11));
    QVERIFY(m_dialogs->questions.isEmpty());
    QCOMPARE(dialogs().size(), 1);
}

void tst_Companions::knowsWhatCouldBeExchanged_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("changeable");
    // A folder that is missing and a file that is held stand for what the user has no right to write to.
    QTest::newRow("both") << "plain"
                          << "." << true;
    QTest::newRow("the folder alone") << "held"
                                      << "." << true;
    QTest::newRow("the file alone") << "plain"
                                    << "missing" << true;
    QTest::newRow("neither") << "held"
                             << "missing" << false;
    QTest::newRow("nothing there") << "missing"
                                   << "missing" << false;
}

void tst_Companions::knowsWhatCouldBeExchanged()
{
    QFETCH(const QString, file);
    QFETCH(const QString, folder);
    const QTemporaryDir root;
    const QString content = QStringLiteral("as before");
    for (const QString &name : {QStringLiteral("plain"), QStringLiteral("held")}) {
        QFile made(root.filePath(name));
        QVERIFY(made.open(QIODevice::WriteOnly));
        made.write(content.toUtf8());
    }
    const platform::FileHandle held(CreateFileW(root.filePath(QStringLiteral("held")).toStdWString().c_str(),
                                                GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                                                nullptr));
    QVERIFY(held);
    const QString filePath = root.filePath(file);
    const QString folderPath = QDir::cleanPath(root.filePath(folder));
    QTEST(changeableByThisProcess(filePath, folderPath), "changeable");
    // Trying leaves no trace.
    QCOMPARE(QDir(root.path()).entryList(QDir::Files).size(), 2);
    QFile plain(root.filePath(QStringLiteral("plain")));
    QVERIFY(plain.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(plain.readAll()), content);
}

QTEST_MAIN(tst_Companions)

#include "tst_companions.moc"
