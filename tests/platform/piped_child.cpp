// SPDX-License-Identifier: GPL-3.0-or-later

// The other end of the conversations of tst_piped_process: does what single letters ask for. Started with
// the argument "parent" it starts itself once more, writes down the number of that process, and sleeps.
#include "platform/PipedProcess.h"

#include <QDir>

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <vector>

namespace
{

constexpr std::size_t megabyte = std::size_t(1) << 20;

void echo(platform::ByteChannel &parent, bool large)
{
    quint32 size = 0;
    if (!parent.read(&size, sizeof size))
        return;
    std::vector<char> bytes(size);
    if (!parent.read(bytes.data(), size))
        return;
    if (large)
        parent.writeLarge(bytes.data(), size);
    else
        parent.write(bytes.data(), size);
}

void flood(platform::ByteChannel &parent, std::size_t piece, DWORD pause)
{
    const std::vector<char> bytes(piece);
    while (parent.write(bytes.data(), piece))
        Sleep(pause);
}

// Megabytes until there are no more, 4096 at most.
quint32 exhaust()
{
    quint32 got = 0;
    while (got < 4096 && VirtualAlloc(nullptr, megabyte, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE))
        ++got;
    return got;
}

void serve(platform::ByteChannel &parent)
{
    char wish = 0;
    while (parent.read(&wish, 1)) {
        if (wish == 'e' || wish == 'l')
            echo(parent, wish == 'l');
        else if (wish == 'f')
            flood(parent, megabyte, 0);
        else if (wish == 't')
            flood(parent, 1, 20);
        else if (wish == 's')
            Sleep(INFINITE);
        const quint32 number = wish == 'm' ? exhaust() : GetCurrentProcessId();
        if ((wish == 'm' || wish == 'i') && !parent.write(&number, sizeof number))
            return;
    }
}

int beParent(const char *self)
{
    const platform::ProcessGroup group(64 * megabyte, 64 * megabyte);
    const auto child =
        platform::PipedProcess::start(QDir::toNativeSeparators(QString::fromLocal8Bit(self)), group);
    quint32 number = 0;
    if (!child || !child->write("i", 1) || !child->read(&number, sizeof number) || !child->write("s", 1))
        return 1;
    std::printf("%u\n", number);
    std::fflush(stdout);
    Sleep(INFINITE);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], "parent") == 0)
        return beParent(argv[0]);
    platform::ParentChannel parent;
    serve(parent);
    return 0;
}
