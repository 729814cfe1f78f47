// SPDX-License-Identifier: GPL-3.0-or-later

// The process that changes the wallpaper, from the service to the desktop: with a server of the test in place
// of the services, and a desktop that notes what is set.
#include "companions/LarkspurWallpaper/Changer.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QPainter>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <atomic>

using namespace Qt::StringLiterals;
using namespace automation;
using namespace std::chrono_literals;
using Result = WallpaperAnswer::Result;

namespace
{

QByteArray picture(const char *format, QSize size = {800, 600}, const QColor &color = Qt::darkGreen)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    QPainter(&image).drawEllipse(image.rect());
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

// Answers on a thread of its own, since the fetcher blocks.
class Server
{
public:
    Server()
    {
        m_thread.start();
        m_context.moveToThread(&m_thread);
        QMetaObject::invokeMethod(
            &m_context, [this] { listen(); }, Qt::BlockingQueuedConnection);
    }
    ~Server()
    {
        QMetaObject::invokeMethod(
            &m_context, [this] { m_server.reset(); }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }

    QString url(const QString &path) const { return u"http://127.0.0.1:%1%2"_s.arg(m_port).arg(path); }
    // Before a request: what a path answers.
    void put(const QString &path, const QByteArray &body, const QByteArray &status = "200 OK",
             const QByteArray &headers = {})
    {
        m_answers[path] = "HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers + "\r\n" + body;
    }
    void move(const QString &path, const QByteArray &to)
    {
        put(path, {}, "302 Found", "Location: " + to + "\r\n");
    }

    std::atomic_int requests = 0;

private:
    void listen()
    {
        m_server = std::make_unique<QTcpServer>();
        m_server->listen(QHostAddress::LocalHost);
        m_port = m_server->serverPort();
        QObject::connect(m_server.get(), &QTcpServer::newConnection, m_server.get(), [this] {
            QTcpSocket *socket = m_server->nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { serve(socket); });
        });
    }
    void serve(QTcpSocket *socket)
    {
        const QByteArray target = socket->readLine().split(' ').value(1);
        const QString path = QString::fromLatin1(target).section(u'?', 0, 0);
        ++requests;
        if (path == u"/drips") { // a byte now and then, for ever
            socket->write("HTTP/1.1 200 OK\r\n\r\n");
            auto *timer = new QTimer(socket);
            QObject::connect(timer, &QTimer::timeout, socket, [socket] { socket->write("x"); });
            timer->start(100ms);
        } else if (path != u"/silent") {
            socket->write(m_answers.value(path, "HTTP/1.1 404 Not Found\r\nConnection: close\r\n\r\n"));
            socket->disconnectFromHost();
        }
    }

    QThread m_thread;
    QObject m_context;
    std::unique_ptr<QTcpServer> m_server;
    quint16 m_port = 0;
    QHash<QString, QByteArray> m_answers;
};

class Desktop : public platform::DesktopWallpaper
{
public:
    QStringList monitors() override { return names; }
    QString picture(const QString &monitor) override
    {
        if (!monitor.isEmpty() || names.isEmpty())
            return pictures.value(monitor);
        for (const QString &name : names) {
            if (pictures.value(name) != pictures.value(names[0]))
                return {};
        }
        return pictures.value(names[0]);
    }
    bool setPicture(const QString &monitor, const QString &path) override
    {
        if (refusesAfter-- == 0)
            return false;
        for (const QString &name : monitor.isEmpty() && !names.isEmpty() ? names : QStringList{monitor})
            pictures[name] = path;
        return true;
    }
    int position() override { return place; }
    void setPosition(int position) override { place = position; }
    QString slideshowFolder() override { return slideshow; }
    bool setSlideshowFolder(const QString &folder) override
    {
        slideshow = folder;
        return true;
    }

    QStringList names;
    QHash<QString, QString> pictures;
    int place = 1, refusesAfter = -1;
    QString slideshow;
};

bool isLocalOrSecure(const QUrl &address)
{
    return isSecureAddress(address) || (address.scheme() == u"http"_s && address.host() == u"127.0.0.1"_s);
}

} // namespace

class WallpaperChangerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void init();
    void cleanup() { m_server.reset(); }

    void fetchesAndSets();
    void keepsTheOld_data();
    void keepsTheOld();
    void takesTheOlderPicture();
    void notWhenMetered();
    void ownList();
    void eachMonitor();
    void windowsRefuses();
    void putsBack();
    void putsBackAfterAnotherMonitor();
    void thirtyPicturesLater();

private:
    // One picture a day, of these paths of the server.
    void list(const QStringList &paths);
    WallpaperAnswer run(const WallpaperRequest &request)
    {
        const ImageServices services{QUrl(m_server->url(u"/bing"_s)), QUrl(m_server->url(u"/nasa"_s)),
                                     isLocalOrSecure};
        const wallpaper::ImageFetcher web(isLocalOrSecure, 2s);
        return wallpaper::serve(request, {services, web, m_desktop, *m_store, [this] { return m_metered; },
                                          QDateTime::currentDateTimeUtc()});
    }

    imaging::DecoderPool m_decoders{{QDir::toNativeSeparators(QDir::cleanPath(
        QCoreApplication::applicationDirPath() + u"/../../imaging/decoder/LarkspurDecoder.exe"_s))}};
    std::optional<tests::TestFolder> m_folder;
    std::optional<wallpaper::ImageFolder> m_store;
    std::unique_ptr<Server> m_server;
    Desktop m_desktop;
    bool m_metered = false;
};

void WallpaperChangerTest::init()
{
    m_folder.emplace();
    m_store.emplace(m_folder->path(u"pictures"_s), m_decoders);
    m_server = std::make_unique<Server>();
    m_desktop = {};
    m_metered = false;
    m_desktop.pictures[QString()] = m_folder->makeFile(u"before.jpg"_s, picture("JPEG", {90, 90}));
}

void WallpaperChangerTest::list(const QStringList &paths)
{
    QStringList entries;
    for (qsizetype age = 0; age < paths.size(); ++age)
        entries.append(uR"({"startdate":"%1","url":"%2","title":"Day %3","copyright":"By me",
                            "copyrightlink":"https://example.org/%3"})"_s.arg(20260320 - age)
                           .arg(paths[age])
                           .arg(age));
    m_server->put(u"/bing"_s, "{\"images\":[" + entries.join(u',').toUtf8() + "]}");
}

void WallpaperChangerTest::fetchesAndSets()
{
    list({u"/moved"_s});
    m_server->move(u"/moved"_s, "/there");
    const QByteArray bytes = picture("JPEG");
    m_server->put(u"/there"_s, bytes, "200 OK", "Content-Type: text/html\r\n"); // whatever the server says
    const WallpaperAnswer answer = run({});
    QCOMPARE(answer.reason, QString());
    QCOMPARE(answer.result, Result::Changed);
    QCOMPARE(answer.pictures[0].title, u"Day 0"_s);
    QCOMPARE(answer.pictures[0].credit, u"By me"_s);
    QCOMPARE(answer.pictures[0].page, QUrl(u"https://example.org/0"_s));
    QFile shown(m_desktop.picture({}));
    QVERIFY(shown.open(QIODevice::ReadOnly));
    QCOMPARE(shown.readAll(), bytes); // as it came
    QCOMPARE(m_desktop.place, platform::wallpaperFills);
    QVERIFY(QImage(answer.pictures[0].thumbnail).width() > 100);
    QCOMPARE(parseAnswer(m_store->read(shownFile))->pictures, answer.pictures);
    const int before = m_server->requests;
    QCOMPARE(run({}).result, Result::Same);
    QCOMPARE(m_server->requests - before, 1); // the list alone
}

void WallpaperChangerTest::keepsTheOld_data()
{
    QTest::addColumn<QByteArray>("listing"); // empty: one that names /x
    QTest::addColumn<QByteArray>("x");       // a whole answer after its status; empty: not there
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");
    const QByteArray none;
    QTest::newRow("no such picture") << none << none << u"/x"_s << u"error 404"_s;
    QTest::newRow("malformed list") << QByteArray("{\"images\":[{") << none << u"/x"_s << u"cannot be read"_s;
    QTest::newRow("empty list") << QByteArray("{\"images\":[]}") << none << u"/x"_s << u"lists no picture"_s;
    QTest::newRow("a page") << none << QByteArray("<html>sign in</html>") << u"/x"_s
                            << u"sent is no picture"_s;
    QTest::newRow("a film") << none
                            << QByteArray("\0\0\0\x20"
                                          "ftypisom",
                                          12)
                            << u"/x"_s << u"sent is no picture"_s;
    QTest::newRow("cut off") << none << picture("PNG").left(200) << u"/x"_s << u"that can be read"_s;
    QTest::newRow("a stamp") << none << picture("PNG", {120, 90}) << u"/x"_s << u"120 by 90"_s;
    QTest::newRow("too large") << none << none << u"/large"_s << u"more than a picture"_s;
    QTest::newRow("too large a list")
        << QByteArray(2 * maxListingBytes, ' ') << none << u"/x"_s << u"more than a picture"_s;
    QTest::newRow("drips") << none << none << u"/drips"_s << u"in time"_s;
    QTest::newRow("silent") << none << none << u"/silent"_s << u"in time"_s;
    QTest::newRow("round and round") << none << none << u"/loop"_s << u"not to be trusted"_s;
    QTest::newRow("to another scheme") << none << none << u"/scheme"_s << u"not to be trusted"_s;
}

void WallpaperChangerTest::keepsTheOld()
{
    QFETCH(const QByteArray, listing);
    QFETCH(const QByteArray, x);
    QFETCH(const QString, path);
    QFETCH(const QString, reason);
    list({path});
    if (!listing.isEmpty())
        m_server->put(u"/bing"_s, listing);
    if (!x.isEmpty())
        m_server->put(u"/x"_s, x);
    m_server->put(u"/large"_s, "\xff\xd8\xff", "200 OK", "Content-Length: 123456789\r\n");
    m_server->move(u"/loop"_s, "/loop");
    m_server->move(u"/scheme"_s, "http://example.org/x.jpg");
    const auto before = m_desktop.pictures;
    const WallpaperAnswer answer = run({});
    QCOMPARE(answer.result, Result::Failed);
    QVERIFY2(answer.reason.contains(reason), qPrintable(answer.reason));
    QCOMPARE(m_desktop.pictures, before);
    QCOMPARE(QDir(m_store->path()).entryList(QDir::Files), QStringList());
}

void WallpaperChangerTest::takesTheOlderPicture()
{
    list({u"/gone"_s, u"/b"_s});
    m_server->put(u"/b"_s, picture("PNG"));
    const WallpaperAnswer answer = run({});
    QCOMPARE(answer.result, Result::Changed);
    QCOMPARE(answer.index, 1);
    QVERIFY(answer.reason.contains(u"404"_s));
    m_server.reset(); // gone
    m_server = std::make_unique<Server>();
    const QString shown = m_desktop.picture({});
    QVERIFY(run({}).reason.contains(u"404"_s));
    QCOMPARE(m_desktop.picture({}), shown);
}

void WallpaperChangerTest::notWhenMetered()
{
    m_metered = true;
    QCOMPARE(run({}).result, Result::Metered);
    QCOMPARE(m_server->requests.load(), 0);
    QVERIFY(run({.onMetered = true}).reason.contains(u"404"_s));
}

void WallpaperChangerTest::ownList()
{
    const QStringList own{m_folder->path(u"gone.jpg"_s), m_folder->makeFile(u"broken.png"_s, "x"),
                          u"relative.png"_s, m_folder->makeFile(u"one.png"_s, picture("PNG", {50, 50})),
                          m_folder->makeFile(u"two.ppm"_s, picture("PPM"))};
    WallpaperRequest request{
        .source = ImageSource::Own, .step = ImageStep::Current, .index = 900, .own = own};
    WallpaperAnswer answer = run(request);
    QCOMPARE(answer.result, Result::Changed);
    QCOMPARE(answer.index, 3);
    QCOMPARE(answer.reason, u"3 pictures cannot be used"_s);
    QCOMPARE(answer.pictures[0].title, u"one"_s);
    request.step = ImageStep::Next;
    request.index = answer.index;
    answer = run(request);
    QCOMPARE(answer.index, 4);
    QVERIFY(m_desktop.picture({}).endsWith(u".jpg"_s)); // what Windows does not know is stored anew
    QCOMPARE(QImage(m_desktop.picture({})).size(), QSize(800, 600));
    request.own = own.first(3);
    QCOMPARE(run(request).result, Result::Failed);
    QVERIFY(m_desktop.picture({}).endsWith(u".jpg"_s));
    request.own.clear();
    QVERIFY(run(request).reason.contains(u"no pictures"_s));
}

void WallpaperChangerTest::eachMonitor()
{
    m_desktop.names = {u"left"_s, u"right"_s, u"far"_s};
    list({u"/a"_s, u"/b"_s});
    m_server->put(u"/a"_s, picture("PNG"));
    m_server->put(u"/b"_s, picture("PNG", {801, 600}));
    const WallpaperAnswer answer = run({.perMonitor = true});
    QCOMPARE(answer.result, Result::Changed);
    QCOMPARE(answer.pictures.size(), 3);
    QVERIFY(m_desktop.picture(u"left"_s) != m_desktop.picture(u"right"_s));
    QCOMPARE(m_desktop.picture(u"left"_s), m_desktop.picture(u"far"_s));
    QCOMPARE(run({.perMonitor = true}).result, Result::Same);
}

void WallpaperChangerTest::windowsRefuses()
{
    m_desktop.names = {u"left"_s, u"right"_s};
    m_desktop.pictures = {{u"left"_s, u"D:\\l.jpg"_s}, {u"right"_s, u"D:\\r.jpg"_s}};
    const auto before = m_desktop.pictures;
    list({u"/a"_s, u"/a"_s});
    m_server->put(u"/a"_s, picture("PNG"));
    m_desktop.refusesAfter = 1;
    QVERIFY(run({.perMonitor = true}).reason.contains(u"refused"_s));
    QCOMPARE(m_desktop.pictures, before);
    QCOMPARE(m_desktop.place, 1);
    QVERIFY(m_store->read(shownFile).isEmpty());
}

void WallpaperChangerTest::putsBack()
{
    const QString former = m_desktop.picture({});
    m_desktop.slideshow = u"D:\\show"_s;
    list({u"/a"_s});
    m_server->put(u"/a"_s, picture("PNG"));
    QCOMPARE(run({}).result, Result::Changed);
    m_desktop.slideshow.clear(); // as Windows ends it
    QCOMPARE(run({.restore = true}).result, Result::Restored);
    QCOMPARE(m_desktop.picture({}), former);
    QCOMPARE(m_desktop.place, 1);
    QCOMPARE(m_desktop.slideshow, u"D:\\show"_s);
    QVERIFY(run({.restore = true}).reason.contains(u"nothing to put back"_s));

    // The file has gone since, and Windows refuses at first.
    QCOMPARE(run({}).result, Result::Changed);
    QVERIFY(QFile::remove(former));
    m_desktop.refusesAfter = 0;
    QCOMPARE(run({.restore = true}).result, Result::Failed);
    QCOMPARE(run({.restore = true}).result, Result::Restored);
    QCOMPARE(QImage(m_desktop.picture({})).size(), QSize(90, 90));

    // What the user has chosen stays, and is what comes back later.
    QCOMPARE(run({}).result, Result::Changed);
    m_desktop.pictures[QString()] = u"D:\\chosen.jpg"_s;
    QVERIFY(run({.restore = true}).reason.contains(u"stays"_s));
    QCOMPARE(m_desktop.picture({}), u"D:\\chosen.jpg"_s);
    QCOMPARE(run({}).result, Result::Changed);
    run({.restore = true});
    QCOMPARE(m_desktop.picture({}), u"D:\\chosen.jpg"_s);
}

// The slide show and the position are those of the time before, whatever a monitor that is added shows.
void WallpaperChangerTest::putsBackAfterAnotherMonitor()
{
    const QString former = m_desktop.picture({});
    m_desktop.names = {u"left"_s};
    m_desktop.pictures = {{u"left"_s, former}};
    m_desktop.slideshow = u"D:\\show"_s;
    list({u"/a"_s, u"/b"_s});
    m_server->put(u"/a"_s, picture("PNG"));
    m_server->put(u"/b"_s, picture("PNG", {801, 600}));
    QCOMPARE(run({}).result, Result::Changed);
    m_desktop.slideshow.clear();
    m_desktop.names.append(u"right"_s);
    const auto copies = [this] { return QDir(m_store->path()).entryList({u"former-*"_s}).size(); };
    for (const int side : {70, 71}) {
        m_desktop.pictures[u"right"_s] =
            m_folder->makeFile(u"%1.png"_s.arg(side), picture("PNG", {side, 70}));
        QCOMPARE(run({.step = ImageStep::Next}).result, Result::Changed);
        QCOMPARE(copies(), 2); // those of what is not on the desktop any more have gone
    }
    QCOMPARE(run({.restore = true}).result, Result::Restored);
    QCOMPARE(m_desktop.pictures[u"left"_s], former);
    QCOMPARE(m_desktop.place, 1);
    QCOMPARE(m_desktop.slideshow, u"D:\\show"_s);
}

void WallpaperChangerTest::thirtyPicturesLater()
{
    m_folder->makeFile(u"pictures\\mine.jpg"_s, "x");
    QStringList own;
    for (int i = 0; i < 30; ++i)
        own.append(m_folder->makeFile(u"%1.bmp"_s.arg(i), picture("BMP", {60 + i, 60})));
    for (int i = 0; i < own.size(); ++i)
        run({.source = ImageSource::Own, .step = ImageStep::Current, .index = i, .own = own});
    const QStringList left = QDir(m_store->path()).entryList({u"own-*.bmp"_s}, QDir::Files);
    QCOMPARE(left.size(), wallpaper::ImageFolder::maxKept + 1);
    QVERIFY(QFileInfo(m_desktop.picture({})).isFile());
    QVERIFY(QFileInfo(m_folder->path(u"pictures\\mine.jpg"_s)).isFile());
}

QTEST_MAIN(WallpaperChangerTest)
#include "tst_wallpaper_changer.moc"
