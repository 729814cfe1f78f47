// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Drives.h"

#include <QSignalSpy>
#include <QStorageInfo>
#include <QTest>

#include <atomic>
#include <future>
#include <memory>
#include <optional>

using namespace platform;

class TestDrives : public QObject
{
    Q_OBJECT

private slots:
    void realDrives();
    void aQuotaUsesNothing();
    void absentDrive();
    void aDriveThatHangsDelaysNobody();
    void canGoWhileADriveHangs();
    void asksAHangingDriveOnlyOnce();
};

void TestDrives::realDrives()
{
    const QStringList roots = driveRoots();
    QVERIFY(roots.contains(QStringLiteral("C:\\")));
    QVERIFY(std::is_sorted(roots.begin(), roots.end()));

    const Drive drive = readDrive(QStringLiteral("C:\\"));
    QCOMPARE(drive.root, QStringLiteral("C:\\"));
    QCOMPARE(drive.type, Drive::Type::Fixed);
    QVERIFY(drive.ready);
    const QStorageInfo judge(QStringLiteral("C:/"));
    QCOMPARE(drive.totalBytes, static_cast<quint64>(judge.bytesTotal()));
    QCOMPARE(drive.fileSystem, QString::fromLatin1(judge.fileSystemType()));
    QVERIFY(drive.freeBytes > 0);
    QVERIFY(drive.freeBytes < drive.totalBytes);

    DriveLister lister;
    QSignalSpy finished(&lister, &DriveLister::finished);
    QStringList read;
    connect(&lister, &DriveLister::driveRead, this, [&](const Drive &one) { read.append(one.root); });
    lister.refresh();
    QVERIFY(lister.isBusy());
    QVERIFY(finished.wait());
    QVERIFY(!lister.isBusy());
    read.sort();
    QCOMPARE(read, roots);
}

void TestDrives::aQuotaUsesNothing()
{
    Drive drive;
    drive.totalBytes = 100; // of the user's quota
    drive.freeBytes = 140;  // of the volume
    QCOMPARE(drive.usedBytes(), quint64{0});
    drive.freeBytes = 30;
    QCOMPARE(drive.usedBytes(), quint64{70});
}

void TestDrives::absentDrive()
{
    const Drive drive = readDrive(QStringLiteral("Q:\\"));
    QCOMPARE(drive, (Drive{.root = QStringLiteral("Q:\\"), .label = {}, .fileSystem = {}}));
}

void TestDrives::aDriveThatHangsDelaysNobody()
{
    std::promise<void> answer;
    const std::shared_future<void> answered = answer.get_future().share();
    DriveLister lister([answered](const QString &root) {
        if (root == QStringLiteral("N:\\"))
            answered.wait();
        return Drive{.root = root, .label = root, .fileSystem = {}};
    });
    QStringList read;
    connect(&lister, &DriveLister::driveRead, this, [&](const Drive &drive) {
        read.append(drive.label);
        QCOMPARE(QThread::currentThread(), thread());
    });
    QSignalSpy finished(&lister, &DriveLister::finished);

    lister.refresh({QStringLiteral("C:\\"), QStringLiteral("N:\\"), QStringLiteral("D:\\")});
    QTRY_COMPARE(read.size(), 2);
    QVERIFY(!read.contains(QStringLiteral("N:\\")));
    QVERIFY(lister.isBusy());
    QCOMPARE(finished.size(), 0);

    answer.set_value();
    QVERIFY(finished.wait());
    QCOMPARE(read.last(), QStringLiteral("N:\\"));
    QVERIFY(!lister.isBusy());
}

void TestDrives::canGoWhileADriveHangs()
{
    std::promise<void> answer;
    const std::shared_future<void> answered = answer.get_future().share();
    const auto ended = std::make_shared<std::atomic_bool>(false);
    std::optional<DriveLister> lister;
    lister.emplace([answered, ended](const QString &root) {
        answered.wait();
        *ended = true;
        return Drive{.root = root, .label = {}, .fileSystem = {}};
    });
    lister->refresh({QStringLiteral("N:\\")});
    lister.reset();
    QVERIFY(!*ended);

    // The next one lies at the same address: an answer that still finds its way to the old one shows up here.
    lister.emplace();
    QSignalSpy late(&*lister, &DriveLister::driveRead);
    answer.set_value();
    QTRY_VERIFY(*ended);
    QTest::qWait(50);
    QVERIFY(late.isEmpty());
}

void TestDrives::asksAHangingDriveOnlyOnce()
{
    std::promise<void> answer;
    const std::shared_future<void> answered = answer.get_future().share();
    const auto asked = std::make_shared<std::atomic_int>(0);
    DriveLister lister([answered, asked](const QString &) {
        ++*asked;
        answered.wait();
        return Drive{}; // without its root: the lister knows which one it asked
    });
    QSignalSpy finished(&lister, &DriveLister::finished);
    for (int time = 0; time < 5; ++time)
        lister.refresh({QStringLiteral("N:\\")});
    answer.set_value();
    QVERIFY(finished.wait());
    QCOMPARE(*asked, 1);
    lister.refresh({QStringLiteral("N:\\")});
    QVERIFY(finished.wait());
    QCOMPARE(*asked, 2);
}

QTEST_GUILESS_MAIN(TestDrives)

#include "tst_drives.moc"
