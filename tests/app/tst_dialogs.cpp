// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AboutDialog.h"
#include "app/InstallationFolder.h"
#include "app/Product.h"
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
#include <QTcpServer>
#include <QTcpSocket>
#include <QTextBrowser>
#include <QToolBar>

using namespace Qt::StringLiterals;

// The dialogs of the tool bar, opened through it.
class tst_Dialogs : public tests::ShellTest
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

private:
    template <class Dialog>
    Dialog *openByToolBar(const QString &text);
    template <class Widget>
    static Widget *child(const QWidget *parent, const char *name)
    {
        return parent->findChild<Widget *>(QLatin1StringView(name));
    }

    std::optional<tests::FakeDialogs> m_boxes;
    std::optional<QTcpServer> m_server;
    QByteArray m_body;
};

void tst_Dialogs::init()
{
    openShell();
    m_boxes.emplace();
    m_server.emplace();
    QVERIFY(m_server->listen(QHostAddress::LocalHost));
    settings::writeString(settings::keys::root, u"UpdateFeed",
                          u"http://127.0.0.1:%1/latest.json"_s.arg(m_server->serverPort()));
    connect(&*m_server, &QTcpServer::newConnection, &*m_server, [this] {
        QTcpSocket *socket = m_server->nextPendingConnection();
        connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
            socket->readAll();
            if (m_body.isEmpty())
                return;
            socket->write("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + m_body);
            socket->disconnectFromHost();
        });
    });
}

void tst_Dialogs::cleanup()
{
    closeShell();
    m_server.reset();
    m_boxes.reset();
}

template <class Dialog>
Dialog *tst_Dialogs::openByToolBar(const QString &text)
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

void tst_Dialogs::tellsAboutTheProduct()
{
    const auto *about = openByToolBar<AboutDialog>(u"About"_s);
    QVERIFY(about);
    QCOMPARE(child<QLabel>(about, "productLabel")->text(), u"Fernlight Larkspur"_s);
    const QString version = child<QLabel>(about, "versionLabel")->text();
    QVERIFY(version.contains(product::version().toString()));
    QVERIFY(version.contains(QLatin1StringView(qVersion())));
    const QString licences = child<QTextBrowser>(about, "licencesTextBrowser")->toPlainText();
    for (const QString &part : {u"GPL-3.0-or-later"_s, u"LGPL-3.0"_s, u"Fluent System Icons"_s})
        QVERIFY2(licences.contains(part), qPrintable(part));
}

void tst_Dialogs::resetsTheInstallationFolder()
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

void tst_Dialogs::offersANewerVersion()
{
    m_body = R"({"version":"123.4","url":"https://example.test/get"})";
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

void tst_Dialogs::saysWhyTheCheckFailedAndTriesAgain()
{
    m_body = "nonsense";
    const auto *dialog = openByToolBar<UpdateDialog>(u"Check Update"_s);
    QVERIFY(dialog);
    auto *again = child<QPushButton>(dialog, "tryAgainButton");
    QTRY_VERIFY(again->isVisible());
    QVERIFY(child<QLabel>(dialog, "updateTitleLabel")->text().contains(u"failed"_s));
    QVERIFY(child<QLabel>(dialog, "updateDetailLabel")->text().contains(u"names no version"_s));
    m_body = R"({"version":"0.0.1"})";
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

void tst_Dialogs::canBeClosedWhileItWaits()
{
    m_body.clear(); // never answers
    auto *dialog = openByToolBar<UpdateDialog>(u"Check Update"_s);
    QVERIFY(dialog);
    QTRY_VERIFY(m_server->findChild<QTcpSocket *>());
    QTest::keyClick(dialog, Qt::Key_Escape);
    QTRY_VERIFY(m_window->findChildren<UpdateDialog *>().isEmpty());
    QVERIFY(m_window->close());
}

QTEST_MAIN(tst_Dialogs)

#include "tst_dialogs.moc"
