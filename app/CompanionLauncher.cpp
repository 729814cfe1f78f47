// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CompanionLauncher.h"

#include "app/CompanionTrust.h"
#include "app/InstallationFolder.h"
#include "app/ModuleTable.h"
#include "app/OpenAdminModuleDialog.h"
#include "platform/Dialogs.h"
#include "platform/Paths.h"
#include "platform/Shell.h"
#include "platform/TopLevelWindows.h"
#include "settings/Settings.h"

#include <QWidget>

CompanionLauncher::CompanionLauncher(QWidget *window)
    : QObject(window),
      m_window(window),
      m_changeable(changeableWithoutElevation)
{
}

CompanionLauncher::~CompanionLauncher()
{
    for (const QPointer<OpenAdminModuleDialog> &dialog : std::as_const(m_dialogs)) {
        if (dialog) {
            dialog->disconnect(this);
            delete dialog;
        }
    }
}

void CompanionLauncher::launch(const Module &module)
{
    const int id = module.id;
    if (m_starting) {
        emit finished(id);
        return;
    }
    const QString name = QString::fromLatin1(module.displayName);
    const QString folder = installation::folder();
    const QString file = installation::companion(QString::fromLatin1(module.executable));

    // The question and the shell process window messages while they wait for the user: this object may be
    // called again or be destroyed.
    const QPointer<CompanionLauncher> alive(this);
    m_starting = true;
    const bool start = mayStart(file, folder, name);
    if (alive && start)
        platform::shell().runElevated(m_window->winId(), file, folder);
    if (!alive)
        return;
    m_starting = false;
    if (start)
        wait(id, name, platform::fileExists(file));
    else
        emit finished(id);
}

bool CompanionLauncher::mayStart(const QString &file, const QString &folder, const QString &name)
{
    if (folder == m_trusted || !platform::fileExists(file) || !m_changeable(file, folder))
        return true;
    const QString text =
        tr("%1 will be started with administrator rights from a folder that any program can change:\n\n%2\n\n"
           "Only go on if you trust everything that runs on this computer. Start it?")
            .arg(name, platform::shownPath(folder));
    const QPointer<CompanionLauncher> alive(this);
    const bool agreed = platform::dialogs().ask(m_window, tr("Module Launcher"), text) == QMessageBox::Yes;
    if (agreed && alive)
        m_trusted = folder;
    return agreed;
}

void CompanionLauncher::wait(int id, const QString &name, bool installed)
{
    QPointer<OpenAdminModuleDialog> &dialog = m_dialogs[id];
    if (!dialog) {
        dialog = new OpenAdminModuleDialog(name, installed, m_window);
        connect(dialog, &QObject::destroyed, this, [this, id] { emit finished(id); });
    }
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

void startAgentIfIdle()
{
    if (!settings::backgroundFeaturesEnabled() &&
        !platform::findTopLevelWindow(QStringLiteral("GLASSWICK"), QStringLiteral("Transparent Taskbar")))
        platform::shell().startAgent(installation::companion(QStringLiteral("\\Glasswick.exe")));
}
