// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/BiggestFilesModel.h"
#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/DiskUsageClearRamThread.h"
#include "DiskUsage/DiskUsageFolderScanThread.h"
#include "DiskUsage/FolderModel.h"
#include "tests/DiskUsage/Scene.h"

#include <QMetaMethod>

using namespace Qt::StringLiterals;
using tests::MemoryEnumerator;

class DiskUsageThreadsTest : public QObject
{
    Q_OBJECT

private slots:
    void namesAreTheAgreedOnes();
    void theModelsAreFreedInFiveSteps();
};

void DiskUsageThreadsTest::namesAreTheAgreedOnes()
{
    using Names = std::initializer_list<const char *>;
    const auto has = [](const QMetaObject &meta, QMetaMethod::MethodType type, Names names) {
        for (const char *name : names) {
            const QMetaMethod method = meta.method(meta.indexOfMethod(name));
            QVERIFY2(method.isValid() && method.methodType() == type, name);
        }
    };
    has(DiskUsageForm::staticMetaObject, QMetaMethod::Slot,
        {"handleUpdatePath(QString)", "handleUpdateTotalSubFolder(int)", "handleUpdateScanProgress()",
         "handleUpdateTotalItemScan(int)", "handleResults()", "handleScanCancel()", "onClearRamFinish()"});
    has(DiskUsageWorkerThread::staticMetaObject, QMetaMethod::Signal,
        {"updatePath(QString)", "updateTotalSubFolder(int)", "updateScanProgress()",
         "updateTotalItemScan(int)", "resultReady()", "scanCancel()"});
    // Its signal of the running count has a name of its own.
    has(DiskUsageFolderScanThread::staticMetaObject, QMetaMethod::Signal,
        {"updateFolderItemScan(int)", "resultReady()"});
    has(DiskUsageClearRamThread::staticMetaObject, QMetaMethod::Signal,
        {"clearRAMStart()", "clearRAMFinish()"});
}

void DiskUsageThreadsTest::theModelsAreFreedInFiveSteps()
{
    MemoryEnumerator disk;
    tests::fill(disk);
    const auto result = tests::scanned(u"C:\\r"_s, disk);
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
    QVERIFY(!events.contains(u"finish"_s)); // told on the thread of the form
    QTRY_VERIFY(events.contains(u"finish"_s));
    QCOMPARE(
        events.join(", "_L1),
        u"start, 1 emptied, step, 1 cleared, step, 2 emptied, step, 2 cleared, step, 3 cleared, step, finish"_s);
    QCOMPARE(folders.rowCount() + biggest.columnCount() + data.categoryTotal(), 0);
}

QTEST_GUILESS_MAIN(DiskUsageThreadsTest)
#include "tst_disk_usage_threads.moc"
