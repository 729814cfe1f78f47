// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/UpdateCheck.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

using Kind = UpdateAnswer::Kind;
const QVersionNumber running(1, 9, 0);

// Answers every request for a path with the bytes that a test has put there.
class Server : public QTcpServer
{
public:
    Server()
    {
        if (!listen(QHostAddress::LocalHost))
            qFatal("No local server");
        connect(this, &QTcpServer::newConnection, this, [this] { serve(nextPendingConnection()); });
    }

    QUrl url(const QString &path) const
    {
        return QUrl(u"http://127.0.0.1:%1%2"_s.arg(serverPort()).arg(path));
    }

    static QByteArray answer(const QByteArray &body, const QByteArray &status = "200 OK",
                             const QByteArray &headers = {})
    {
        return "HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers + "\r\n" + body;
    }
    static QByteArray moved(const QUrl &to)
    {
        return answer({}, "302 Found", "Location: " + to.toEncoded() + "\r\nContent-Length: 0\r\n");
    }

    QHash<QString, QByteArray> pages;
    bool hangs = false;  // sends nothing
    bool drips = false;  // a byte now and then
    bool floods = false; // sends without end
    int requests = 0;

private:
    void serve(QTcpSocket *socket)
    {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            const QList<QByteArray> request = socket->readAll().split(' ');
            ++requests;
            if (hangs)
                return;
            socket->write(pages.value(QString::fromLatin1(request.value(1)), answer({}, "404 Not Found")));
            if (drips || floods)
                goOn(socket);
            else
                socket->disconnectFromHost();
        });
    }
    void goOn(QTcpSocket *socket)
    {
        auto *timer = new QTimer(socket);
        connect(timer, &QTimer::timeout, socket, [this, socket] {
            if (socket->bytesToWrite() < 1'000'000)
                socket->write(QByteArray(drips ? 1 : 16384, ' '));
        });
        timer->start(drips ? 50 : 0);
    }
};

} // namespace

class tst_UpdateCheck : public QObject
{
    Q_OBJECT

private slots:
    void readsAnnouncements_data();
    void readsAnnouncements();
    void reportsFailures();
    void refusesLargeAnswers();
    void givesUpInTime();
    void asksTheServerAndFollowsFewRedirections();
    void refusesStrangeAddresses();
    void answersOnceOfTwoChecks();
    void canBeDestroyedMeanwhile();

private:
    static UpdateAnswer ask(const QUrl &url, std::chrono::milliseconds timeout = 5s);
};

// Nothing of a check may hold the interface up: a timer runs through all of it.
UpdateAnswer tst_UpdateCheck::ask(const QUrl &url, std::chrono::milliseconds timeout)
{
    UpdateCheck check;
    UpdateAnswer got;
    int answers = 0;
    connect(&check, &UpdateCheck::finished, &check, [&](const UpdateAnswer &answer) {
        got = answer;
        ++answers;
    });
    check.start(url, running, timeout);
    if (answers != 0 || !QTest::qWaitFor([&] { return answers > 0; }, 10'000)) {
        QTest::qFail("The check answered at once, or not at all", __FILE__, __LINE__);
        return got;
    }
    QTest::qWait(100); // a second answer would be wrong
    if (answers != 1)
        QTest::qFail("The check answered twice", __FILE__, __LINE__);
    return got;
}

void tst_UpdateCheck::readsAnnouncements_data()
{
    QTest::addColumn<QByteArray>("announcement");
    QTest::addColumn<int>("kind");
    const auto row = [](const char *name, const QByteArray &announcement, Kind kind) {
        QTest::newRow(name) << announcement << int(kind);
    };
    const auto version = [](const QByteArray &text) {
        return R"({"version":")" + text + R"(","url":"https://example.test/get"})";
    };
    row("newer by number, not by text", version("1.10"), Kind::Newer);
    row("the same", version("1.9.0"), Kind::UpToDate);
    row("the same, shorter", version("1.9"), Kind::UpToDate);
    row("older without an address", R"({"version":"1.2.0"})", Kind::UpToDate);
    row("a letter behind", version("2.0.0b"), Kind::Failed);
    row("a sign", version("-2.0"), Kind::Failed);
    row("too many parts", version("2.0.0.0.0"), Kind::Failed);
    row("beyond any number", version("99999999999"), Kind::Failed);
    row("version as a number", R"({"version":2.0,"url":"https://example.test"})", Kind::Failed);
    row("newer without an address", R"({"version":"2.0"})", Kind::Failed);
    row("newer with a program", R"({"version":"2.0","url":"file:///C:/evil.exe"})", Kind::Failed);
    row("newer without a host", R"({"version":"2.0","url":"https:///x"})", Kind::Failed);
    row("an array", R"(["2.0"])", Kind::Failed);
    row("cut off", R"({"version":"2.0","url":)", Kind::Failed);
}

void tst_UpdateCheck::readsAnnouncements()
{
    QFETCH(const QByteArray, announcement);
    QFETCH(const int, kind);
    const UpdateAnswer answer = readRelease(announcement, running);
    QCOMPARE(int(answer.kind), kind);
    QCOMPARE(answer.problem.isEmpty(), answer.kind != Kind::Failed);
}

void tst_UpdateCheck::reportsFailures()
{
    Server server;
    for (const auto &[response, part] :
         {std::pair{Server::answer({}, "404 Not Found"), u"404"_s},
          {Server::answer("hello"), u"names no version"_s},
          {QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{"), u"cannot be reached"_s},
          {QByteArray("SSH-2.0-x\r\n"), u"cannot be reached"_s}}) {
        server.pages[u"/"_s] = response;
        const UpdateAnswer answer = ask(server.url(u"/"_s));
        QCOMPARE(answer.kind, Kind::Failed);
        QVERIFY2(answer.problem.contains(part), response.constData());
    }
}

void tst_UpdateCheck::refusesLargeAnswers()
{
    Server server;
    const QByteArray announcement = R"({"version":"2.0","url":"https://example.test/get"})";
    const auto askFor = [&](qsizetype size) {
        server.pages[u"/"_s] = Server::answer(announcement.leftJustified(size));
        return ask(server.url(u"/"_s));
    };
    constexpr qsizetype limit = 64 * 1024;
    QCOMPARE(askFor(limit).kind, Kind::Newer);
    QVERIFY(askFor(limit + 1).problem.contains(u"too large"_s));
    server.floods = true; // and never ends
    QVERIFY(askFor(limit).problem.contains(u"too large"_s));
}

void tst_UpdateCheck::givesUpInTime()
{
    for (const bool drips : {false, true}) {
        Server server;
        server.hangs = !drips;
        server.drips = drips;
        server.pages[u"/"_s] = Server::answer("{");
        QVERIFY(ask(server.url(u"/"_s), 600ms).problem.contains(u"in time"_s));
    }
}

void tst_UpdateCheck::asksTheServerAndFollowsFewRedirections()
{
    Server server;
    server.pages[u"/new"_s] = Server::answer(R"({"version":"2.0","url":"https://example.test/get"})");
    const UpdateAnswer answer = ask(server.url(u"/new"_s));
    QCOMPARE(answer.kind, Kind::Newer);
    QCOMPARE(answer.version, QVersionNumber(2, 0));
    QCOMPARE(answer.page, QUrl(u"https://example.test/get"_s));
    QCOMPARE(server.requests, 1);
    server.pages[u"/old"_s] = Server::moved(server.url(u"/new"_s));
    QCOMPARE(ask(server.url(u"/old"_s)).kind, Kind::Newer);

    server.pages[u"/round"_s] = Server::moved(server.url(u"/round"_s));
    server.requests = 0;
    QVERIFY(ask(server.url(u"/round"_s)).problem.contains(u"not to be trusted"_s));
    QVERIFY(server.requests <= UpdateCheck::maxRedirections + 1);

    server.pages[u"/file"_s] = Server::moved(QUrl(u"file:///C:/windows/win.ini"_s));
    QCOMPARE(ask(server.url(u"/file"_s)).kind, Kind::Failed);
}

void tst_UpdateCheck::refusesStrangeAddresses()
{
    for (const QString &url : {u""_s, u"file:///C:/windows/win.ini"_s, u"ftp://127.0.0.1/x"_s, u"http:///x"_s,
                               u"data:,{}"_s, u"latest.json"_s})
        QVERIFY2(ask(QUrl(url)).problem.contains(u"not a web address"_s), qPrintable(url));
}

void tst_UpdateCheck::answersOnceOfTwoChecks()
{
    Server slow;
    slow.hangs = true;
    Server server;
    server.pages[u"/"_s] = Server::answer(R"({"version":"1.0"})");
    UpdateCheck check;
    QSignalSpy finished(&check, &UpdateCheck::finished);
    check.start(slow.url(u"/"_s), running);
    QTRY_COMPARE(slow.requests, 1);
    check.start(server.url(u"/"_s), running);
    QVERIFY(finished.wait());
    QTest::qWait(100);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.first().first().value<UpdateAnswer>().kind, Kind::UpToDate);
}

void tst_UpdateCheck::canBeDestroyedMeanwhile()
{
    Server server;
    server.hangs = true;
    {
        UpdateCheck check;
        check.start(server.url(u"/"_s), running);
        QTRY_COMPARE(server.requests, 1);
    }
    UpdateCheck refused;
    refused.start(QUrl(), running); // its answer is still to come
}

QTEST_GUILESS_MAIN(tst_UpdateCheck)

#include "tst_update_check.moc"
