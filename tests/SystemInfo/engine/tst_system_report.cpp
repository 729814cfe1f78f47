// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Comparison.h"
#include "SystemInfo/engine/Report.h"
#include "SystemInfo/engine/Search.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace systeminfo;

namespace
{

QString t(const char *text)
{
    return QString::fromUtf8(text);
}

Page samplePage()
{
    Page page{.name = t("memory"), .title = t("Memory & more")};
    Row top = section("Memory", {});
    top.add(fact("Total", Value::of(qint64(16), t("GB"))));
    top.add(fact("Serial Number", t("12345"), Privacy::Serial));
    top.add(fact("Speed"));
    Row &slot = top.add(item("RAM Slot", t("RAM Slot"), t("A")));
    slot.add(fact("Type", t("<DDR5>")));
    Row &folder = top.add(item("Folder", t("Home"), t("C:\\Users\\Ann\\Annex")));
    folder.problem = t("does not exist");
    page.sections = {top};
    page.notices = {t("Something is missing.")};
    return page;
}

Report sampleReport()
{
    return {.created = QDateTime(QDate(2024, 5, 1), QTime(12, 0)), .pages = {samplePage()}};
}

} // namespace

class SystemReportTest : public QObject
{
    Q_OBJECT

private slots:
    void formats();
    void json();
    void hostileJson();
    void blanking();
    void comparison();
    void search();
};

void SystemReportTest::formats()
{
    const QString text = QString::fromUtf8(writeReport(sampleReport(), ReportFormat::Text));
    QVERIFY(text.contains(t("    Total\t16 GB\n")));
    QVERIFY(text.contains(t("    Speed\tnot reported by this machine\n")));
    QVERIFY(text.contains(t("C:\\Users\\Ann\\Annex (does not exist)")));
    const QString html = QString::fromUtf8(writeReport(sampleReport(), ReportFormat::Html));
    QVERIFY(html.contains(t("&lt;DDR5&gt;")) && html.contains(t("Memory &amp; more")));
    for (const char *outside : {"<DDR5>", "http", "<script", "<img", "src="})
        QVERIFY2(!html.contains(t(outside)), outside);
}

void SystemReportTest::json()
{
    const QByteArray bytes = writeReport(sampleReport(), ReportFormat::Json);
    const QJsonObject total =
        QJsonDocument::fromJson(bytes)[t("pages")][0][t("rows")][0][t("rows")][0].toObject();
    QCOMPARE(total[t("name")].toString(), t("total"));
    QCOMPARE(total[t("value")].toInt(), 16);
    QCOMPARE(total[t("unit")].toString(), t("GB"));
    const auto report = readReport(bytes);
    QVERIFY(report);
    QCOMPARE(writeReport(*report, ReportFormat::Json), bytes);
    QCOMPARE(stableName(t("Total Amount of RAM")), t("totalAmountOfRam"));
    QCOMPARE(stableName(t("64 bit system")), t("64BitSystem"));
}

void SystemReportTest::hostileJson()
{
    for (const char *bytes : {"", "[]", "{}", "{\"format\":\"larkspur-system-report\",\"version\":2}"})
        QVERIFY2(!readReport(bytes), bytes);
    QByteArray deep = "{\"format\":\"larkspur-system-report\",\"version\":1,\"pages\":[{\"rows\":";
    for (int i = 0; i < 300; ++i)
        deep += "[{\"rows\":";
    deep += "[]";
    for (int i = 0; i < 300; ++i)
        deep += "}]";
    deep += "}]}";
    const auto report = readReport(deep);
    QVERIFY(report);
    int depth = 0;
    for (const std::vector<Row> *rows = &report->pages.at(0).sections; !rows->empty();
         rows = &rows->at(0).children)
        ++depth;
    QVERIFY(depth > 0 && depth < 20);
}

void SystemReportTest::blanking()
{
    Page whole = samplePage();
    whole.sections[0].add(item("Entry", t("Proxy"), t("http://me:pw@host/S-1-5-21-1-22-333-1001")));
    const Page page = blanked(whole, {t("ann"), t("a")});
    QVERIFY(plainText(page).contains(t("http://(left out)@host/(left out)\n")));
    const QString text = plainText(page);
    QVERIFY(!text.contains(t("12345")));
    QVERIFY(text.contains(t("C:\\Users\\(left out)\\Annex"))); // the name as a word only
    QVERIFY(text.contains(t("16 GB")));
}

void SystemReportTest::comparison()
{
    const Report before = sampleReport();
    Report after = before;
    Row &top = after.pages[0].sections[0];
    top.children[0].value = Value::of(qint64(32), t("GB"));
    top.children.erase(top.children.begin() + 1);
    top.add(item("RAM Slot", t("RAM Slot"), t("B")));
    QStringList found;
    for (const Difference &row : compareReports(before, after)) {
        if (row.kind != Difference::Kind::Same)
            found << row.path.last() + u'=' + row.first + u'>' + row.second;
    }
    const Report shared{.pages = {blanked(before.pages[0], {})}};
    for (const Difference &row : compareReports(before, shared))
        QCOMPARE(row.kind, row.first == t("12345") ? Difference::Kind::NotCompared : Difference::Kind::Same);
    QCOMPARE(found, (QStringList{t("Total=16 GB>32 GB"), t("Serial Number=12345>"), t("RAM Slot=>B")}));
}

void SystemReportTest::search()
{
    const std::vector<Page> pages = {samplePage()};
    const auto hits = findRows(pages, t(" memory ddr5 "), 10);
    QCOMPARE(hits.size(), 1u);
    QCOMPARE(hits[0].row, (std::vector<int>{0, 3, 0}));
    QCOMPARE(hits[0].path.join(u'/'), t("Memory & more/Memory/RAM Slot/Type"));
    QVERIFY(findRows(pages, t("  "), 10).empty());
    QCOMPARE(findRows(pages, t("e"), 2).size(), 2u);
}

QTEST_APPLESS_MAIN(SystemReportTest)
#include "tst_system_report.moc"
