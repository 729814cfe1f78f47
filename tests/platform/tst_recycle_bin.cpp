// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Paths.h"
#include "platform/RecycleBin.h"
#include "tests/support/FakeRecycleBin.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QFile>
#include <QTest>

using platform::RecycleBin;
using tests::FakeRecycleBin;
using tests::TestFolder;

class TestRecycleBin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void takesExactlyTheFile();
    void tellsAFailure();
    void refusesWithoutAsking();
    void takesFoldersOnlyWhenAccepted();
    void theRealOneNeverErases();
};

void TestRecycleBin::takesExactlyTheFile()
{
    TestFolder folder;
    FakeRecycleBin fake(folder.path());
    const QString file = folder.makeFile(QStringLiteral("a.txt"), "content");
    const QString other = folder.makeFile(QStringLiteral("b.txt"), "content");
    QCOMPARE(platform::recycleBin().moveToTrash(file), RecycleBin::Outcome::Moved);
    QVERIFY(!platform::fileExists(file));
    QVERIFY(platform::fileExists(other));
    QFile kept(fake.keptAs(file));
    QVERIFY(kept.open(QFile::ReadOnly));
    QCOMPARE(kept.readAll(), QByteArray("content"));
    QCOMPARE(fake.asked, QStringList{file});
}

void TestRecycleBin::tellsAFailure()
{
    TestFolder folder;
    FakeRecycleBin fake(folder.path());
    fake.fails = true;
    const QString file = folder.makeFile(QStringLiteral("a.txt"));
    QCOMPARE(platform::recycleBin().moveToTrash(file), RecycleBin::Outcome::Failed);
    QVERIFY(platform::fileExists(file));
    QCOMPARE(fake.asked, QStringList{file});
}

void TestRecycleBin::refusesWithoutAsking()
{
    TestFolder folder;
    FakeRecycleBin fake(folder.path());
    // The shell would read the first three as "a.txt", which is another file.
    folder.makeFile(QStringLiteral("a.txt"));
    folder.makeFile(QStringLiteral("outside\\b.txt"));
    const QStringList refused{
        folder.makeFile(QStringLiteral("a.txt.")),
        folder.makeFile(QStringLiteral("a.txt ")),
        folder.path(QStringLiteral("x\\..\\a.txt")),
        folder.makeFile(QStringLiteral("dir.\\a.txt")),
        folder.makeFile(QStringLiteral("nul")),
        folder.makeLink(QStringLiteral("link.txt"), QStringLiteral("outside\\b.txt")),
        folder.makeLink(QStringLiteral("link"), QStringLiteral("outside")),
        folder.path(QStringLiteral("nothing.txt")),
        QStringLiteral("a.txt"),
        QString(),
        QStringLiteral("C:"),
        QStringLiteral("C:\\"),
        QStringLiteral("\\\\?\\C:\\"),
        QStringLiteral("\\\\server\\share"),
    };
    for (const QString &path : refused)
        QVERIFY2(platform::recycleBin().moveToTrash(path, RecycleBin::Accept::FilesAndFolders) ==
                     RecycleBin::Outcome::Refused,
                 qPrintable(path));
    QVERIFY(fake.asked.isEmpty());
    QVERIFY(platform::fileExists(folder.path(QStringLiteral("a.txt"))));
    QVERIFY(platform::fileExists(folder.path(QStringLiteral("outside\\b.txt"))));
}

void TestRecycleBin::takesFoldersOnlyWhenAccepted()
{
    TestFolder folder;
    FakeRecycleBin fake(folder.path());
    const QString sub = folder.makeFolder(QStringLiteral("sub"));
    folder.makeFile(QStringLiteral("sub\\a.txt"));
    QCOMPARE(platform::recycleBin().moveToTrash(sub), RecycleBin::Outcome::Refused);
    QVERIFY(fake.asked.isEmpty());
    QCOMPARE(platform::recycleBin().moveToTrash(sub, RecycleBin::Accept::FilesAndFolders),
             RecycleBin::Outcome::Moved);
    QVERIFY(!platform::fileExists(sub));
}

void TestRecycleBin::theRealOneNeverErases()
{
    // Wine has no recycle bin: there the answer is "failed", and the file has to be where it was.
    TestFolder folder;
    const QString file = folder.makeFile(QStringLiteral("a.txt"), "content");
    tests::requireBelow(folder.path(), file);
    const RecycleBin::Outcome outcome = platform::recycleBin().moveToTrash(file);
    if (tests::isWine())
        QCOMPARE(outcome, RecycleBin::Outcome::Failed);
    QCOMPARE(platform::fileExists(file), outcome != RecycleBin::Outcome::Moved);
}

QTEST_GUILESS_MAIN(TestRecycleBin)

#include "tst_recycle_bin.moc"
