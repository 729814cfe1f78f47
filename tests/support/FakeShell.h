// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Shell.h"

#include <QList>
#include <QStringList>

namespace tests
{

// Takes the shell's place while it lives, starts nothing and notes what was asked of it.
class FakeShell : public platform::Shell
{
public:
    struct ElevatedLaunch {
        WId owner;
        QString file;
        QString folder;
    };

    FakeShell() { platform::setShell(this); }
    ~FakeShell() override { platform::setShell(nullptr); }

    bool openFile(const QString &path) override;
    bool revealInExplorer(const QString &path) override;
    bool openRecycleBin() override;
    bool openWebPage(const QUrl &address) override;
    bool openSettingsPage(const QString &page) override;
    void runElevated(WId owner, const QString &file, const QString &folder) override;
    bool startAgent(const QString &file, bool hidden) override;
    void showTaskbarProgress(WId window, int done, int total) override;
    void clearTaskbarProgress(WId window) override;

    bool succeeds = true; // the answer to everything that has one

    QStringList opened;
    QStringList revealed;
    int recycleBinOpened = 0;
    QList<QUrl> webPages;
    QStringList settingsPages;
    QList<ElevatedLaunch> elevated;
    QStringList agents;
    QStringList taskbarProgress; // "3/10" each, "-" for a clearing
};

} // namespace tests
