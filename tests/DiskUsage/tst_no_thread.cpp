// SPDX-License-Identifier: GPL-3.0-or-later
// What asks disks on detached threads, where there is no thread to be had.
#include "DiskUsage/SiblingCheck.h"
#include "platform/DetachedThread.h"
#include "platform/Drives.h"

#include <QSignalSpy>
#include <QTest>

#include <system_error>

using namespace Qt::StringLiterals;

namespace
{

bool threadsAreLeft = false;

} // namespace

// Takes the place of the library's: a system that has no thread left cannot be had for a test.
void platform::runDetached(std::function<void()> task)
{
    if (!threadsAreLeft)
        throw std::system_error(EAGAIN, std::generic_category());
    task();
}

class NoThreadTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { threadsAreLeft = false; }
    void drivesAreNotReady();
    void siblingsAreNotTold();
};

void NoThreadTest::drivesAreNotReady()
{
    platform::DriveLister lister([](const QString &root) {
        platform::Drive drive;
        drive.root = root;
        drive.ready = true;
        return drive;
    });
    QStringList told;
    connect(&lister, &platform::DriveLister::driveRead, this, [&told](const platform::Drive &drive) {
        told.append(drive.root + (drive.ready ? u" ready"_s : u" not ready"_s));
    });
    QSignalSpy finished(&lister, &platform::DriveLister::finished);
    lister.refresh({u"C:\\"_s, u"D:\\"_s});
    QVERIFY(told.isEmpty()); // not before the caller goes on
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(told, QStringList({u"C:\\ not ready"_s, u"D:\\ not ready"_s}));
    QVERIFY(!lister.isBusy());

    threadsAreLeft = true;
    lister.refresh({u"C:\\"_s});
    QTRY_COMPARE(finished.count(), 2);
    QCOMPARE(told.last(), u"C:\\ ready"_s);
}

void NoThreadTest::siblingsAreNotTold()
{
    SiblingCheck check(
        [](const QString &folder, const core::CancelFlag &) { return QStringList(folder + u'2'); });
    QList<QStringList> told;
    connect(&check, &SiblingCheck::found, this,
            [&told](const QStringList &siblings) { told.append(siblings); });
    check.check({u"C:\\a"_s});
    QVERIFY(told.isEmpty());
    QTRY_COMPARE(told, QList<QStringList>({{}}));

    // The next one, also one that was asked for meanwhile, is as good as any.
    check.check({u"C:\\b"_s});
    threadsAreLeft = true;
    check.check({u"C:\\c"_s});
    QTRY_COMPARE(told.size(), 2);
    QCOMPARE(told.last(), QStringList({u"C:\\c2"_s}));
}

QTEST_GUILESS_MAIN(NoThreadTest)
#include "tst_no_thread.moc"
