// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/ImageOfDay.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace automation;
using enum ImageSource;

class PictureOfDayTest : public QObject
{
    Q_OBJECT

private slots:
    void readsBing();
    void readsNasa();
    void refuses_data();
    void refuses();
    void redirects_data();
    void redirects();
    void asksForTheRightDays();
};

void PictureOfDayTest::readsBing()
{
    const auto listing = parseListing({}, Bing, R"json({"images":[
        {"startdate":"20260311","url":"/th?id=OHR.Owl_EN-US1_1920x1080.jpg&rf=x","urlbase":"/th?id=OHR.Owl_EN-US1",
         "copyright":"Owl in Ontario (\u00a9 Jim/Images)","copyrightlink":"https://www.bing.com/search?q=owl",
         "title":"A  frosty\nstare","hsh":"x"},
        {"startdate":"20260310","url":"/th?id=b.jpg","copyright":"Lake (\u00a9 X)","title":"Info",
         "copyrightlink":"javascript:void(0)"},
        {"startdate":"20260399","url":"/th?id=c.jpg"},
        {"startdate":"20260309","url":"http://evil.example/c.jpg","urlbase":"https://a:b@evil.example/"},
        7]
})json");
    QVERIFY(listing);
    QCOMPARE(listing->pictures.size(), 2);
    const DayImage &owl = listing->pictures[0];
    QCOMPARE(owl.title, u"A frosty stare"_s);
    QCOMPARE(owl.credit, u"Owl in Ontario (\u00a9 Jim/Images)"_s);
    QCOMPARE(owl.page, QUrl(u"https://www.bing.com/search?q=owl"_s));
    QCOMPARE(owl.addresses,
             (QList<QUrl>{QUrl(u"https://www.bing.com/th?id=OHR.Owl_EN-US1_UHD.jpg"_s),
                          QUrl(u"https://www.bing.com/th?id=OHR.Owl_EN-US1_1920x1080.jpg&rf=x"_s)}));
    QVERIFY(owl.key.startsWith(u"bing-20260311-"_s));
    QCOMPARE(listing->pictures[1].title, u"Lake"_s);
    QVERIFY(listing->pictures[1].page.isEmpty());
}

void PictureOfDayTest::readsNasa()
{
    const auto listing = parseListing({}, Nasa, R"json([
        {"date":"2026-03-09","media_type":"image","title":"Old","url":"https://apod.nasa.gov/o.jpg"},
        {"date":"2026-03-10","media_type":"video","title":"Film","url":"https://www.youtube.com/embed/x"},
        {"date":"2026-03-11","media_type":"image","title":"New","copyright":"\nA\nB ",
         "hdurl":"https://apod.nasa.gov/n_hd.jpg","url":"https://apod.nasa.gov/n.jpg"},
        {"date":"2026-03-12","media_type":"image","url":"ftp://apod.nasa.gov/n.jpg"}])json");
    QVERIFY(listing);
    QCOMPARE(listing->pictures.size(), 2);
    QCOMPARE(listing->videos, 2);
    const DayImage &newest = listing->pictures[0];
    QCOMPARE(newest.key, u"nasa-20260311"_s);
    QCOMPARE(newest.credit, u"A B"_s);
    QCOMPARE(newest.page, QUrl(u"https://apod.nasa.gov/apod/ap260311.html"_s));
    QCOMPARE(newest.addresses.size(), 2);
    const auto one = parseListing({}, Nasa, R"json({"date":"2026-03-10","media_type":"video"})json");
    QVERIFY(one && one->pictures.isEmpty() && one->videos == 1);
}

void PictureOfDayTest::refuses_data()
{
    QTest::addColumn<ImageSource>("source");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("a page") << Bing << QByteArray("<html>");
    QTest::newRow("cut off") << Bing << QByteArray(R"json({"images":[{"startdate":"2026)json");
    QTest::newRow("no list") << Bing << QByteArray(R"json({"images":{}})json");
    QTest::newRow("an error") << Nasa << QByteArray(R"json({"error":{"code":"OVER_RATE_LIMIT"}})json");
    QTest::newRow("too deep") << Nasa << QByteArray(100'000, '[');
    QTest::newRow("too large") << Nasa << QByteArray("[") + QByteArray(maxListingBytes, ' ') + "]";
}

void PictureOfDayTest::refuses()
{
    QFETCH(const ImageSource, source);
    QFETCH(const QByteArray, bytes);
    QVERIFY(!parseListing({}, source, bytes));
}

void PictureOfDayTest::redirects_data()
{
    QTest::addColumn<QByteArray>("location");
    QTest::addColumn<QString>("to");
    QTest::newRow("path") << QByteArray("/b.jpg?x=1") << u"https://a.example/b.jpg?x=1"_s;
    QTest::newRow("host") << QByteArray("https://b.example/") << u"https://b.example/"_s;
    QTest::newRow("no scheme") << QByteArray("//b.example/c") << u"https://b.example/c"_s;
    QTest::newRow("not secure") << QByteArray("http://a.example/b.jpg") << QString();
    QTest::newRow("file") << QByteArray("file:///C:/x") << QString();
    QTest::newRow("password") << QByteArray("https://u:p@b.example/") << QString();
    QTest::newRow("none") << QByteArray() << QString();
}

void PictureOfDayTest::redirects()
{
    QFETCH(const QByteArray, location);
    const auto to = redirected(QUrl(u"https://a.example/folder/x"_s), location, isSecureAddress);
    QTEST(to ? to->toString() : QString(), "to");
}

void PictureOfDayTest::asksForTheRightDays()
{
    const QDate day(2026, 1, 5);
    QCOMPARE(listingAddress({}, Nasa, {}, day).toString(),
             u"https://api.nasa.gov/planetary/apod?api_key=DEMO_KEY&start_date=2025-12-26"_s);
    QVERIFY(listingAddress({}, Bing, u"de-DE"_s, day).query().endsWith(u"&mkt=de-DE"_s));
    QCOMPARE(imageSuffix("\xff\xd8\xff\xe0..."), u"jpg"_s);
    QCOMPARE(imageSuffix("GIF89a"), QString());
    QCOMPARE(plainLine(QString(300, u'x')).size(), 200);
}

QTEST_APPLESS_MAIN(PictureOfDayTest)
#include "tst_picture_of_day.moc"
