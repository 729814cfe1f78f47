// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Paths.h"
#include "platform/RecycleBin.h"
#include "tests/support/FakeRecycleBin.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using platform::RecycleBin;
using tests::FakeRecycleBin;
using tests::TestFolder;

class TestRecycleBin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void refusesWithoutAsking();
    void takesFoldersOnlyWhenAccepted();
    void theRealOneNeverErases();
};

void TestRecycleBin::refusesWithoutAsking()
{
    TestFolder folder;
    FakeRecycleBin fake(folder.path());
    // The shell would read the first three as "a.txt", which is another file.
    folder.makeFile(u"a.txt"_s);
    folder.makeFile(u"outside\\b.txt"_s);
    const QStringList refused{
        folder.makeFile(u"a.txt."_s),
        folder.makeFile(u"a.txt "_s),
        folder.path(u"x\\..\\a.txt"_s),
        folder.makeFile(u"dir.\\a.txt"_s),
        folder.makeFile(u"nul"_s),
        folder.makeLink(u"link.txt"_s, u"outside\\b.txt"_s),
        folder.makeLink(u"link"_s, u"outside"_s),
        folder.path(u"nothing.txt"_s),
        u"a.txt"_s,
        QString(),
        u"C:"_s,
        u"C:\\"_s,
        u"\\\\?\\C:\\"_s,
        u"\\\\server\\share"_s,
    };
    for (const QString &path : refused)
        QVERIFY2(platform::recycleBin().moveToTrash(path, RecycleBin::Accept::FilesAndFolders) ==
                     RecycleBin::Outcome::Refused,
                 qPrintable(path));
    QVERIFY(fake.asked.isEmpty());
    QVERIFY(platform::fileExists(folder.path(u"a.txt"_s)));
    QVERIFY(platform::fileExists(folder.path(u"outside\\b.txt"_s)));
}

void TestRecycleBin::takesFoldersOnlyWhenAccepted()
{
    TestFolder folder;
    FakeRecycleBin fake(folder.path());
    const QString sub = folder.makeFolder(u"sub"_s);
    folder.makeFile(u"sub\\a.txt"_s);
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
    const QString file = folder.makeFile(u"a.txt"_s, "content");
    tests::requireBelow(folder.path(), file);
    const RecycleBin::Outcome outcome = platform::recycleBin().moveToTrash(file);
    if (tests::isWine())
        QCOMPARE(outcome, RecycleBin::Outcome::Failed);
    QCOMPARE(platform::fileExists(file), outcome != RecycleBin::Outcome::Moved);
}

QTEST_GUILESS_MAIN(TestRecycleBin)

#include "tst_recycle_bin.moc"
