// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/BiggestFilesModel.h"
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/DiskUsageClearRamThread.h"
#include "DiskUsage/DiskUsageFolderScanThread.h"
#include "DiskUsage/DiskUsageForm.h"
#include "DiskUsage/FolderModel.h"
#include "tests/DiskUsage/Scans.h"

#include <QMetaMethod>
#include <QTest>

using tests::MemoryEnumerator;

namespace
{

QStringList methods(const QMetaObject &meta, QMetaMethod::MethodType type)
{
    QStringList declared;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        if (meta.method(i).methodType() == type)
            declared.append(QString::fromLatin1(meta.method(i).methodSignature()));
    return declared;
}

void fill(MemoryEnumerator &disk)
{
    disk.addFile(QStringLiteral("C:\\r\\a\\one.txt"), 400);
    disk.addFile(QStringLiteral("C:\\r\\a\\two.xyz"), 300);
    disk.addFile(QStringLiteral("C:\\r\\three.mp4"), 200);
}

} // namespace

class DiskUsageThreadsTest : public QObject
{
    Q_OBJECT

private slots:
    void namesAreTheAgreedOnes_data();
    void namesAreTheAgreedOnes();
    void theModelsAreFreedInFiveSteps();
    void aFolderScanKeepsNoFileRecords();
};

void DiskUsageThreadsTest::namesAreTheAgreedOnes_data()
{
    QTest::addColumn<const QMetaObject *>("meta");
    QTest::addColumn<bool>("slot");
    QTest::addColumn<QString>("names");
    QTest::newRow("form") << &DiskUsageForm::staticMetaObject << true
                          << QStringLiteral("handleUpdatePath(QString) handleUpdateTotalSubFolder(int) "
                                            "handleUpdateScanProgress() handleUpdateTotalItemScan(int) "
                                            "handleResults() handleScanCancel() onClearRamFinish()");
    QTest::newRow("scan") << &DiskUsageWorkerThread::staticMetaObject << false
                          << QStringLiteral("updatePath(QString) updateTotalSubFolder(int) "
                                            "updateScanProgress() updateTotalItemScan(int) resultReady() "
                                            "scanCancel()");
    // Its signal of the running count has a name of its own.
    QTest::newRow("folder scan") << &DiskUsageFolderScanThread::staticMetaObject << false
                                 << QStringLiteral("updateFolderItemScan(int) resultReady()");
    QTest::newRow("clearing") << &DiskUsageClearRamThread::staticMetaObject << false
                              << QStringLiteral("clearRAMStart() clearRAMFinish()");
}

void DiskUsageThreadsTest::namesAreTheAgreedOnes()
{
    QFETCH(const QMetaObject *, meta);
    QFETCH(bool, slot);
    QFETCH(QString, names);
    const QStringList declared = methods(*meta, slot ? QMetaMethod::Slot : QMetaMethod::Signal);
    for (const QString &name : names.split(QLatin1Char(' ')))
        QVERIFY2(declared.contains(name), qPrintable(name));
}

void DiskUsageThreadsTest::theModelsAreFreedInFiveSteps()
{
    MemoryEnumerator disk;
    fill(disk);
    const auto result = tests::scanned(QStringLiteral("C:\\r"), disk);
    FolderModel folders;
    BiggestFilesModel biggest;
    DataFilesModel data;
    folders.setResult(result);
    biggest.setFiles(result->biggestFiles);
    data.setResult(result);

    DiskUsageClearRamThread thread(folders, biggest, data);
    QStringList events;
    const auto note = [this, &events](auto *sender, auto signal, const char *what) {
        connect(
            sender, signal, this, [&events, what] { events.append(QLatin1String(what)); },
            Qt::DirectConnection);
    };
    note(&thread, &DiskUsageClearRamThread::clearRAMStart, "start");
    note(&thread, &DiskUsageClearRamThread::clearRAMStep, "step");
    note(&thread, &DiskUsageClearRamThread::clearRAMFinish, "finish");
    note(&folders, &QAbstractItemModel::rowsRemoved, "1 emptied");
    note(&folders, &QAbstractItemModel::modelReset, "1 cleared");
    note(&biggest, &QAbstractItemModel::columnsRemoved, "2 emptied");
    note(&biggest, &QAbstractItemModel::modelReset, "2 cleared");
    note(&data, &QAbstractItemModel::modelReset, "3 cleared");
    thread.start();
    QVERIFY(thread.wait(5000));
    QVERIFY(!events.contains(QStringLiteral("finish"))); // told on the thread of the form
    QTRY_VERIFY(events.contains(QStringLiteral("finish")));
    QCOMPARE(events.join(QLatin1String(", ")),
             QStringLiteral("start, 1 emptied, step, 1 cleared, step, 2 emptied, step, 2 cleared, step, "
                            "3 cleared, step, finish"));
    QCOMPARE(folders.rowCount() + biggest.columnCount() + data.categoryTotal(), 0);
}

void DiskUsageThreadsTest::aFolderScanKeepsNoFileRecords()
{
    MemoryEnumerator disk;
    fill(disk);
    ScanJob job;
    job.root = QStringLiteral("C:\\r\\a");
    job.options.fileTypes = core::defaultFileTypes();
    job.enumerator = std::make_unique<tests::BorrowedEnumerator>(disk);
    DiskUsageFolderScanThread thread(std::move(job));
    thread.start();
    QVERIFY(thread.wait(5000));
    const auto result = thread.takeResult();
    QVERIFY(result);
    QCOMPARE(result->folders.front().bytes, quint64(700));
    QCOMPARE(result->biggestFiles.size(), std::size_t(2));
    // Nobody reads them, and a drive has millions.
    for (const diskusage::FileTypeResult &type : result->fileTypes)
        QVERIFY(type.files.empty());
    QVERIFY(result->others.files.empty());
}

QTEST_GUILESS_MAIN(DiskUsageThreadsTest)
#include "tst_disk_usage_threads.moc"
