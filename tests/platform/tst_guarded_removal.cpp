// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GuardedRemoval.h"
#include "platform/Paths.h"
#include "platform/RecycleBin.h"
#include "tests/support/FakeFileProbe.h"
#include "tests/support/FakeRecycleBin.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using platform::Guarded;
using platform::RecycleBin;
using platform::ShownItem;
using tests::FakeRecycleBin;
using tests::TestFolder;

namespace
{

constexpr quint64 written = 133'000'000'000'000'000;

// Written down as a list does it.
ShownItem shown(const TestFolder &folder, const QString &relative)
{
    const QString path = folder.path(relative);
    const auto facts = platform::fileFacts(path);
    return facts ? ShownItem{folder.path(), path, facts->size, facts->lastWriteTime, facts->identity}
                 : ShownItem{folder.path(), path, 0, 0, std::nullopt};
}

} // namespace

class TestGuardedRemoval : public QObject
{
    Q_OBJECT

private slots:
    void movesTheFileThatWasShown();
    void leavesWhatIsAnotherFileNow();
    void neverGoesThroughALink();
    void refusesWhatTheBinWouldRefuse();
    void leavesInTheCloudWhatIsOnlyThere();
    void holdsTheFileUntilItIsMoved();
    void takesFoldersOnlyWhenAccepted();
    void theRealBinNeverErases();
};

void TestGuardedRemoval::movesTheFileThatWasShown()
{
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    folder.makeFile(u"sub\\a.txt"_s, "content");
    ShownItem file = shown(folder, u"sub\\a.txt"_s);
    // Another spelling of the chosen folder is the same folder.
    file.root = file.root.toUpper() + u'\\';
    QVERIFY(!platform::removalObstacle(file));
    QVERIFY(bin.asked.isEmpty());
    bin.fails = true;
    QCOMPARE(platform::moveShownItem(file), Guarded::Failed);
    QVERIFY(platform::fileExists(file.path));
    bin.fails = false;
    bin.tellsNoPlace = true;
    folder.makeFile(u"sub\\b.txt"_s, "content");
    QCOMPARE(platform::moveShownItem(shown(folder, u"sub\\b.txt"_s)), Guarded::Untraced);
    bin.tellsNoPlace = false;
    QCOMPARE(platform::moveShownItem(file), Guarded::Done);
    QCOMPARE(bin.taken.last(), file.path);
    QCOMPARE(platform::moveShownItem(file), Guarded::Vanished);
    QCOMPARE(bin.asked.size(), 3);
}

void TestGuardedRemoval::leavesWhatIsAnotherFileNow()
{
    struct Change {
        QByteArray content;
        quint64 time;
        bool replaced;
    };
    for (const Change &change : {Change{"longer content", written, false},
                                 Change{"content", written + 1, false}, Change{"CONTENT", written, true}}) {
        TestFolder folder;
        FakeRecycleBin bin(folder.path());
        const QString path = folder.makeFile(u"a.txt"_s, "content");
        folder.setTimes(u"a.txt"_s, written, written);
        const ShownItem file = shown(folder, u"a.txt"_s);
        if (change.replaced) {
            // The old file stays under another name, so that its identity cannot be given out again.
            tests::requireBelow(folder.path(), path);
            QVERIFY(QFile::rename(path, folder.path(u"old.txt"_s)));
        }
        folder.makeFile(u"a.txt"_s, change.content);
        folder.setTimes(u"a.txt"_s, change.time, written);
        QCOMPARE(platform::removalObstacle(file), std::optional(Guarded::Changed));
        QCOMPARE(platform::moveShownItem(file), Guarded::Changed);
        QVERIFY(platform::fileExists(path));
        QVERIFY(bin.asked.isEmpty());
    }
}

void TestGuardedRemoval::neverGoesThroughALink()
{
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    const QString target = folder.makeFile(u"there\\a.txt"_s, "content");
    folder.makeLink(u"link"_s, u"there"_s);
    folder.makeLink(u"a.txt"_s, u"there\\a.txt"_s);
    for (const QString &name : {u"link\\a.txt"_s, u"a.txt"_s})
        QCOMPARE(platform::moveShownItem(shown(folder, name)), Guarded::ThroughLink);
    // A file outside the chosen folder was never in a list of it.
    ShownItem outside = shown(folder, u"there\\a.txt"_s);
    outside.root = folder.makeFolder(u"chosen"_s);
    QCOMPARE(platform::moveShownItem(outside), Guarded::ThroughLink);
    QVERIFY(bin.asked.isEmpty());
    QVERIFY(platform::fileExists(target));

    // A chosen folder that is a link itself is what the user meant.
    ShownItem below = shown(folder, u"link\\a.txt"_s);
    below.root = folder.path(u"link"_s);
    QVERIFY(!platform::removalObstacle(below));
}

// Neither the guard nor the recycle bin asks the shell.
void TestGuardedRemoval::refusesWhatTheBinWouldRefuse()
{
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    folder.makeFile(u"a.txt"_s);
    folder.makeFile(u"outside\\b.txt"_s);
    // The shell would read these as the names of other items.
    QStringList refused{folder.makeFile(u"a.txt."_s), folder.makeFile(u"a.txt "_s),
                        folder.makeFile(u"dir.\\a.txt"_s), folder.makeFile(u"nul"_s)};
    refused += {QString(), u"C:"_s, u"C:\\"_s};
    for (const QString &path : std::as_const(refused)) {
        const ShownItem file{folder.path(), path, 0, 0, std::nullopt};
        QCOMPARE(platform::removalObstacle(file), std::optional(Guarded::Refused));
        QCOMPARE(platform::moveShownItem(file), Guarded::Refused);
    }
    QCOMPARE(platform::moveShownItem(shown(folder, u"outside"_s)), Guarded::Refused); // a folder
    refused += {folder.path(u"x\\..\\a.txt"_s),
                folder.makeLink(u"link.txt"_s, u"outside\\b.txt"_s),
                folder.makeLink(u"link"_s, u"outside"_s),
                folder.path(u"nothing.txt"_s),
                u"a.txt"_s,
                u"\\\\?\\C:\\"_s,
                u"\\\\server\\share"_s};
    for (const QString &path : std::as_const(refused))
        QVERIFY2(platform::recycleBin().moveToTrash(path, RecycleBin::Accept::FilesAndFolders) ==
                     RecycleBin::Outcome::Refused,
                 qPrintable(path));
    QVERIFY(bin.asked.isEmpty());
}

void TestGuardedRemoval::leavesInTheCloudWhatIsOnlyThere()
{
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    folder.makeFile(u"a.txt"_s, "content");
    const ShownItem file = shown(folder, u"a.txt"_s);
    tests::FakeFileProbe probe;
    for (const quint32 attribute :
         {core::AttributeRecallOnOpen, core::AttributeRecallOnDataAccess, core::AttributeOffline}) {
        probe.setAttributes(file.path, attribute);
        QCOMPARE(platform::removalObstacle(file), std::optional(Guarded::InCloud));
        QCOMPARE(platform::moveShownItem(file), Guarded::InCloud);
    }
    QVERIFY(bin.asked.isEmpty());
    probe.setAttributes(file.path, 0);
    QCOMPARE(platform::moveShownItem(file), Guarded::Done);
}

void TestGuardedRemoval::holdsTheFileUntilItIsMoved()
{
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    const QString path = folder.makeFile(u"sub\\a.txt"_s, "content");
    bool held = false;
    bin.beforeMove = [&](const QString &) {
        tests::requireBelow(folder.path(), path);
        // Windows does not rename the folder of an open file. Wine does, but there a file that was deleted
        // stays until nobody has it open.
        if (tests::isWine())
            held = QFile::remove(path) && platform::fileExists(path);
        else
            held = !QDir().rename(folder.path(u"sub"_s), folder.path(u"other"_s));
    };
    const Guarded result = platform::moveShownItem(shown(folder, u"sub\\a.txt"_s));
    QCOMPARE(bin.asked, QStringList{path});
    QVERIFY(held);
    // And no longer; nor does it stand in the way of the move.
    QVERIFY(!platform::fileExists(path));
    if (!tests::isWine())
        QCOMPARE(result, Guarded::Done);
}

void TestGuardedRemoval::takesFoldersOnlyWhenAccepted()
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

void TestGuardedRemoval::theRealBinNeverErases()
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

QTEST_GUILESS_MAIN(TestGuardedRemoval)

#include "tst_guarded_removal.moc"
