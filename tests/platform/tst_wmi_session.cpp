// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WmiSession.h"

#include <QTest>

using core::WmiAnswer;
using core::WmiRow;
using platform::WmiSession;

namespace
{

enum Step { Initialize, Locator, Connect, Blanket, Execute, Next, None };

// Counts what is opened and closed; the step `failing` answers with E_FAIL.
class FakeCalls : public platform::WmiCalls
{
public:
    struct Notes {
        Step failing = None;
        int rows = 2;
        int initialized = 0;
        int connected = 0;
        int queries = 0;
        QStringList scopes;
        core::CancelFlag *cancelAfterFirst = nullptr;
    };

    explicit FakeCalls(Notes &notes) : m_notes(notes) {}

    long initialize() override
    {
        const long result = at(Initialize);
        m_notes.initialized += result == 0;
        return result;
    }
    long createLocator() override { return at(Locator); }
    long connectServer(const QString &scope) override
    {
        const long result = at(Connect);
        m_notes.connected += result == 0;
        m_notes.scopes << scope;
        return result;
    }
    long setProxyBlanket() override { return at(Blanket); }
    long execQuery(const QString &) override
    {
        m_next = 0;
        const long result = at(Execute);
        m_notes.queries += result == 0;
        return result;
    }
    long next(const QStringList &properties, WmiRow &row) override
    {
        if (m_next == m_notes.rows)
            return at(Next) ? at(Next) : 1;
        row.set(properties.first(), ++m_next);
        if (m_notes.cancelAfterFirst)
            m_notes.cancelAfterFirst->set();
        return 0;
    }
    void closeQuery() override { --m_notes.queries; }
    void disconnect() override { m_notes.connected = 0; }
    void uninitialize() override { --m_notes.initialized; }

private:
    long at(Step step) const { return m_notes.failing == step ? static_cast<long>(0x80004005) : 0; }

    Notes &m_notes;
    int m_next = 0;
};

const core::WmiQuery question{.text = QStringLiteral("SELECT * FROM Win32_Processor"),
                              .properties = {QStringLiteral("Number")}};

} // namespace

class WmiSessionTest : public QObject
{
    Q_OBJECT

private slots:
    void failures_data();
    void failures();
    void oneConnection();
    void millionRows();
    void stopped();
    void realAnswer();

private:
    core::CancelFlag m_cancel;
    FakeCalls::Notes m_notes;
    std::string m_output;
    int m_taken = 0;

    WmiAnswer ask(WmiSession &session)
    {
        m_taken = 0;
        return session.query(question,
                             [this](const WmiRow &row) { m_taken += row.has(QStringLiteral("Number")); });
    }
    WmiSession session()
    {
        m_output.clear();
        return {std::make_unique<FakeCalls>(m_notes), m_cancel,
                [this](const std::string &text) { m_output += text; }};
    }
};

void WmiSessionTest::failures_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<QByteArray>("output");

    const QByteArray connected = "Connected to ROOT\\CIMV2 WMI namespace\n";
    QTest::newRow("com") << int(Initialize)
                         << QByteArray("Failed to initialize COM library. Error code = 0x80004005\n");
    QTest::newRow("locator") << int(Locator)
                             << QByteArray("Failed to create IWbemLocator object. Err code = 0x80004005\n");
    QTest::newRow("server") << int(Connect) << QByteArray("Could not connect. Error code = 0x80004005\n");
    QTest::newRow("blanket") << int(Blanket)
                             << connected + "Could not set proxy blanket. Error code = 0x80004005\n";
    QTest::newRow("query") << int(Execute)
                           << connected + "Query for operating system name failed. Error code = 0x80004005\n";
    QTest::newRow("objects") << int(Next) << connected;
}

void WmiSessionTest::failures()
{
    QFETCH(int, step);
    m_notes = {.failing = static_cast<Step>(step)};
    {
        WmiSession wmi = session();
        QTest::ignoreMessage(QtDebugMsg, "readSysInfoWMI");
        QCOMPARE(ask(wmi), WmiAnswer::Failed);
        QCOMPARE(m_taken, step == Next ? 2 : 0);
        QTEST(QByteArray::fromStdString(m_output), "output");
    }
    QCOMPARE(m_notes.initialized, 0);
    QCOMPARE(m_notes.connected, 0);
    QCOMPARE(m_notes.queries, 0);
}

void WmiSessionTest::oneConnection()
{
    m_notes = {};
    {
        WmiSession wmi = session();
        QCOMPARE(ask(wmi), WmiAnswer::Complete);
        QCOMPARE(ask(wmi), WmiAnswer::Complete);
        core::WmiQuery other = question;
        other.scope = QStringLiteral("ROOT\\Other");
        wmi.query(other, [](const WmiRow &) {});
    }
    QCOMPARE(m_notes.scopes, (QStringList{QStringLiteral("ROOT\\CIMV2"), QStringLiteral("ROOT\\Other")}));
    QCOMPARE(m_notes.initialized, 0);
}

void WmiSessionTest::millionRows()
{
    m_notes = {.rows = 1'000'000};
    WmiSession wmi = session();
    QCOMPARE(ask(wmi), WmiAnswer::TooMany);
    QCOMPARE(m_taken, WmiSession::maxRows);
}

void WmiSessionTest::stopped()
{
    core::CancelFlag cancel;
    m_notes = {.rows = 1'000'000, .cancelAfterFirst = &cancel};
    WmiSession wmi(std::make_unique<FakeCalls>(m_notes), cancel, [](const std::string &) {});
    QCOMPARE(ask(wmi), WmiAnswer::Stopped);
    QCOMPARE(m_taken, 1);
}

void WmiSessionTest::realAnswer()
{
    WmiSession wmi(platform::windowsWmiCalls(), m_cancel, [](const std::string &) {});
    std::vector<WmiRow> rows;
    const WmiAnswer answer =
        wmi.query({.text = QStringLiteral("SELECT * FROM Win32_Processor"),
                   .properties = {QStringLiteral("Name"), QStringLiteral("MaxClockSpeed"),
                                  QStringLiteral("NoSuchProperty")}},
                  [&rows](const WmiRow &row) { rows.push_back(row); });
    QCOMPARE(answer, WmiAnswer::Complete);
    QVERIFY(!rows.empty());
    QVERIFY(!rows[0].text(QStringLiteral("Name")).isEmpty());
    QVERIFY(rows[0].unsignedInteger(QStringLiteral("MaxClockSpeed")).value_or(0) > 0);
    QVERIFY(!rows[0].has(QStringLiteral("NoSuchProperty")));
}

QTEST_APPLESS_MAIN(WmiSessionTest)
#include "tst_wmi_session.moc"
