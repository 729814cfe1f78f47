// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Paths.h"
#include "platform/Shell.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace
{

// This program plays the programs that the shell starts: called by another name, it writes its command line
// and its folder to a file beside itself and ends. Programs are looked up in the caller's own folder first.
const QStringList roles{u"explorer.exe"_s, u"larkspur-companion.exe"_s};

QString notePath(const QString &role)
{
    return QFileInfo(QCoreApplication::applicationFilePath()).absolutePath() + u'/' + role + u".txt"_s;
}

int playRole(const QString &role)
{
    QFile note(notePath(role) + u".new"_s);
    if (!note.open(QFile::WriteOnly))
        return 1;
    note.write(QString::fromWCharArray(GetCommandLineW()).toUtf8() + '\n' +
               QDir::toNativeSeparators(QDir::currentPath()).toUtf8());
    note.close();
    return note.rename(notePath(role)) ? 0 : 1;
}

} // namespace

class TestShell : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void revealsExactlyOnePath();
    void opensOnlyWhatExists();
    void elevatesWithTheWorkingFolder();
    void opensOnlyWebPages();

private:
    static QString play(const QString &role);
    static QStringList awaitNote(const QString &role);
};

void TestShell::initTestCase()
{
    tests::requireTestPrefix();
    // While it starts a program, Wine's shell stands in that program's folder, and goes back only to a folder
    // that it can reach.
    QVERIFY(QDir::setCurrent(QCoreApplication::applicationDirPath()));
    cleanup();
}

void TestShell::cleanup()
{
    for (const QString &role : roles) {
        const QString program = QFileInfo(notePath(role)).absolutePath() + u'/' + role;
        QTRY_VERIFY(!QFile::exists(program) || QFile::remove(program)); // it may still be ending
        QFile::remove(notePath(role));
    }
}

QString TestShell::play(const QString &role)
{
    const QString program = QFileInfo(notePath(role)).absolutePath() + u'/' + role;
    if (!QFile::copy(QCoreApplication::applicationFilePath(), program))
        qFatal("Cannot copy this program");
    return QDir::toNativeSeparators(program);
}

QStringList TestShell::awaitNote(const QString &role)
{
    QFile note(notePath(role));
    if (!QTest::qWaitFor([&] { return note.exists(); }, 20'000))
        return {};
    return note.open(QFile::ReadOnly) ? QString::fromUtf8(note.readAll()).split(u'\n') : QStringList();
}

void TestShell::revealsExactlyOnePath()
{
    play(roles[0]);
    const QString name = u"c,d & \U0001F600.txt"_s;
    QVERIFY(platform::shell().revealInExplorer(u"C:/a b/"_s + name));
    const QString command = awaitNote(roles[0]).value(0);
    QVERIFY2(command.startsWith(u"explorer.exe "_s), qPrintable(command));
    QVERIFY2(command.endsWith(u" /select,\"C:\\a b\\"_s + name + u'"'), qPrintable(command));
}

void TestShell::opensOnlyWhatExists()
{
    const QString program = play(roles[1]);
    QVERIFY(platform::shell().openFile(program));
    QVERIFY(!awaitNote(roles[1]).isEmpty());
    QVERIFY(QFile::remove(notePath(roles[1])));
    QVERIFY(platform::shell().startAgent(program));
    QVERIFY(!awaitNote(roles[1]).isEmpty());
    QVERIFY(!platform::shell().openFile(program + u".none"_s));
    QVERIFY(!platform::shell().startAgent(program + u".none"_s));
    // These would be read as the program's name.
    for (const QString &other : {program + u'.', program + u' '}) {
        QVERIFY(!platform::shell().openFile(other));
        QVERIFY(!platform::shell().revealInExplorer(other));
    }
    // The shell's own error box would wait here for ever.
    platform::shell().runElevated(0, u"C:/nowhere\\Taskwick.exe"_s, u"C:/nowhere"_s);
}

void TestShell::elevatesWithTheWorkingFolder()
{
    if (!tests::isWine())
        QSKIP("Would ask for elevation.");
    tests::TestFolder folder;
    // As the first start writes it: slashes in the folder, a backslash before the name.
    const QString installed = QFileInfo(play(roles[1])).absolutePath();
    platform::shell().runElevated(0, installed + u'\\' + roles[1], folder.path());
    const QStringList note = awaitNote(roles[1]);
    QCOMPARE(note.size(), 2);
    QCOMPARE(note[1].compare(folder.path(), Qt::CaseInsensitive), 0);
    QVERIFY2(!note[0].trimmed().endsWith(u"runas"_s), qPrintable(note[0]));
}

void TestShell::opensOnlyWebPages()
{
    const QString program = play(roles[1]);
    QVERIFY(!platform::shell().openWebPage(QUrl::fromLocalFile(program)));
    QVERIFY(!platform::shell().openWebPage(QUrl(u"javascript:alert(1)"_s)));
    QVERIFY(!platform::shell().openWebPage(QUrl()));
    QTest::qWait(300);
    QVERIFY(!QFile::exists(notePath(roles[1])));
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QString name = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    if (roles.contains(name, Qt::CaseInsensitive))
        return playRole(name);
    TestShell test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_shell.moc"
