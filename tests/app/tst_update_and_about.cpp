// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AboutDialog.h"
#include "app/InstallationFolder.h"
#include "app/Product.h"
#include "app/UpdateCheck.h"
#include "app/UpdateDialog.h"
#include "platform/Paths.h"
#include "settings/Keys.h"
#include "settings/Settings.h"
#include "tests/app/ShellTest.h"
#include "tests/support/FakeDialogs.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTextBrowser>
#include <QTimer>
#include <QToolBar>

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
    enum class Manner {
        Plain,
        Hangs, // sends nothing
        Drips, // a byte now and then
        Floods // sends without end
    };
    Manner manner = Manner::Plain;
    int requests = 0;

private:
    void serve(QTcpSocket *socket)
    {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            const QList<QByteArray> request = socket->readAll().split(' ');
            ++requests;
            if (manner == Manner::Hangs)
                return;
            socket->write(pages.value(QString::fromLatin1(request.value(1)), answer({}, "404 Not Found")));
            if (manner == Manner::Plain)
                socket->disconnectFromHost();
            else
                goOn(socket);
        });
    }
    void goOn(QTcpSocket *socket)
    {
        auto *timer = new QTimer(socket);
        connect(timer, &QTimer::timeout, socket, [this, socket] {
            if (socket->bytesToWrite() < 1'000'000)
                socket->write(QByteArray(manner == Manner::Drips ? 1 : 16384, ' '));
        });
        timer->start(manner == Manner::Drips ? 50 : 0);
    }
};

} // namespace

// The update check, and the dialogs of the tool bar, opened through it.
class tst_UpdateAndAbout : public tests::ShellTest
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void tellsAboutTheProduct();
    void resetsTheInstallationFolder();
    void offersANewerVersion();
    void saysWhyTheCheckFailedAndTriesAgain();
    void canBeClosedWhileItWaits();
    void readsAnnouncements_data();
    void readsAnnouncements();
    void reportsFailures_data();
    void reportsFailures();
    void asksTheServerAndFollowsFewRedirections();
    void refusesStrangeAddresses();
    void answersOnceOfTwoChecks();

private:
    template <class Dialog>
    Dialog *openByToolBar(const QString &text);
    template <class Widget>
    static Widget *child(const QWidget *parent, const char *name)
    {
        return parent->findChild<Widget *>(QLatin1StringView(name));
    }
    // What the dialog is to read.
    void answerWith(const QByteArray &body) { m_server->pages[u"/latest.json"_s] = Server::answer(body); }
    static UpdateAnswer ask(const QUrl &url, std::chrono::milliseconds timeout = 5s);

    std::optional<tests::FakeDialogs> m_boxes;
    std::optional<Server> m_server;
};

void tst_UpdateAndAbout::init()
{
    openShell();
    m_boxes.emplace();
    m_server.emplace();
    settings::writeString(settings::keys::root, u"UpdateFeed", m_server->url(u"/latest.json"_s).toString());
}

void tst_UpdateAndAbout::cleanup()
{
    closeShell();
    m_server.reset();
    m_boxes.reset();
}

// Nothing of a check may hold the interface up: a timer runs through all of it.
UpdateAnswer tst_UpdateAndAbout::ask(const QUrl &url, std::chrono::milliseconds timeout)
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

void tst_UpdateAndAbout::readsAnnouncements_data()
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

void tst_UpdateAndAbout::readsAnnouncements()
{
    QFETCH(const QByteArray, announcement);
    QFETCH(const int, kind);
    const UpdateAnswer answer = readRelease(announcement, running);
    QCOMPARE(int(answer.kind), kind);
    QCOMPARE(answer.problem.isEmpty(), answer.kind != Kind::Failed);
}

void tst_UpdateAndAbout::reportsFailures_data()
{
    QTest::addColumn<QByteArray>("response");
    QTest::addColumn<Server::Manner>("manner");
    QTest::addColumn<QString>("problem");
    using enum Server::Manner;
    const QByteArray newer = R"({"version":"2.0","url":"https://example.test/get"})";
    constexpr qsizetype limit = 64 * 1024;
    QTest::newRow("no page") << Server::answer({}, "404 Not Found") << Plain << u"404"_s;
    QTest::newRow("nonsense") << Server::answer("hello") << Plain << u"names no version"_s;
    QTest::newRow("cut off") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{") << Plain
                             << u"cannot be reached"_s;
    QTest::newRow("another protocol") << QByteArray("SSH-2.0-x\r\n") << Plain << u"cannot be reached"_s;
    QTest::newRow("as large as may be") << Server::answer(newer.leftJustified(limit)) << Plain << QString();
    QTest::newRow("larger") << Server::answer(newer.leftJustified(limit + 1)) << Plain << u"too large"_s;
    QTest::newRow("without end") << Server::answer(newer) << Floods << u"too large"_s;
    QTest::newRow("silent") << QByteArray() << Hangs << u"in time"_s;
    QTest::newRow("slow") << Server::answer("{") << Drips << u"in time"_s;
}

void tst_UpdateAndAbout::reportsFailures()
{
    QFETCH(const QByteArray, response);
    QFETCH(const Server::Manner, manner);
    QFETCH(const QString, problem);
    Server server;
    server.manner = manner;
    server.pages[u"/"_s] = response;
    const UpdateAnswer answer = ask(server.url(u"/"_s), problem == u"in time"_s ? 600ms : 5s);
    QCOMPARE(answer.kind, problem.isEmpty() ? Kind::Newer : Kind::Failed);
    QVERIFY2(answer.problem.contains(problem), qPrintable(answer.problem));
}

void tst_UpdateAndAbout::asksTheServerAndFollowsFewRedirections()
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

void tst_UpdateAndAbout::refusesStrangeAddresses()
{
    for (const QString &url : {u""_s, u"file:///C:/windows/win.ini"_s, u"ftp://127.0.0.1/x"_s, u"http:///x"_s,
                               u"data:,{}"_s, u"latest.json"_s})
        QVERIFY2(ask(QUrl(url)).problem.contains(u"not a web address"_s), qPrintable(url));
}

void tst_UpdateAndAbout::answersOnceOfTwoChecks()
{
    Server slow;
    slow.manner = Server::Manner::Hangs;
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

template <class Dialog>
Dialog *tst_UpdateAndAbout::openByToolBar(const QString &text)
{
    const auto *bar = m_window->findChild<QToolBar *>();
    for (QAction *action : bar->actions()) {
        if (action->text() == text)
            QTest::mouseClick(bar->widgetForAction(action), Qt::LeftButton);
    }
    const QList<Dialog *> dialogs = m_window->findChildren<Dialog *>();
    return dialogs.size() == 1 && dialogs.first()->isVisible() && dialogs.first()->isModal() ? dialogs.first()
                                                                                             : nullptr;
}

void tst_UpdateAndAbout::tellsAboutTheProduct()
{
    const auto *about = openByToolBar<AboutDialog>(u"About"_s);
    QVERIFY(about);
    const QString version = child<QLabel>(about, "versionLabel")->text();
    QVERIFY(version.contains(product::version().toString()));
    const QString licences = child<QTextBrowser>(about, "licencesTextBrowser")->toPlainText();
    for (const QString &part : {u"GPL-3.0-or-later"_s, u"LGPL-3.0"_s, u"Fluent System Icons"_s})
        QVERIFY2(licences.contains(part), qPrintable(part));
}

void tst_UpdateAndAbout::resetsTheInstallationFolder()
{
    installation::setFolder(u"C:/some where/else"_s);
    const auto *about = openByToolBar<AboutDialog>(u"About"_s);
    QVERIFY(about);
    QCOMPARE(child<QLineEdit>(about, "installationFolderEdit")->text(), u"C:\\some where\\else"_s);
    auto *reset = child<QPushButton>(about, "resetFolderButton");
    reset->click();
    const QString own = platform::shownPath(QCoreApplication::applicationDirPath());
    QCOMPARE(child<QLineEdit>(about, "installationFolderEdit")->text(), own);
    QCOMPARE(settings::installationFolder(), own);
    QCOMPARE(installation::folder(), own);
    QVERIFY(!reset->isEnabled());

    // However long the folder's path is, the dialog keeps its width.
    const int width = about->width();
    installation::setFolder(u"C:"_s + u"/a-name-without-any-space"_s.repeated(100));
    m_window->findChild<AboutDialog *>()->close();
    QTRY_VERIFY(!m_window->findChild<AboutDialog *>());
    about = openByToolBar<AboutDialog>(u"About"_s);
    QVERIFY(about);
    QCOMPARE(about->width(), width);
    const auto *edit = child<QLineEdit>(about, "installationFolderEdit");
    QVERIFY(edit->isReadOnly());
    QVERIFY(about->rect().contains(QRect(edit->mapTo(about, QPoint()), edit->size())));
}

void tst_UpdateAndAbout::offersANewerVersion()
{
    answerWith(R"({"version":"123.4","url":"https://example.test/get"})");
    auto *dialog = openByToolBar<UpdateDialog>(u"Check Update"_s);
    QVERIFY(dialog);
    auto *open = child<QPushButton>(dialog, "openPageButton");
    QVERIFY(open->isHidden());
    QTRY_VERIFY(open->isVisible());
    QVERIFY(child<QLabel>(dialog, "updateTitleLabel")->text().contains(u"123.4"_s));
    QVERIFY(m_shell->webPages.isEmpty());

    m_shell->succeeds = false; // no browser: the user gets the address to copy
    open->click();
    QCOMPARE(m_boxes->warnings.size(), 1);
    QVERIFY(m_boxes->warnings.first().text.contains(u"https://example.test/get"_s));
    m_shell->succeeds = true;
    open->click();
    QCOMPARE(m_shell->webPages.last(), QUrl(u"https://example.test/get"_s));
    QTRY_VERIFY(m_window->findChildren<UpdateDialog *>().isEmpty());
}

void tst_UpdateAndAbout::saysWhyTheCheckFailedAndTriesAgain()
{
    answerWith("nonsense");
    const auto *dialog = openByToolBar<UpdateDialog>(u"Check Update"_s);
    QVERIFY(dialog);
    auto *again = child<QPushButton>(dialog, "tryAgainButton");
    QTRY_VERIFY(again->isVisible());
    QVERIFY(child<QLabel>(dialog, "updateTitleLabel")->text().contains(u"failed"_s));
    QVERIFY(child<QLabel>(dialog, "updateDetailLabel")->text().contains(u"names no version"_s));
    answerWith(R"({"version":"0.0.1"})");
    again->click();
    QTRY_VERIFY(child<QLabel>(dialog, "updateTitleLabel")->text().contains(u"up to date"_s));
    QVERIFY(child<QPushButton>(dialog, "openPageButton")->isHidden());
    QVERIFY(again->isHidden());
    m_window->findChild<UpdateDialog *>()->close();
    QTRY_VERIFY(!m_window->findChild<UpdateDialog *>());

    // The address that is built in is nobody's: no server is asked, and none is blamed.
    settings::deleteValue(settings::keys::root, u"UpdateFeed");
    dialog = openByToolBar<UpdateDialog>(u"Check Update"_s);
    QVERIFY(dialog);
    QVERIFY(child<QLabel>(dialog, "updateDetailLabel")->text().contains(u"No release feed"_s));
    QVERIFY(child<QPushButton>(dialog, "tryAgainButton")->isHidden());
}

void tst_UpdateAndAbout::canBeClosedWhileItWaits()
{
    m_server->manner = Server::Manner::Hangs;
    auto *dialog = openByToolBar<UpdateDialog>(u"Check Update"_s);
    QVERIFY(dialog);
    QTRY_COMPARE(m_server->requests, 1);
    QTest::keyClick(dialog, Qt::Key_Escape);
    QTRY_VERIFY(m_window->findChildren<UpdateDialog *>().isEmpty());
    QVERIFY(m_window->close());
}

QTEST_MAIN(tst_UpdateAndAbout)

#include "tst_update_and_about.moc"
