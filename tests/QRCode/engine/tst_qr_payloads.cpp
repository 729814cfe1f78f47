// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/engine/Batch.h"
#include "QRCode/engine/Countries.h"
#include "QRCode/engine/FieldChecks.h"
#include "QRCode/engine/Payloads.h"

#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

class TestQrPayloads : public QObject
{
    Q_OBJECT

private slots:
    void payloads_data();
    void payloads();
    void contact();
    void countryTable();
    void fieldChecks_data();
    void fieldChecks();
    void batch_data();
    void batch();
    void batchThatIsTooLong();
};

void TestQrPayloads::payloads_data()
{
    QTest::addColumn<QString>("payload");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QString &payload, const QString &expected) {
        QTest::newRow(name) << payload << expected;
    };
    row("call", qr::callPayload(44, u"2071234567"_s), u"tel:+442071234567"_s);
    row("call nobody", qr::callPayload(44, {}), {});
    row("SMS", qr::smsPayload(62, u"81234"_s, u"a b"_s), u"SMSTO:+6281234:a b"_s);
    row("SMS without a message", qr::smsPayload(62, u"81234"_s, {}), u"SMSTO:+6281234:"_s);
    row("SMS to nobody", qr::smsPayload(62, {}, u"a"_s), {});
    row("mail", qr::emailPayload(u"a@b"_s, u"s;t"_s, u"x\ny"_s), u"MATMSG:TO:a@b;SUB:s;t;BODY:x\ny,;;"_s);
    row("mail to nobody", qr::emailPayload({}, u"s"_s, u"b"_s), {});
    row("chat", qr::whatsappPayload(62, u"8 1234"_s, u"see you & soon"_s),
        u"https://wa.me/628 1234/?text=see+you+&+soon"_s);
    row("chat without a message", qr::whatsappPayload(62, u"81234"_s, {}), u"https://wa.me/6281234/?text="_s);
    row("chat with nobody", qr::whatsappPayload(62, {}, u"a"_s), {});
    row("WEP", qr::wifiPayload(u"n"_s, qr::WifiType::Wep, u"p;q"_s, false),
        u"WIFI:S:n;T:WEP;P:p;q;H:false;;"_s);
    row("WPA, hidden, open", qr::wifiPayload(u"n"_s, qr::WifiType::Wpa, {}, true),
        u"WIFI:S:n;T:WPA;P:;H:true;;"_s);
    row("no network", qr::wifiPayload({}, qr::WifiType::Wpa, u"p"_s, true), {});
    row("payment", qr::paymentPayload(u"me"_s, u"19.95"_s, u"EUR"_s), u"https://paypal.me/me/19.95EUR"_s);
    row("payment of any amount", qr::paymentPayload(u"me"_s, {}, u"EUR"_s), u"https://paypal.me/me"_s);
}

void TestQrPayloads::payloads()
{
    QFETCH(QString, payload);
    QTEST(payload, "expected");
}

void TestQrPayloads::contact()
{
    QCOMPARE(qr::contactPayload({u"Ada"_s, u"King"_s, u"1"_s, u"2"_s, u"3"_s, u"a@b"_s, u"w"_s, u"C"_s,
                                 u"T"_s, u"Road 1\nFlat 2"_s, u"Town"_s, u"P"_s, u"UK"_s}),
             u"BEGIN:VCARD\nVERSION:2.1\nN;CHARSET=UTF-8:King;Ada\nFN;CHARSET=UTF-8:Ada King\nTEL;CELL:2\n"
             "TEL;HOME;VOICE:1\nORG;CHARSET=UTF-8:C\nTITLE;CHARSET=UTF-8:T\nTEL;WORK;FAX:3\n"
             "ADR;CHARSET=UTF-8;WORK;PREF:;;Road 1\nFlat 2;Town;P;UK\nEMAIL:a@b\nURL:w\nEND:VCARD"_s);
    const QString empty = qr::contactPayload({});
    QCOMPARE(empty.count(u'\n'), 12);
    QVERIFY(empty.contains("\nFN;CHARSET=UTF-8: \n"_L1));
}

// Rows are stored by their numbers: these stand for all.
void TestQrPayloads::countryTable()
{
    const auto table = qr::countries();
    QCOMPARE(table.size(), 243u);
    QCOMPARE(table[0].displayName(), u"Afghanistan (+93)"_s);
    QCOMPARE(table[115].displayName(), u"Kuwait (+965)"_s);
    QCOMPARE(table[242].displayName(), u"Zimbabwe (+263)"_s);
    QSet<QString> names;
    for (const qr::Country &country : table) {
        names.insert(country.displayName());
        QVERIFY2(country.diallingCode > 0 && country.diallingCode < 2000, country.name);
    }
    QCOMPARE(names.size(), 243);
    QCOMPARE(qr::diallingCode(-1), 93);
    QCOMPARE(qr::diallingCode(243), 93);
}

void TestQrPayloads::fieldChecks_data()
{
    using qr::FieldChecks;
    using qr::WifiType;
    QTest::addColumn<QString>("said");
    QTest::addColumn<QString>("word"); // of what is said; empty when nothing is
    const auto row = [](const char *name, const QString &said, const QString &word) {
        QTest::newRow(name) << said << word;
    };
    row("link", FieldChecks::link(u"https://a.org/"_s), {});
    row("link without scheme", FieldChecks::link(u"a.org"_s), u"https"_s);
    row("link with a space", FieldChecks::link(u"https://a b"_s), u"spaces"_s);
    row("number", FieldChecks::phone(44, u"2071234567"_s), {});
    row("number with its own code", FieldChecks::phone(44, u"+44207"_s), u"+44"_s);
    row("number with a trunk zero", FieldChecks::phone(44, u"0207"_s), u"leading 0"_s);
    row("Italian number", FieldChecks::phone(39, u"0207"_s), {});
    row("number with letters", FieldChecks::phone(44, u"20a"_s), u"digits"_s);
    row("mail address", FieldChecks::mailAddress(u"a@b.org"_s), {});
    row("no mail address", FieldChecks::mailAddress(u"a.b.org"_s), u"e-mail"_s);
    row("semicolon in a mail", FieldChecks::mailText(u"a;b"_s), u"\";\""_s);
    row("chat message", FieldChecks::chatMessage(u"see you"_s), {});
    row("ampersand in a chat", FieldChecks::chatMessage(u"a & b"_s), u"\"&\""_s);
    row("umlaut in a chat", FieldChecks::chatMessage(u"\u00fc"_s), u"misread"_s);
    row("colon in a network", FieldChecks::wifiName(u"a:b"_s), u"\":\""_s);
    row("WPA password", FieldChecks::wifiPassword(WifiType::Wpa, u"12345678"_s), {});
    row("short WPA password", FieldChecks::wifiPassword(WifiType::Wpa, u"1234567"_s), u"63"_s);
    row("semicolon in a password", FieldChecks::wifiPassword(WifiType::Wpa, u"1234;5678"_s), u"\";\""_s);
    row("WEP key", FieldChecks::wifiPassword(WifiType::Wep, u"12345"_s), {});
    row("WEP key of a wrong length", FieldChecks::wifiPassword(WifiType::Wep, u"123456"_s), u"WEP"_s);
    row("address over two lines", FieldChecks::contactText(u"a\nb"_s), u"line break"_s);
    row("amount", FieldChecks::paymentAmount(u"19.95"_s), {});
    for (const QString &amount : {u"0"_s, u"19,95"_s, u"-1"_s, u"1e3"_s, u"1.999"_s, u"nan"_s})
        row(qPrintable("amount "_L1 + amount), FieldChecks::paymentAmount(amount), u"19.95"_s);
}

void TestQrPayloads::fieldChecks()
{
    QFETCH(QString, said);
    QFETCH(QString, word);
    QVERIFY2(word.isEmpty() ? said.isEmpty() : said.contains(word), qPrintable(said));
}

void TestQrPayloads::batch_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("expected"); // line, text, name
    const auto row = [](const char *name, const QByteArray &bytes, const QStringList &expected) {
        QTest::newRow(name) << bytes << expected;
    };
    row("nothing", "", {});
    row("texts alone", "a\r\nb\n\nc", {u"1|a|001"_s, u"2|b|002"_s, u"4|c|003"_s});
    row("lines that end in CR alone", "a\rb", {u"1|a|001"_s, u"2|b|002"_s});
    row("names and a header", "Text;Name\na,b;one\nc;", {u"2|a,b|one"_s, u"3|c|002"_s});
    row("quotes", "\"a\"\"b\nc\",x\nd,y\n", {u"1|a\"b\nc|x"_s, u"3|d|y"_s});
    row("unfinished quote", "\"a,b\n", {u"1|a,b\n|001"_s});
    row("same names", "a,n\nb,N\nc,n (2)\nd,n",
        {u"1|a|n"_s, u"2|b|N (2)"_s, u"3|c|n (2) (2)"_s, u"4|d|n (3)"_s});
    row("names that Windows does not take", "a,..\\x?\nb,con.txt\nc,COM1\nd,\" . \"\n",
        {u"1|a|.._x_"_s, u"2|b|_con.txt"_s, u"3|c|_COM1"_s, u"4|d|004"_s});
    row("UTF-8 with its mark", "\xEF\xBB\xBF\xC3\xBC", {u"1|\u00fc|001"_s});
    row("UTF-16", QByteArray("\xFF\xFE\x61\x00\x09\x00\x62\x00", 8), {u"1|a|b"_s});
}

void TestQrPayloads::batch()
{
    QFETCH(QByteArray, bytes);
    QStringList found;
    for (const qr::BatchRow &row : qr::parseBatch(bytes).rows)
        found.append(u"%1|%2|%3"_s.arg(QString::number(row.line), row.text, row.name));
    QTEST(found, "expected");
}

void TestQrPayloads::batchThatIsTooLong()
{
    const qr::BatchList most =
        qr::parseBatch(QByteArray("url\n") + QByteArray("a,n\n").repeated(qr::maxBatchRows));
    QCOMPARE(most.rows.size(), qr::maxBatchRows);
    QCOMPARE(most.rows.last().name, u"n (10000)"_s);
    const qr::BatchList beyond = qr::parseBatch(QByteArray("a\n").repeated(qr::maxBatchRows + 1));
    QVERIFY(beyond.tooLong && beyond.rows.isEmpty());
}

QTEST_GUILESS_MAIN(TestQrPayloads)
#include "tst_qr_payloads.moc"
