// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/NewFile.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <windows.h>

// The program's import of the function.
using FlushFunction = BOOL WINAPI(HANDLE);
extern "C" FlushFunction *__imp_FlushFileBuffers;

using namespace Qt::StringLiterals;
using platform::NewFile;
using Placed = platform::NewFile::Placed;

namespace
{

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "unreadable";
}

// While it lives, FlushFileBuffers() of this program fails as on a full disk.
class FailingFlush
{
public:
    explicit FailingFlush(bool fails) : m_real(__imp_FlushFileBuffers)
    {
        if (fails)
            set([](HANDLE) -> BOOL {
                SetLastError(ERROR_DISK_FULL);
                return FALSE;
            });
    }
    ~FailingFlush() { set(m_real); }

private:
    static void set(FlushFunction *function)
    {
        DWORD before = 0;
        VirtualProtect(&__imp_FlushFileBuffers, sizeof(function), PAGE_READWRITE, &before);
        __imp_FlushFileBuffers = function;
    }

    FlushFunction *m_real;
};

} // namespace

class TestNewFile : public QObject
{
    Q_OBJECT

private slots:
    void theNameShowsTheOldOrTheNew_data();
    void theNameShowsTheOldOrTheNew();
    void whatIsNotWholeReplacesNothing();
    void leftoversGoAndNothingElse();
};

void TestNewFile::theNameShowsTheOldOrTheNew_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("replace");
    QTest::addColumn<Placed>("expected");
    QTest::newRow("free") << u"free"_s << false << Placed::Done;
    QTest::newRow("taken") << u"old"_s << false << Placed::NameTaken;
    QTest::newRow("replaced") << u"old"_s << true << Placed::Done;
    QTest::newRow("read-only") << u"readonly"_s << true << Placed::Failed;
    QTest::newRow("in use") << u"held"_s << true << Placed::Failed;
    QTest::newRow("a folder") << u"folder"_s << true << Placed::Failed;
    QTest::newRow("a link") << u"link"_s << true << Placed::Failed;
    QTest::newRow("in no folder") << u"none\\x"_s << true << Placed::Failed;
}

void TestNewFile::theNameShowsTheOldOrTheNew()
{
    QFETCH(const QString, name);
    QFETCH(const bool, replace);
    QFETCH(const Placed, expected);
    tests::TestFolder disk;
    for (const QString &file : {u"old"_s, u"readonly"_s, u"held"_s, u"target"_s})
        disk.makeFile(file, "old");
    disk.makeFolder(u"folder"_s);
    disk.makeLink(u"link"_s, u"target"_s);
    const QString readOnly = disk.path(u"readonly"_s);
    tests::requireBelow(disk.path(), readOnly);
    QVERIFY(QFile::setPermissions(readOnly, QFile::ReadOwner));
    QFile held(disk.path(u"held"_s));
    QVERIFY(held.open(QIODevice::ReadOnly));
    const int before = static_cast<int>(QDir(disk.path()).count());
    {
        NewFile file(disk.path(name));
        file.write("new");
        for (const QString &old : {u"old"_s, u"readonly"_s, u"held"_s, u"target"_s})
            QCOMPARE(contentOf(disk.path(old)), "old"_ba); // until it is placed
        QString problem;
        QCOMPARE(file.place(replace, problem), expected);
        QCOMPARE(problem.isEmpty(), expected != Placed::Failed);
    }
    QVERIFY(QFile::setPermissions(readOnly, QFile::ReadOwner | QFile::WriteOwner));
    // Nothing of a temporary name stays.
    QCOMPARE(static_cast<int>(QDir(disk.path()).count()), before + (name == u"free" ? 1 : 0));
    if (expected == Placed::Done)
        QCOMPARE(contentOf(disk.path(name)), "new"_ba);
    for (const QString &file : {u"old"_s, u"readonly"_s, u"held"_s, u"target"_s}) {
        if (expected != Placed::Done || file != name)
            QCOMPARE(contentOf(disk.path(file)), "old"_ba);
    }
}

// One of several writes fails, and the disk refuses to store what Windows has accepted.
void TestNewFile::whatIsNotWholeReplacesNothing()
{
    for (const bool onFlush : {false, true}) {
        tests::TestFolder disk;
        const QString path = disk.makeFile(u"old"_s, "old");
        QString problem;
        {
            const FailingFlush failing(onFlush);
            NewFile file(path);
            if (!onFlush) {
                file.file().close();
                QVERIFY(!file.write("the first half"));
                QVERIFY(file.file().open(QIODevice::ReadWrite));
            }
            QCOMPARE(file.write("the second half"), onFlush);
            QCOMPARE(file.place(true, problem), Placed::Failed);
        }
        QVERIFY(!problem.isEmpty());
        QCOMPARE(contentOf(path), "old"_ba);
        QCOMPARE(QDir(disk.path()).entryList(QDir::Files), QStringList(u"old"_s));
    }
}

void TestNewFile::leftoversGoAndNothingElse()
{
    tests::TestFolder disk;
    for (const QString &name : {u"~larkspur-0123456789abcdef.new"_s, u"~larkspur-mine.new"_s, u"x.new"_s}) {
        const QString path = disk.makeFile(name, "x");
        tests::requireBelow(disk.path(), path);
    }
    const NewFile written(disk.path(u"held"_s));
    QCOMPARE(NewFile::clearLeftovers(disk.path()), 1);
    QCOMPARE(QDir(disk.path()).entryList(QDir::Files).size(), 3); // that which is being written too
}

QTEST_GUILESS_MAIN(TestNewFile)

#include "tst_new_file.moc"
