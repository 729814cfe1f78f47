// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Startup.h"

#include "SystemInfo/engine/Format.h"
#include "SystemInfo/engine/Pages.h"

#include <QRegularExpression>
#include <QtEndian>

namespace systeminfo
{

namespace
{

using Hive = core::RegistryView::Hive;
using Bits = core::RegistryView::Bits;

const QString run = QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\Run");
const QString approved =
    QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\StartupApproved\\");
const QString windowsIcon = QStringLiteral("SysInfoWindows16.png");

struct RunKey {
    const char *title;
    Hive hive;
    Bits bits;
    const char *approvedAs; // subkey in which the task manager keeps the state; null if it keeps none
    bool once;
};
constexpr RunKey runKeys[] = {
    {SYSTEMINFO_LABEL("Current User"), Hive::CurrentUser, Bits::Is64, "Run", false},
    {SYSTEMINFO_LABEL("Current User, Once"), Hive::CurrentUser, Bits::Is64, nullptr, true},
    {SYSTEMINFO_LABEL("All Users"), Hive::LocalMachine, Bits::Is64, "Run", false},
    {SYSTEMINFO_LABEL("All Users, Once"), Hive::LocalMachine, Bits::Is64, nullptr, true},
    {SYSTEMINFO_LABEL("All Users, 32-bit"), Hive::LocalMachine, Bits::Is32, "Run32", false},
    {SYSTEMINFO_LABEL("All Users, 32-bit, Once"), Hive::LocalMachine, Bits::Is32, nullptr, true},
};

StartupState storedState(core::RegistryView &registry, Hive hive, const char *list, const QString &name)
{
    if (!list)
        return {};
    return startupState(registry.value(hive, approved + QLatin1String(list), name).bytes);
}

QString resolvedProgram(Machine &machine, const QString &command)
{
    const QString program = programOf(machine.expanded(command), [&machine](const QString &path) {
        return machine.pathState(path) != PathState::Missing;
    });
    if (program.contains(QLatin1Char('\\')) || program.contains(QLatin1Char('/')))
        return program;
    const QString found = machine.findProgram(program);
    return found.isEmpty() ? program : found;
}

void addProgram(Machine &machine, Row &row, const QString &program, const StartupState &state)
{
    row.add(fact(SYSTEMINFO_LABEL("State"), state.enabled ? Words::tr("Enabled") : Words::tr("Disabled")));
    if (!state.enabled && state.disabledSince.isValid())
        row.add(fact(SYSTEMINFO_LABEL("Disabled Since"), timeText(state.disabledSince)));
    Row &target = row.add(fact(SYSTEMINFO_LABEL("Program"), program));
    const PathState exists = program.isEmpty() ? PathState::Missing : machine.pathState(program);
    if (exists == PathState::Missing)
        target.problem = row.problem = Words::tr("does not exist");
    row.add(fact(SYSTEMINFO_LABEL("Publisher"),
                 exists == PathState::Exists ? machine.companyName(program) : QString()));
}

Row runKeyRow(Machine &machine, const RunKey &key)
{
    Row top = section(key.title, windowsIcon);
    core::RegistryView &registry = machine.registry();
    const QString path = key.once ? run + QStringLiteral("Once") : run;
    for (const QString &name : registry.valueNames(key.hive, path, key.bits)) {
        const QString command = registry.value(key.hive, path, name, key.bits).toText();
        if (command.isEmpty() || machine.stopRequested())
            continue;
        Row &row = top.add(item("Item", name, command));
        addProgram(machine, row, resolvedProgram(machine, command),
                   storedState(registry, key.hive, key.approvedAs, name));
    }
    return top;
}

void addFiles(Machine &machine, Row &user, Row &common)
{
    for (const StartupFile &file : machine.startupFiles()) {
        if (machine.stopRequested())
            return;
        const Hive hive = file.common ? Hive::LocalMachine : Hive::CurrentUser;
        Row &row =
            (file.common ? common : user)
                .add(item("Item", file.name, (file.target + QLatin1Char(' ') + file.arguments).trimmed()));
        addProgram(machine, row, machine.expanded(file.target),
                   storedState(machine.registry(), hive, "StartupFolder", file.name));
    }
}

bool hasExtension(const QString &path)
{
    return path.lastIndexOf(QLatin1Char('.')) > path.lastIndexOf(QLatin1Char('\\'));
}

} // namespace

QString programOf(const QString &command, const std::function<bool(const QString &path)> &exists)
{
    const QString text = command.trimmed();
    if (text.startsWith(QLatin1Char('"')))
        return text.mid(1, text.indexOf(QLatin1Char('"'), 1) - 1);
    for (qsizetype end = text.indexOf(QLatin1Char(' '));; end = text.indexOf(QLatin1Char(' '), end + 1)) {
        const QString beginning = end < 0 ? text : text.left(end);
        if (!beginning.contains(QLatin1Char('\\')))
            break; // a bare name: use the first word
        const QString program = hasExtension(beginning) ? beginning : beginning + QStringLiteral(".exe");
        if (exists(program))
            return program;
        if (end < 0)
            break;
    }
    // The file is gone: take the text up to where its name seems to end.
    static const QRegularExpression named(
        QStringLiteral("^[^\"]*?\\.(?:exe|com|bat|cmd|vbs|js|ps1|lnk)(?= |$)"),
        QRegularExpression::CaseInsensitiveOption);
    const QString guess = named.match(text).captured();
    return guess.isEmpty() ? text.section(QLatin1Char(' '), 0, 0) : guess;
}

StartupState startupState(const QByteArray &stored)
{
    StartupState state;
    if (stored.isEmpty())
        return state;
    state.enabled = stored.at(0) % 2 == 0;
    if (!state.enabled && stored.size() >= 12)
        state.disabledSince = fromFileTime(qFromLittleEndian<quint64>(stored.constData() + 4));
    return state;
}

Page startupPage(Machine &machine, const Publish &publish)
{
    Page page = emptyPage(PageId::StartupItems);
    for (const RunKey &key : runKeys)
        page.sections.push_back(section(key.title, windowsIcon));
    Row user = section(SYSTEMINFO_LABEL("Startup Folder"), windowsIcon);
    Row common = section(SYSTEMINFO_LABEL("Startup Folder of All Users"), windowsIcon);
    for (std::size_t i = 0; i < std::size(runKeys); ++i) {
        publish(page);
        page.sections[i] = withNone(runKeyRow(machine, runKeys[i]));
    }
    publish(page);
    addFiles(machine, user, common);
    page.sections.push_back(withNone(std::move(user)));
    page.sections.push_back(withNone(std::move(common)));
    return page;
}

} // namespace systeminfo
