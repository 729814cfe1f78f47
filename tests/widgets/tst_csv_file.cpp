// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/TestFolder.h"
#include "widgets/CsvFile.h"

#include <QFile>
#include <QTest>

#include <new>

using namespace Qt::StringLiterals;

namespace
{

csv::Table numbers(int rows, const std::function<void(int)> &onRow = {})
{
    csv::Table table;
    table.titles = {u"Name"_s, u"Number"_s};
    table.next = [rows, onRow, next = 0](QStringList &row) mutable {
        if (next == rows)
            return false;
        if (onRow)
            onRow(next);
        row = {u"n\u00e4me"_s, QString::number(next++)};
        return true;
    };
    return table;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "(unreadable)"_ba;
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden);
}

} // namespace

class CsvFileTest : public QObject
{
    Q_OBJECT

private slots:
    void fieldsAreQuotedAndHarmless();
    void writesWhatExcelReads();
    void aFailureLeavesTheOldFile();
    void whatEndsEarlyLeavesTheOldFile();
};

void CsvFileTest::fieldsAreQuotedAndHarmless()
{
    for (const auto &[text, field] :
         {std::pair{u""_s, u""_s},
          {u"a,b"_s, u"\"a,b\""_s},
          {u"a\"b"_s, u"\"a\"\"b\""_s},
          {u"a\nb"_s, u"\"a\nb\""_s},
          {u"a=1"_s, u"a=1"_s},
          {u"=1+1"_s, u"'=1+1"_s},
          {u"+x"_s, u"'+x"_s},
          {u"-x"_s, u"'-x"_s},
          {u"@SUM(A1)"_s, u"'@SUM(A1)"_s},
          {u"=HYPERLINK(\"x\",\"y\")"_s, u"\"'=HYPERLINK(\"\"x\"\",\"\"y\"\")\""_s}})
        QCOMPARE(csv::field(text), field);
}

void CsvFileTest::writesWhatExcelReads()
{
    const tests::TestFolder folder;
    const QString file = folder.makeFile(u"t.csv"_s, "old"_ba);
    CsvWriter job(file, numbers(50'000));
    job.start();
    QVERIFY(job.wait());
    job.requestStop(); // too late to change anything
    QCOMPARE(job.outcome(), CsvWriter::Outcome::Written);
    QCOMPARE(job.reason(), QString());
    QCOMPARE(job.rows(), 50'000);
    const QByteArray written = contents(file);
    QVERIFY(written.startsWith("\xEF\xBB\xBFName,Number\r\nn\xC3\xA4me,0\r\nn\xC3\xA4me,1\r\n"));
    QVERIFY(written.endsWith("\r\nn\xC3\xA4me,49999\r\n"));
    QCOMPARE(written.count('\n'), 50'001);
}

void CsvFileTest::aFailureLeavesTheOldFile()
{
    const tests::TestFolder folder;
    // Where the target would be, there is a folder.
    folder.makeFolder(u"t.csv"_s);
    CsvWriter job(folder.path(u"t.csv"_s), numbers(2));
    job.start();
    QVERIFY(job.wait());
    QCOMPARE(job.outcome(), CsvWriter::Outcome::Failed);
    QVERIFY(!job.reason().isEmpty());
    QCOMPARE(filesIn(folder.path()), QStringList());
}

// By a cancel, and by a lack of memory.
void CsvFileTest::whatEndsEarlyLeavesTheOldFile()
{
    for (const bool cancelled : {true, false}) {
        const tests::TestFolder folder;
        const QString file = folder.makeFile(u"t.csv"_s, "old"_ba);
        CsvWriter *running = nullptr;
        CsvWriter job(file, numbers(100'000, [&running, cancelled](int row) {
                          if (row != 50'000) // much has been written by then
                              return;
                          if (!cancelled)
                              throw std::bad_alloc();
                          running->requestStop();
                      }));
        running = &job;
        job.start();
        QVERIFY(job.wait());
        using Outcome = CsvWriter::Outcome;
        QCOMPARE(job.outcome(), cancelled ? Outcome::Cancelled : Outcome::Failed);
        QCOMPARE(job.reason().isEmpty(), cancelled);
        QCOMPARE(contents(file), "old"_ba);
        QCOMPARE(filesIn(folder.path()), QStringList({u"t.csv"_s}));
    }
}

QTEST_GUILESS_MAIN(CsvFileTest)
#include "tst_csv_file.moc"
