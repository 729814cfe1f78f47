// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Dialogs.h"
#include "platform/Icons.h"
#include "platform/KnownFolders.h"
#include "platform/Processors.h"
#include "platform/TopLevelWindows.h"
#include "tests/support/FakeDialogs.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QFileInfo>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWidget>

#include <windows.h>

using namespace platform;

namespace
{

// A window of another toolkit's class, as an older companion would have it.
class PlainWindow
{
public:
    PlainWindow(const wchar_t *className, const wchar_t *title) : m_className(className)
    {
        WNDCLASSW description = {};
        description.lpfnWndProc = DefWindowProcW;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = className;
        RegisterClassW(&description);
        m_window = CreateWindowExW(0, className, title, WS_OVERLAPPEDWINDOW, 0, 0, 50, 50, nullptr, nullptr,
                                   description.hInstance, nullptr);
    }
    ~PlainWindow()
    {
        DestroyWindow(m_window);
        UnregisterClassW(m_className, GetModuleHandleW(nullptr));
    }
    WId id() const { return reinterpret_cast<WId>(m_window); }

private:
    const wchar_t *m_className;
    HWND m_window;
};

struct MessageCatcher : QAbstractNativeEventFilter {
    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const auto *posted = static_cast<const MSG *>(message);
        if (posted->message == messageStayAwakeState) {
            wParam = posted->wParam;
            lParam = posted->lParam;
            arrived = true; // Qt shows it twice: taken from the queue, and in the window procedure
        }
        return false;
    }
    quintptr wParam = 0;
    qintptr lParam = 0;
    bool arrived = false;
};

} // namespace

class TestDesktop : public QObject
{
    Q_OBJECT

private slots:
    void findsCompanionsOfBothKinds();
    void postsMessages();
    void metricsAreThoseOfWindows();
    void folderIcon();
    void knownFolders();
    void processors();
    void theMessageBoxIsThatOfWindows();
    void boxesShowTextAsItStands();
    void fakeDialogsGiveTheNextAnswer();
};

void TestDesktop::findsCompanionsOfBothKinds()
{
    const QString title = QStringLiteral("Larkspur Test Companion");
    QCOMPARE(companionWindow(title), WId{0});

    QWidget own;
    own.setWindowTitle(title);
    own.show();
    QVERIFY(QTest::qWaitForWindowExposed(&own));
    QCOMPARE(findTopLevelWindow(toolkitWindowClass(), title), own.winId());
    QCOMPARE(companionWindow(title), own.winId());
    QCOMPARE(companionWindow(title + u'x'), WId{0});
    {
        const PlainWindow older(L"Qt653QWindowIcon", L"Larkspur Test Companion");
        QCOMPARE(companionWindow(title), older.id());
    }
    QCOMPARE(companionWindow(title), own.winId());

    const PlainWindow stranger(L"LarkspurTestStranger", L"Another Title");
    QCOMPARE(companionWindow(QStringLiteral("Another Title")), WId{0});
    QCOMPARE(findTopLevelWindow(QStringLiteral("LarkspurTestStranger"), QStringLiteral("Another Title")),
             stranger.id());
}

void TestDesktop::postsMessages()
{
    QWidget window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    MessageCatcher catcher;
    qApp->installNativeEventFilter(&catcher);
    QVERIFY(postToWindow(window.winId(), messageStayAwakeState, 0x1'0000'0001, -2));
    QVERIFY(!catcher.arrived); // it waits in the queue
    QTRY_VERIFY(catcher.arrived);
    QCOMPARE(catcher.wParam, quintptr{0x1'0000'0001});
    QCOMPARE(catcher.lParam, qintptr{-2});
    qApp->removeNativeEventFilter(&catcher);
    QVERIFY(!postToWindow(0x7ffffff0, messageStayAwakeState));
}

void TestDesktop::metricsAreThoseOfWindows()
{
    QCOMPARE(fullScreenClientArea().cx, static_cast<quint32>(GetSystemMetrics(SM_CXFULLSCREEN)));
    QCOMPARE(fullScreenClientArea().cy, static_cast<quint32>(GetSystemMetrics(SM_CYFULLSCREEN)));
    QVERIFY(fullScreenClientArea().cx > fullScreenClientArea().cy / 4);
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
    bool visible = false;
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x)
            visible = visible || icon.pixelColor(x, y).alpha() > 0;
    }
    QVERIFY(visible);
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
    const QString text = QStringLiteral("Are you sure you want to move C:\\d\\a.txt to the recycle bin?");
    const QString caption = QStringLiteral("Confirm to save changes");
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
    QCOMPARE(dialogs().ask(nullptr, QStringLiteral("Title"), QStringLiteral("Remove <b>a&b</b>?")),
             QMessageBox::Yes);
    QCOMPARE(shown, QStringLiteral("Remove <b>a&b</b>?"));
    QCOMPARE(format, Qt::PlainText);
}

void TestDesktop::fakeDialogsGiveTheNextAnswer()
{
    tests::FakeDialogs fake;
    bool behind = false;
    fake.whileOpen = [&] { behind = true; };
    fake.nextMessageBox << idYes << idNo;
    fake.nextFolder << QStringLiteral("C:\\x");
    QCOMPARE(dialogs().messageBox(QStringLiteral("t"), QStringLiteral("c"), yesNoWarning), idYes);
    QVERIFY(behind);
    QCOMPARE(dialogs().messageBox(QStringLiteral("t"), QStringLiteral("c"), yesNoWarning), idNo);
    QCOMPARE(dialogs().chooseFolder(nullptr, QStringLiteral("f")), QStringLiteral("C:\\x"));
    QCOMPARE(fake.questions.size(), 2);
    QCOMPARE(fake.questions.first().title, QStringLiteral("c"));
    QCOMPARE(fake.questions.first().flags, 0x34u);

    // A box that nobody expected fails the test; its answer changes nothing.
    QEXPECT_FAIL("", "no answer is queued", Continue);
    QCOMPARE(dialogs().messageBox(QStringLiteral("t"), QStringLiteral("c"), yesNoWarning), idNo);
}

QTEST_MAIN(TestDesktop)

#include "tst_desktop.moc"
