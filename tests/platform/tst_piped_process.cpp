// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Handle.h"
#include "platform/PipedProcess.h"
#include "tests/support/TestFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include <cstring>
#include <memory>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;
using platform::ObjectHandle;
using platform::PipedProcess;

namespace
{

constexpr quint64 megabyte = quint64(1) << 20;
constexpr quint64 memoryOfOne = 300 * megabyte;
constexpr quint64 memoryOfAll = 500 * megabyte;

QString childProgram()
{
    return QDir::toNativeSeparators(QCoreApplication::applicationDirPath() + u"/piped_child.exe"_s);
}

std::optional<quint32> numberFor(PipedProcess &process, char wish)
{
    quint32 number = 0;
    if (!process.write(&wish, 1) || !process.read(&number, sizeof number))
        return std::nullopt;
    return number;
}

ObjectHandle processOf(quint32 number)
{
    return ObjectHandle(OpenProcess(SYNCHRONIZE, FALSE, number));
}

bool hasEnded(const ObjectHandle &process, DWORD wait)
{
    return WaitForSingleObject(process.get(), wait) == WAIT_OBJECT_0;
}

} // namespace

class PipedProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void carriesBytesBothWays();
    void whatIsNoProgramIsNotStarted();
    void canBeGivenUp_data();
    void canBeGivenUp();
    void endsWithItsObject();
    void endsWithAKilledParent();
    void haveNoMoreMemoryThanAllowed();

private:
    const platform::ProcessGroup m_group{memoryOfOne, memoryOfAll};
};

void PipedProcessTest::carriesBytesBothWays()
{
    const auto process = PipedProcess::start(childProgram(), m_group);
    QVERIFY(process);
    for (const quint32 size : {0U, 1U, 1000U, 5'000'000U}) { // the last one does not fit the pipe
        std::vector<char> sent(size);
        for (std::size_t i = 0; i < sent.size(); ++i)
            sent[i] = static_cast<char>(i * 31 / 7);
        std::vector<char> received(size);
        QVERIFY(process->write("e", 1));
        QVERIFY(process->write(&size, sizeof size));
        QVERIFY(process->write(sent.data(), size));
        QVERIFY(process->read(received.data(), size));
        QVERIFY(received == sent);
        QVERIFY(process->write("l", 1));
        QVERIFY(process->write(&size, sizeof size));
        QVERIFY(process->write(sent.data(), size));
        const auto large = process->readLarge(size);
        QVERIFY(large && std::memcmp(large.get(), sent.data(), size) == 0);
    }
}

void PipedProcessTest::whatIsNoProgramIsNotStarted()
{
    const tests::TestFolder folder;
    const QString text = folder.makeFile(u"program.exe"_s, "text");
    for (const QString &program : {u"C:\\nowhere\\program.exe"_s, u"C:\\windows"_s, text})
        QVERIFY2(!PipedProcess::start(program, m_group), qPrintable(program));
}

void PipedProcessTest::canBeGivenUp_data()
{
    QTest::addColumn<char>("wish");
    QTest::newRow("silent") << 's';
    QTest::newRow("a byte now and then") << 't';
    QTest::newRow("more than anybody wants") << 'f';
    QTest::newRow("does not listen") << 'd';
}

void PipedProcessTest::canBeGivenUp()
{
    QFETCH(const char, wish);
    const auto process = PipedProcess::start(childProgram(), m_group);
    QVERIFY(process);
    const ObjectHandle child = processOf(numberFor(*process, 'i').value_or(0));
    QVERIFY(child);
    QVERIFY(!process->hasEnded());
    QVERIFY(process->write(wish == 'd' ? "s" : &wish, 1));
    QElapsedTimer clock;
    clock.start();
    process->setStopCheck([&clock] { return clock.elapsed() > 300; });
    std::vector<char> bytes(4 * megabyte);
    bool goesOn = true;
    while (goesOn && clock.elapsed() < 20'000)
        goesOn = wish == 'd' ? process->write(bytes.data(), bytes.size())
                             : process->read(bytes.data(), wish == 't' ? 500 : bytes.size());
    QVERIFY(!goesOn);
    QVERIFY(clock.elapsed() > 250);
    QVERIFY(hasEnded(child, 20'000));
    QVERIFY(process->hasEnded());
}

void PipedProcessTest::endsWithItsObject()
{
    for (const bool byGroup : {false, true}) {
        auto group = std::make_unique<platform::ProcessGroup>(memoryOfOne, memoryOfAll);
        auto process = PipedProcess::start(childProgram(), *group);
        QVERIFY(process);
        const ObjectHandle child = processOf(numberFor(*process, 'i').value_or(0));
        QVERIFY(process->write("s", 1));
        QVERIFY(!hasEnded(child, 200));
        if (byGroup)
            group.reset();
        else
            process.reset();
        QVERIFY(hasEnded(child, 20'000));
    }
}

void PipedProcessTest::endsWithAKilledParent()
{
    QProcess parent;
    parent.start(childProgram(), {u"parent"_s});
    QVERIFY(parent.waitForReadyRead());
    const ObjectHandle grandchild = processOf(parent.readLine().trimmed().toUInt());
    QVERIFY(grandchild);
    // It sleeps, so that the end of its pipe alone does not end it.
    QVERIFY(!hasEnded(grandchild, 200));
    parent.kill();
    QVERIFY(parent.waitForFinished());
    QVERIFY(hasEnded(grandchild, 20'000));
}

void PipedProcessTest::haveNoMoreMemoryThanAllowed()
{
    if (tests::isWine())
        QSKIP("Wine accepts the limits and does not keep them");
    const auto first = PipedProcess::start(childProgram(), m_group);
    const auto second = PipedProcess::start(childProgram(), m_group);
    QVERIFY(first && second);
    const quint32 one = numberFor(*first, 'm').value_or(0);
    QVERIFY2(one > 200 && one <= memoryOfOne / megabyte, qPrintable(QString::number(one)));
    const quint32 both = one + numberFor(*second, 'm').value_or(0);
    QVERIFY2(both > 350 && both <= memoryOfAll / megabyte, qPrintable(QString::number(both)));
    QVERIFY(numberFor(*first, 'i') && numberFor(*second, 'i')); // they live on
}

QTEST_GUILESS_MAIN(PipedProcessTest)
#include "tst_piped_process.moc"
