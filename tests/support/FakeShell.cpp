// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/FakeShell.h"

namespace tests
{

bool FakeShell::openFile(const QString &path)
{
    opened.append(path);
    return succeeds;
}

bool FakeShell::revealInExplorer(const QString &path)
{
    revealed.append(path);
    return succeeds;
}

bool FakeShell::openRecycleBin()
{
    ++recycleBinOpened;
    return succeeds;
}

bool FakeShell::openWebPage(const QUrl &address)
{
    webPages.append(address);
    return succeeds;
}

bool FakeShell::openSettingsPage(const QString &page)
{
    settingsPages.append(page);
    return succeeds;
}

void FakeShell::runElevated(WId owner, const QString &file, const QString &folder)
{
    elevated.append({owner, file, folder});
}

bool FakeShell::startAgent(const QString &file, bool)
{
    agents.append(file);
    return succeeds;
}

void FakeShell::showTaskbarProgress(WId, int done, int total)
{
    taskbarProgress.append(QStringLiteral("%1/%2").arg(done).arg(total));
}

void FakeShell::clearTaskbarProgress(WId)
{
    taskbarProgress.append(QStringLiteral("-"));
}

} // namespace tests
