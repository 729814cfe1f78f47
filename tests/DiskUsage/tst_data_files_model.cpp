// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/BiggestFilesModel.h"
#include "DiskUsage/DataFilesModel.h"
#include "core/FileTypes.h"
#include "tests/DiskUsage/Scans.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

using namespace Qt::StringLiterals;
using namespace diskusage;
using tests::column;
using tests::MemoryEnumerator;
using tests::scanned;

namespace
{

// From this size on there is no memory.
std::atomic<std::size_t> maxBytes = std::numeric_limits<std::size_t>::max();

constexpr int documents = 5; // in the built-in table
constexpr quint64 day = 864'000'000'000;
constexpr quint64 startOf2026 = 134'116'992'000'000'000;

std::shared_ptr<ScanResult> someFiles()
{
    MemoryEnumerator disk;
    disk.addFile(u"C:\\r\\b\\beta.txt"_s, 1000, 0, startOf2026 + 2 * day);
    disk.addFile(u"C:\\r\\b\\Alpha.pdf"_s, 9, 0, startOf2026 + 3 * day);
    disk.addFile(u"C:\\r\\a\\gamma.txt"_s, 1000, 0, startOf2026 + day);
    disk.addFile(u"C:\\r\\other.xyz"_s, 5);
    return scanned(u"C:\\r"_s, disk);
}

} // namespace

// In place of the library's, for the whole program. Where one is made a part of its caller and the other is
// not, the compiler takes them for a pair that does not match.
[[gnu::noinline]] void *operator new(std::size_t bytes)
{
    void *memory = bytes < maxBytes ? std::malloc(bytes) : nullptr;
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

[[gnu::noinline]] void operator delete(void *memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

class DataFilesModelTest : public QObject
{
    Q_OBJECT

private slots:
    void showsOneCategoryAtATime();
    void sorts();
    void clearingDuringASortEnds();
    void aLackOfMemoryKeepsTheOrder();
    void theBiggestFilesSortByTheirNumbers();
    void aCancelledReportLeavesNothing();
};

void DataFilesModelTest::showsOneCategoryAtATime()
{
    DataFilesModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setResult(someFiles());
    QCOMPARE(model.categoryTotal(), 13);
    QCOMPARE(model.rowCount(), 0);
    model.showCategory(documents);
    // The largest first, and of equals the one that was met first.
    QCOMPARE(column(model, FileName), QStringList({u"beta.txt"_s, u"gamma.txt"_s, u"Alpha.pdf"_s}));
    QCOMPARE(model.filePath(2), u"C:\\r\\b\\Alpha.pdf"_s);
    QCOMPARE(model.index(0, FilePath).data().toString(), u"C:\\r\\b"_s);
    QCOMPARE(model.index(0, FileRawSize).data(Qt::EditRole), QVariant(quint64(1000)));
    QVERIFY(model.index(0, FileLastAccess).data().toString().contains(u"2026"_s));
    model.showCategory(model.categoryTotal() - 1);
    QCOMPARE(model.category(model.shownCategory()).category.name, u"Other file types"_s);
    QCOMPARE(column(model, FileName), QStringList({u"other.xyz"_s}));
}

void DataFilesModelTest::sorts()
{
    DataFilesModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setResult(someFiles());
    model.showCategory(documents);
    const QPersistentModelIndex gamma = model.index(1, FileName);
    const QStringList upwards{u"Alpha.pdf"_s, u"beta.txt"_s, u"gamma.txt"_s};
    const QStringList downwards{upwards.rbegin(), upwards.rend()};
    model.sort(FileSizeText, Qt::AscendingOrder); // as texts 1000 would stand before 9
    QTRY_COMPARE(column(model, FileName), upwards);
    model.sort(FileName, Qt::DescendingOrder);
    QTRY_COMPARE(column(model, FileName), downwards);
    model.sort(FileName, Qt::AscendingOrder);
    QTRY_COMPARE(column(model, FileName), upwards);
    model.sort(FileLastAccess, Qt::AscendingOrder);
    QTRY_COMPARE(column(model, FileName), downwards);
    model.sort(FileName, Qt::AscendingOrder);
    QTRY_COMPARE(column(model, FileName), upwards);
    model.sort(FilePath, Qt::AscendingOrder);
    QTRY_COMPARE(gamma.row(), 0);
    QCOMPARE(gamma.data().toString(), u"gamma.txt"_s); // a selection moves with its file
    // The order outlives a change of the category.
    model.showCategory(model.categoryTotal() - 1);
    model.showCategory(documents);
    QTRY_COMPARE(column(model, FileName).first(), u"gamma.txt"_s);
}

void DataFilesModelTest::clearingDuringASortEnds()
{
    auto result = std::make_shared<ScanResult>();
    result->folders.push_back({});
    for (int i = 0; i < 300'000; ++i)
        result->others.files.push_back({QString::number(i * 7919LL % 300'007), 0, i, 1, 0});
    DataFilesModel model;
    model.setResult(result);
    model.showCategory(0);
    QSignalSpy sorting(&model, &DataFilesModel::sortingChanged);
    model.sort(FileName, Qt::AscendingOrder);
    model.sort(FileName, Qt::DescendingOrder);
    model.clear();
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(sorting.last().first().toBool(), false);
}

void DataFilesModelTest::aLackOfMemoryKeepsTheOrder()
{
    auto result = std::make_shared<ScanResult>();
    result->folders.push_back({});
    constexpr int count = 100'000;
    for (int i = 0; i < count; ++i)
        result->others.files.push_back({QString::number(i), 0, i, static_cast<quint64>(i), 0});
    DataFilesModel model;
    model.setResult(result);
    model.showCategory(0);
    model.sort(FileName, Qt::AscendingOrder);
    QTRY_COMPARE(model.record(2).name, u"10"_s);
    QSignalSpy sorting(&model, &DataFilesModel::sortingChanged);
    QSignalSpy failed(&model, &DataFilesModel::sortingFailed);
    maxBytes = count; // the numbers of the rows take four times as much
    model.sort(FileRawSize, Qt::AscendingOrder);
    const bool told = failed.wait();
    maxBytes = std::numeric_limits<std::size_t>::max();
    QVERIFY(told);
    QCOMPARE(sorting.last().first().toBool(), false);
    QCOMPARE(model.record(2).name, u"10"_s);
    QCOMPARE(model.sortColumn(), int(FileName));
    QCOMPARE(model.sortOrder(), Qt::AscendingOrder);
    model.sort(FileRawSize, Qt::AscendingOrder); // and with memory it works
    QTRY_COMPARE(model.record(2).name, u"2"_s);
}

void DataFilesModelTest::theBiggestFilesSortByTheirNumbers()
{
    BiggestFilesModel model;
    model.setFiles({{u"ten"_s, u"C:\\"_s, quint64(10) << 20, startOf2026 + 20 * day},
                    {u"nine"_s, u"C:\\x"_s, quint64(9) << 20, startOf2026 + 3 * day}});
    QStringList titles;
    for (int section = 0; section < model.columnCount(); ++section)
        titles.append(model.headerData(section, Qt::Horizontal).toString());
    QCOMPARE(titles.join(QLatin1Char(',')), u"Name,Size,Last Access Time,Path,Raw Size"_s);
    QCOMPARE(model.filePath(0), u"C:\\ten"_s);
    for (const int section : {int(FileSizeText), int(FileLastAccess)}) {
        model.sort(section, Qt::AscendingOrder);
        QCOMPARE(column(model, FileName), QStringList({u"nine"_s, u"ten"_s}));
    }
    model.setFiles({{u"b"_s, u"C:\\Z"_s, 3, 0}, {u"C"_s, u"C:\\y"_s, 2, 0}, {u"a"_s, u"C:\\x"_s, 1, 0}});
    model.sort(FileName, Qt::AscendingOrder);
    QCOMPARE(column(model, FileName).join(QLatin1Char(',')), u"a,b,C"_s);
    model.sort(FilePath, Qt::AscendingOrder);
    QCOMPARE(column(model, FileName).join(QLatin1Char(',')), u"a,C,b"_s);
}

void DataFilesModelTest::aCancelledReportLeavesNothing()
{
    DataFilesModel model;
    model.setResult(someFiles());
    QVERIFY(model.categoryTotal() > 0);
    core::CancelFlag cancelled;
    cancelled.set();
    model.setResult(someFiles(), cancelled);
    QCOMPARE(model.categoryTotal(), 0);
}

QTEST_GUILESS_MAIN(DataFilesModelTest)
#include "tst_data_files_model.moc"
