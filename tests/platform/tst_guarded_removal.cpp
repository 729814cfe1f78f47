// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GuardedRemoval.h"
#include "platform/Paths.h"
#include "tests/support/FakeFileProbe.h"
#include "tests/support/FakeRecycleBin.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QDir>
#include <QFile>
#include <QTest>

using platform::Removal;
using platform::ShownFile;
using tests::FakeRecycleBin;
using tests::TestFolder;

namespace
{

constexpr quint64 written = 133'000'000'000'000'000;

// Written down as a list does it.
ShownFile shown(const TestFolder &folder, const QString &relative)
{
    const QString path = folder.path(relative);
    const auto facts = platform::fileFacts(path);
    return facts ? ShownFile{folder.path(), path, facts->size, facts->lastWriteTime, facts->identity}
                 : ShownFile{folder.path(), path, 0, 0, std::nullopt};
}

} // namespace

class TestGuardedRemoval : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void movesTheFileThatWasShown();
    void leavesWhatIsAnotherFileNow_data();
    void leavesWhatIsAnotherFileNow();
    void neverGoesThroughALink();
    void refusesWhatIsNoFile();
    void refusesWhatTheBinWouldRefuse();
    void leavesInTheCloudWhatIsOnlyThere();
    void holdsTheFileUntilItIsMoved();
    void keepsTheFileWhenTheBinFails();
};

void TestGuardedRemoval::movesTheFileThatWasShown()
{
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    folder.makeFile(QStringLiteral("sub\\a.txt"), "content");
    ShownFile file = shown(folder, QStringLiteral("sub\\a.txt"));
    // Another spelling of the chosen folder is the same folder.
    file.root = file.root.toUpper() + u'\\';
    QVERIFY(!platform::removalObstacle(file));
    QVERIFY(bin.asked.isEmpty());
    QCOMPARE(platform::moveShownFile(file), Removal::Moved);
    QCOMPARE(bin.taken, QStringList{file.path});
    QCOMPARE(platform::moveShownFile(file), Removal::Vanished);
    QCOMPARE(bin.asked.size(), 1);
}

void TestGuardedRemoval::leavesWhatIsAnotherFileNow_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<quint64>("time");
    QTest::addColumn<bool>("replaced");
    QTest::newRow("longer") << QByteArray("content!") << written << false;
    QTest::newRow("100 ns younger") << QByteArray("content") << written + 1 << false;
    QTest::newRow("replaced by one of its size and time") << QByteArray("CONTENT") << written << true;
}

void TestGuardedRemoval::leavesWhatIsAnotherFileNow()
{
    QFETCH(QByteArray, content);
    QFETCH(quint64, time);
    QFETCH(bool, replaced);
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    const QString name = QStringLiteral("a.txt");
    const QString path = folder.makeFile(name, "content");
    folder.setTimes(name, written, written);
    const ShownFile file = shown(folder, name);
    if (replaced) {
        // The old file stays under another name, so that its identity cannot be given out again.
        tests::requireBelow(folder.path(), path);
        QVERIFY(QFile::rename(path, folder.path(QStringLiteral("old.txt"))));
    }
    folder.makeFile(name, content);
    folder.setTimes(name, time, written);
    QCOMPARE(platform::removalObstacle(file), std::optional(Removal::Changed));
    QCOMPARE(platform::moveShownFile(file), Removal::Changed);
    QVERIFY(platform::fileExists(path));
    QVERIFY(bin.asked.isEmpty());
}

void TestGuardedRemoval::neverGoesThroughALink()
{
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    const QString target = folder.makeFile(QStringLiteral("there\\a.txt"), "content");
    folder.makeLink(QStringLiteral("link"), QStringLiteral("there"));
    folder.makeLink(QStringLiteral("a.txt"), QStringLiteral("there\\a.txt"));
    for (const QString &name : {QStringLiteral("link\\a.txt"), QStringLiteral("a.txt")})
        QCOMPARE(platform::moveShownFile(shown(folder, name)), Removal::ThroughLink);
    // A file outside the chosen folder was never in a list of it.
    ShownFile outside = shown(folder, QStringLiteral("there\\a.txt"));
    outside.root = folder.makeFolder(QStringLiteral("chosen"));
    QCOMPARE(platform::moveShownFile(outside), Removal::ThroughLink);
    QVERIFY(bin.asked.isEmpty());
    QVERIFY(platform::fileExists(target));

    // A chosen folder that is a link itself is what the user meant.
    ShownFile below = shown(folder, QStringLiteral("link\\a.txt"));
    below.root = folder.path(QStringLiteral("link"));
    QVERIFY(!platform::removalObstacle(below));
}

void TestGuardedRemoval::refusesWhatIsNoFile()
{
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    folder.makeFolder(QStringLiteral("folder"));
    QCOMPARE(platform::moveShownFile(shown(folder, QStringLiteral("folder"))), Removal::Refused);
    for (const QString &path : {QString(), QStringLiteral("C:"), QStringLiteral("C:\\")})
        QCOMPARE(platform::moveShownFile({QStringLiteral("C:\\"), path, 0, 0, std::nullopt}),
                 Removal::Refused);
    QVERIFY(bin.asked.isEmpty());
}

// Before anybody is asked: the shell would read these as the names of other items.
void TestGuardedRemoval::refusesWhatTheBinWouldRefuse()
{
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    folder.makeFile(QStringLiteral("b.txt"));
    for (const QString &name : {QStringLiteral("b.txt."), QStringLiteral("b.txt "),
                                QStringLiteral("dir.\\b.txt"), QStringLiteral("nul")}) {
        folder.makeFile(name);
        QCOMPARE(platform::removalObstacle(shown(folder, name)), std::optional(Removal::Refused));
        QCOMPARE(platform::moveShownFile(shown(folder, name)), Removal::Refused);
    }
    QVERIFY(bin.asked.isEmpty());
}

void TestGuardedRemoval::leavesInTheCloudWhatIsOnlyThere()
{
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    folder.makeFile(QStringLiteral("a.txt"), "content");
    const ShownFile file = shown(folder, QStringLiteral("a.txt"));
    tests::FakeFileProbe probe;
    probe.setAttributes(file.path, core::AttributeRecallOnOpen);
    QCOMPARE(platform::removalObstacle(file), std::optional(Removal::InCloud));
    QCOMPARE(platform::moveShownFile(file), Removal::InCloud);
    QVERIFY(bin.asked.isEmpty());
    // What is fetched only when its content is read can be moved as it is.
    probe.setAttributes(file.path, core::AttributeRecallOnDataAccess);
    QCOMPARE(platform::moveShownFile(file), Removal::Moved);
}

void TestGuardedRemoval::holdsTheFileUntilItIsMoved()
{
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    const QString path = folder.makeFile(QStringLiteral("sub\\a.txt"), "content");
    bool held = false;
    bin.beforeMove = [&](const QString &) {
        tests::requireBelow(folder.path(), path);
        // Windows does not rename the folder of an open file. Wine does, but there a file that was deleted
        // stays until nobody has it open.
        if (tests::isWine())
            held = QFile::remove(path) && platform::fileExists(path);
        else
            held = !QDir().rename(folder.path(QStringLiteral("sub")), folder.path(QStringLiteral("other")));
    };
    const Removal result = platform::moveShownFile(shown(folder, QStringLiteral("sub\\a.txt")));
    QCOMPARE(bin.asked, QStringList{path});
    QVERIFY(held);
    // And no longer; nor does it stand in the way of the move.
    QVERIFY(!platform::fileExists(path));
    if (!tests::isWine())
        QCOMPARE(result, Removal::Moved);
}

void TestGuardedRemoval::keepsTheFileWhenTheBinFails()
{
    TestFolder folder;
    FakeRecycleBin bin(folder.path());
    bin.fails = true;
    const QString path = folder.makeFile(QStringLiteral("a.txt"), "content");
    QCOMPARE(platform::moveShownFile(shown(folder, QStringLiteral("a.txt"))), Removal::Failed);
    QVERIFY(platform::fileExists(path));
    QCOMPARE(bin.asked, QStringList{path});
}

QTEST_GUILESS_MAIN(TestGuardedRemoval)

#include "tst_guarded_removal.moc"
