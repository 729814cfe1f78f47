// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/NewFile.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QDir>
#include <QFile>
#include <QTest>

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

} // namespace

class TestNewFile : public QObject
{
    Q_OBJECT

private slots:
    void theNameShowsTheOldOrTheNew_data();
    void theNameShowsTheOldOrTheNew();
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
        file.file().write("new");
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
