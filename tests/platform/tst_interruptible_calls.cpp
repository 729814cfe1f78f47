// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Handle.h"
#include "platform/InterruptibleCalls.h"

#include <QTest>

#include <atomic>
#include <thread>

using platform::FileHandle;
using platform::InterruptibleCalls;

class tst_InterruptibleCalls : public QObject
{
    Q_OBJECT

private slots:
    void whatWaitsIsEnded();
};

// Two threads wait for a pipe into which nobody writes; one of them in a call that may be ended.
void tst_InterruptibleCalls::whatWaitsIsEnded()
{
    InterruptibleCalls calls;
    struct Reader {
        FileHandle source, sink;
        std::atomic<DWORD> error = ERROR_IO_PENDING;
    } inCall, outside;
    const auto read = [](Reader &reader) {
        char byte = 0;
        DWORD got = 0;
        reader.error =
            ReadFile(reader.source.get(), &byte, 1, &got, nullptr) ? ERROR_SUCCESS : GetLastError();
    };
    for (Reader *reader : {&inCall, &outside})
        QVERIFY(CreatePipe(reader->source.put(), reader->sink.put(), nullptr, 0));
    std::thread first([&] {
        const InterruptibleCalls::Call call(calls);
        read(inCall);
    });
    std::thread second([&] { read(outside); });
    for (int i = 0; i < 50 && inCall.error == ERROR_IO_PENDING; ++i) {
        QTest::qSleep(20);
        calls.interrupt();
    }
    const DWORD ended = inCall.error;
    const DWORD left = outside.error;
    for (Reader *reader : {&inCall, &outside})
        reader->sink.reset(); // whoever still waits, ends now
    first.join();
    second.join();
    calls.interrupt(); // with nobody there
    QCOMPARE(ended, DWORD{ERROR_OPERATION_ABORTED});
    QCOMPARE(left, DWORD{ERROR_IO_PENDING});
}

QTEST_GUILESS_MAIN(tst_InterruptibleCalls)
#include "tst_interruptible_calls.moc"
