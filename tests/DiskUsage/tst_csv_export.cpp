// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/CsvExport.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QFile>
#include <QTest>

#include <new>

using namespace diskusage;

namespace
{

CsvTable numbers(int rows, const std::function<void(int)> &onRow = {})
{
    CsvTable table;
    table.titles = {QStringLiteral("Name"), QStringLiteral("Number")};
    table.next = [rows, onRow, next = 0](QStringList &row) mutable {
        if (next == rows)
            return false;
        if (onRow)
            onRow(next);
        row = {QStringLiteral("n\u00e4me"), QString::number(next++)};
        return true;
    };
    return table;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(unreadable)");
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden);
}

} // namespace

class CsvExportTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void fieldsAreQuotedAndHarmless_data();
    void fieldsAreQuotedAndHarmless();
    void writesWhatExcelReads();
    void aFailureLeavesTheOldFile();
    void whatEndsEarlyLeavesTheOldFile_data();
    void whatEndsEarlyLeavesTheOldFile();
    void longTablesAreComplete();
};

void CsvExportTest::fieldsAreQuotedAndHarmless_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("field");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("comma") << QStringLiteral("a,b") << QStringLiteral("\"a,b\"");
    QTest::newRow("quote") << QStringLiteral("a\"b") << QStringLiteral("\"a\"\"b\"");
    QTest::newRow("line break") << QStringLiteral("a\nb") << QStringLiteral("\"a\nb\"");
    QTest::newRow("formula") << QStringLiteral("=1+1") << QStringLiteral("'=1+1");
    QTest::newRow("plus") << QStringLiteral("+x") << QStringLiteral("'+x");
    QTest::newRow("minus") << QStringLiteral("-x") << QStringLiteral("'-x");
    QTest::newRow("at") << QStringLiteral("@SUM(A1)") << QStringLiteral("'@SUM(A1)");
    QTest::newRow("both") << QStringLiteral("=HYPERLINK(\"x\",\"y\")")
                          << QStringLiteral("\"'=HYPERLINK(\"\"x\"\",\"\"y\"\")\"");
    QTest::newRow("sign inside") << QStringLiteral("a=1") << QStringLiteral("a=1");
}

void CsvExportTest::fieldsAreQuotedAndHarmless()
{
    QFETCH(QString, text);
    QTEST(csvField(text), "field");
}

void CsvExportTest::writesWhatExcelReads()
{
    const tests::TestFolder folder;
    CsvExportThread job(folder.path(QStringLiteral("t.csv")), numbers(2));
    job.start();
    QVERIFY(job.wait());
    QCOMPARE(job.error(), QString());
    QCOMPARE(job.rows(), 2);
    QCOMPARE(contents(folder.path(QStringLiteral("t.csv"))),
             QByteArray("\xEF\xBB\xBFName,Number\r\nn\xC3\xA4me,0\r\nn\xC3\xA4me,1\r\n"));
}

void CsvExportTest::aFailureLeavesTheOldFile()
{
    const tests::TestFolder folder;
    // Where the target would be, there is a folder.
    folder.makeFolder(QStringLiteral("t.csv"));
    CsvExportThread job(folder.path(QStringLiteral("t.csv")), numbers(2));
    job.start();
    QVERIFY(job.wait());
    QCOMPARE(job.outcome(), CsvExportThread::Outcome::Failed);
    QVERIFY(!job.error().isEmpty());
    QCOMPARE(filesIn(folder.path()), QStringList());
}

void CsvExportTest::whatEndsEarlyLeavesTheOldFile_data()
{
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("a cancel") << true;
    QTest::newRow("a lack of memory") << false;
}

void CsvExportTest::whatEndsEarlyLeavesTheOldFile()
{
    QFETCH(bool, cancelled);
    const tests::TestFolder folder;
    const QString file = folder.makeFile(QStringLiteral("t.csv"), QByteArrayLiteral("old"));
    CsvExportThread *running = nullptr;
    CsvExportThread job(file, numbers(100'000, [&running, cancelled](int row) {
                            if (row != 50'000) // much has been written by then
                                return;
                            if (!cancelled)
                                throw std::bad_alloc();
                            running->requestStop();
                        }));
    running = &job;
    job.start();
    QVERIFY(job.wait());
    using Outcome = CsvExportThread::Outcome;
    QCOMPARE(job.outcome(), cancelled ? Outcome::Cancelled : Outcome::Failed);
    QCOMPARE(job.error().isEmpty(), cancelled);
    QCOMPARE(contents(file), QByteArrayLiteral("old"));
    QCOMPARE(filesIn(folder.path()), QStringList({QStringLiteral("t.csv")}));
}

void CsvExportTest::longTablesAreComplete()
{
    const tests::TestFolder folder;
    const QString file = folder.makeFile(QStringLiteral("t.csv"), QByteArrayLiteral("old"));
    CsvExportThread job(file, numbers(50'000));
    job.start();
    QVERIFY(job.wait());
    job.requestStop(); // too late to change anything
    QCOMPARE(job.outcome(), CsvExportThread::Outcome::Written);
    const QList<QByteArray> lines = contents(file).split('\n');
    QCOMPARE(lines.size(), 50'002);
    QCOMPARE(lines.at(50'000), QByteArray("n\xC3\xA4me,49999\r"));
}

QTEST_GUILESS_MAIN(CsvExportTest)
#include "tst_csv_export.moc"
