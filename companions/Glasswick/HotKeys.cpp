// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/HotKeys.h"

#include "automation/engine/AgentLog.h"
#include "automation/engine/Texts.h"
#include "companions/Glasswick/Launch.h"
#include "companions/Glasswick/Log.h"
#include "platform/TopLevelWindows.h"
#include "settings/HotKeySettings.h"

using automation::Modifier;
using automation::ShortcutAction;
using automation::ShortcutCommand;
using automation::tr;

namespace agent
{

namespace
{

platform::HotKey hotKeyOf(const ShortcutCommand &command)
{
    return platform::hotKeyOf(command.key[0], command.uses(Modifier::Ctrl), command.uses(Modifier::Shift),
                              command.uses(Modifier::Windows));
}

} // namespace

HotKeys::HotKeys(const Surroundings &surroundings)
    : m_surroundings(surroundings),
      m_paste(surroundings.window)
{
}

HotKeys::~HotKeys()
{
    unregisterAll();
}

void HotKeys::reload()
{
    unregisterAll();
    if (settings::hotKeysEnabled.read())
        registerAll();
}

void HotKeys::registerAll()
{
    const QStringList commands = settings::hotKeyCommands.read();
    for (const QString &text : commands) {
        const auto command = automation::parseCommand(text);
        if (!command) {
            log(automation::keyText(text), tr("Not registered: the stored shortcut cannot be read"));
            continue;
        }
        const platform::HotKey keys = hotKeyOf(*command);
        const quint32 error =
            keys.key == 0 ? 0
                          : platform::registerHotKey(window(), static_cast<int>(m_registered.size()), keys);
        if (keys.key == 0)
            log(automation::keyText(*command), tr("Not registered: this keyboard has no such key"));
        else if (error == 0)
            m_registered.push_back({*command, keys});
        else if (error == ERROR_HOTKEY_ALREADY_REGISTERED)
            log(automation::keyText(*command),
                tr("Not registered: Windows or another program uses this combination"));
        else
            log(automation::keyText(*command), tr("Not registered: error %1").arg(error));
    }
}

void HotKeys::unregisterAll()
{
    for (std::size_t id = 0; id < m_registered.size(); ++id)
        platform::unregisterHotKey(window(), static_cast<int>(id), m_registered[id].keys);
    m_registered.clear();
}

bool HotKeys::handle(UINT message, WPARAM wParam, LPARAM)
{
    if (message == WM_HOTKEY) {
        if (wParam < m_registered.size()) {
            // A copy: executing the command may process messages and thus reload the list.
            const ShortcutCommand command = m_registered[wParam].command;
            perform(command);
        }
        return true;
    }
    if (message == platform::messageTestHotKey) {
        const QStringList commands = settings::hotKeyCommands.read();
        if (wParam < static_cast<WPARAM>(commands.size())) {
            if (const auto command = automation::parseCommand(commands.at(static_cast<qsizetype>(wParam))))
                perform(*command);
        }
        return true;
    }
    return message == WM_TIMER && m_paste.handleTimer(wParam);
}

void HotKeys::perform(const ShortcutCommand &command)
{
    QString outcome;
    switch (command.action) {
    case ShortcutAction::OpenBuiltInApp:
        outcome = startBuiltIn(command.target, command.workingFolder);
        break;
    case ShortcutAction::OpenFolder:
        outcome = openFolder(command.target);
        break;
    case ShortcutAction::OpenWebsite:
        outcome = openAddress(command.target);
        break;
    case ShortcutAction::OpenOtherApp:
        outcome = startProgram(command.target, command.workingFolder);
        break;
    case ShortcutAction::PastePlainText:
        outcome = m_paste.paste();
        break;
    case ShortcutAction::Restart:
    case ShortcutAction::ShutDown:
        outcome = m_countdown.begin(
            command.action == ShortcutAction::Restart ? Countdown::End::Restart : Countdown::End::ShutDown,
            command.delay,
            [this, subject = automation::keyText(command)](const QString &text) { log(subject, text); });
        break;
    }
    log(automation::keyText(command), outcome);
}

void HotKeys::log(const QString &subject, const QString &text) const
{
    m_surroundings.log.write(automation::features::shortcutKeys, subject, text);
}

} // namespace agent
