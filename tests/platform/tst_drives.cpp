// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Drives.h"

#include <QSignalSpy>
#include <QStorageInfo>
#include <QTest>

#include <atomic>
#include <future>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace platform;

class TestDrives : public QObject
{
    Q_OBJECT

private slots:
    void realDrives();
    void aQuotaUsesNothing();
    void aDriveThatHangsDelaysNobody();
    void canGoWhileADriveHangs();
};

void TestDrives::realDrives()
{
    const QStringList roots = driveRoots();
    QVERIFY(roots.contains(u"C:\\"_s));
    QVERIFY(std::is_sorted(roots.begin(), roots.end()));

    const Drive drive = readDrive(u"C:\\"_s);
    QCOMPARE(drive.root, u"C:\\"_s);
    QCOMPARE(drive.type, Drive::Type::Fixed);
    QVERIFY(drive.ready);
    const QStorageInfo judge(u"C:/"_s);
    QCOMPARE(drive.totalBytes, static_cast<quint64>(judge.bytesTotal()));
    QCOMPARE(drive.fileSystem, QString::fromLatin1(judge.fileSystemType()));
    QVERIFY(drive.freeBytes > 0);
    QVERIFY(drive.freeBytes < drive.totalBytes);

    QCOMPARE(readDrive(u"Q:\\"_s), Drive{.root = u"Q:\\"_s}); // there is none

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

void TestDrives::aDriveThatHangsDelaysNobody()
{
    std::promise<void> answer;
    const std::shared_future<void> answered = answer.get_future().share();
    std::atomic_int asked = 0;
    DriveLister lister([&asked, answered](const QString &root) {
        if (root == u"N:\\"_s) {
            ++asked;
            answered.wait();
        }
        return Drive{.label = root}; // without its root: the lister knows which one it asked
    });
    QStringList read;
    connect(&lister, &DriveLister::driveRead, this, [&](const Drive &drive) {
        read.append(drive.label);
        QCOMPARE(QThread::currentThread(), thread());
    });
    QSignalSpy finished(&lister, &DriveLister::finished);

    const QStringList roots{u"C:\\"_s, u"N:\\"_s, u"D:\\"_s};
    lister.refresh(roots);
    QTRY_COMPARE(read.size(), 2);
    lister.refresh(roots);
    QTRY_COMPARE(read.size(), 4);
    QVERIFY(!read.contains(u"N:\\"_s));
    QVERIFY(lister.isBusy());
    QCOMPARE(finished.size(), 0);
    QCOMPARE(asked, 1);

    answer.set_value();
    QVERIFY(finished.wait());
    QCOMPARE(read.last(), u"N:\\"_s);
    QVERIFY(!lister.isBusy());
    lister.refresh(roots);
    QVERIFY(finished.wait());
    QCOMPARE(asked, 2);
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
        return Drive{.root = root};
    });
    lister->refresh({u"N:\\"_s});
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

QTEST_GUILESS_MAIN(TestDrives)

#include "tst_drives.moc"
