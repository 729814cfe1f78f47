// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Dialogs.h"
#include "platform/Icons.h"
#include "platform/KnownFolders.h"
#include "platform/Processors.h"
#include "platform/TopLevelWindows.h"
#include "tests/support/FakeWindow.h"

#include <QApplication>
#include <QFileInfo>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWidget>

#include <windows.h>

using namespace Qt::StringLiterals;
using namespace platform;

class TestDesktop : public QObject
{
    Q_OBJECT

private slots:
    void findsCompanionsOfBothKinds();
    void folderIcon();
    void knownFolders();
    void processors();
    void theMessageBoxIsThatOfWindows();
    void boxesShowTextAsItStands();
};

void TestDesktop::findsCompanionsOfBothKinds()
{
    const QString title = u"Larkspur Test Companion"_s;
    QCOMPARE(companionWindow(title), WId{0});

    QWidget own;
    own.setWindowTitle(title);
    own.show();
    QVERIFY(QTest::qWaitForWindowExposed(&own));
    QCOMPARE(findTopLevelWindow(toolkitWindowClass(), title), own.winId());
    QCOMPARE(companionWindow(title), own.winId());
    QCOMPARE(companionWindow(title + u'x'), WId{0});
    {
        const tests::FakeWindow older(u"Qt653QWindowIcon"_s, title);
        QCOMPARE(companionWindow(title), older.id());
    }
    QCOMPARE(companionWindow(title), own.winId());

    const QString otherClass = u"LarkspurTestStranger"_s;
    const QString otherTitle = u"Another Title"_s;
    const tests::FakeWindow stranger(otherClass, otherTitle);
    QCOMPARE(companionWindow(otherTitle), WId{0});
    QCOMPARE(findTopLevelWindow(otherClass, otherTitle), stranger.id());
}

void TestDesktop::folderIcon()
{
    // From a thread that has never heard of COM, as a scan does.
    QImage icon;
    QThread *worker = QThread::create([&] { icon = systemFolderIcon(); });
    worker->start();
    QVERIFY(worker->wait(20'000));
    delete worker;
    QCOMPARE(icon.width(), GetSystemMetrics(SM_CXSMICON));
    QVERIFY(icon.pixelColor(icon.rect().center()).alpha() > 0);
}

void TestDesktop::knownFolders()
{
    const QString profile = knownFolder(KnownFolder::Profile);
    QVERIFY(QFileInfo(profile).isDir());
    QVERIFY(!profile.endsWith(u'\\'));
    QVERIFY(!profile.contains(u'/'));
    for (const KnownFolder folder :
         {KnownFolder::Desktop, KnownFolder::Downloads, KnownFolder::Documents, KnownFolder::Pictures,
          KnownFolder::Music, KnownFolder::Videos, KnownFolder::RoamingAppData, KnownFolder::LocalAppData})
        QVERIFY2(knownFolder(folder).startsWith(profile + u'\\'), qPrintable(knownFolder(folder)));
    QVERIFY(knownFolder(KnownFolder::System).startsWith(knownFolder(KnownFolder::Windows) + u'\\'));
}

void TestDesktop::processors()
{
    QVERIFY(osIdleCores() >= 1);
    DWORD_PTR before = 0;
    DWORD_PTR system = 0;
    QVERIFY(GetProcessAffinityMask(GetCurrentProcess(), &before, &system));
    QVERIFY(SetProcessAffinityMask(GetCurrentProcess(), 1));
    QCOMPARE(osIdleCores(), 1);
    QVERIFY(SetProcessAffinityMask(GetCurrentProcess(), before));
}

void TestDesktop::theMessageBoxIsThatOfWindows()
{
    // The box runs its own loop, which delivers the timer; it is found as a user's tool would find it.
    const auto answerWith = [](WPARAM button) {
        QTimer::singleShot(0, qApp, [button] {
            auto *poll = new QTimer(qApp);
            connect(poll, &QTimer::timeout, poll, [poll, button] {
                const HWND box = FindWindowW(L"#32770", L"Confirm to save changes");
                if (!box)
                    return;
                PostMessageW(box, WM_COMMAND, button, 0);
                poll->deleteLater();
            });
            poll->start(20);
        });
    };
    const QString text = u"Are you sure you want to move C:\\d\\a.txt to the recycle bin?"_s;
    const QString caption = u"Confirm to save changes"_s;
    answerWith(IDYES);
    QCOMPARE(dialogs().messageBox(text, caption, yesNoWarning), idYes);
    answerWith(IDNO);
    QCOMPARE(dialogs().messageBox(text, caption, yesNoWarning), idNo);
}

void TestDesktop::boxesShowTextAsItStands()
{
    QString shown;
    Qt::TextFormat format = Qt::AutoText;
    QTimer::singleShot(0, this, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box);
        shown = box->text();
        format = box->textFormat();
        QVERIFY(box->defaultButton() == box->button(QMessageBox::No));
        box->button(QMessageBox::Yes)->click();
    });
    QCOMPARE(dialogs().ask(nullptr, u"Title"_s, u"Remove <b>a&b</b>?"_s), QMessageBox::Yes);
    QCOMPARE(shown, u"Remove <b>a&b</b>?"_s);
    QCOMPARE(format, Qt::PlainText);
}

QTEST_MAIN(TestDesktop)

#include "tst_desktop.moc"
