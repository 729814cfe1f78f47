// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Pages.h"

#include <QRegularExpression>

#include <algorithm>

namespace systeminfo
{

namespace
{

using Hive = core::RegistryView::Hive;

bool isAbsolutePath(const QString &text)
{
    const bool drive = text.size() > 2 && text[0].isLetter() && text[1] == QLatin1Char(':') &&
                       (text[2] == QLatin1Char('\\') || text[2] == QLatin1Char('/'));
    return drive || text.startsWith(QStringLiteral("\\\\"));
}

QString withoutQuotes(const QString &text)
{
    const QString trimmed = text.trimmed();
    const bool quoted =
        trimmed.size() > 1 && trimmed.startsWith(QLatin1Char('"')) && trimmed.endsWith(QLatin1Char('"'));
    return quoted ? trimmed.mid(1, trimmed.size() - 2) : trimmed;
}

void checkPath(Machine &machine, Row &row, const QString &text)
{
    const QString path = machine.expanded(withoutQuotes(text));
    if (!isAbsolutePath(path))
        return;
    const PathState state = machine.pathState(path);
    if (state == PathState::Missing)
        row.problem = Words::tr("does not exist");
    else if (state == PathState::Exists)
        row.openPath = path;
}

void addEntries(Machine &machine, Row &row, const QString &text)
{
    QStringList seen;
    for (const QString &entry : text.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const QString plain = withoutQuotes(entry);
        const QString expanded = machine.expanded(plain);
        Row &child = row.add(item("Entry", plain, expanded == plain ? QString() : expanded));
        checkPath(machine, child, entry);
        QString place = expanded.toLower();
        while (place.endsWith(QLatin1Char('\\')))
            place.chop(1);
        if (child.problem.isEmpty() && seen.contains(place))
            child.problem = Words::tr("listed before");
        seen.append(place);
    }
}

// Recognises variables that by convention hold credentials of services.
bool holdsSecret(const QString &name)
{
    static const QRegularExpression words(QStringLiteral("TOKEN|SECRET|PASSW|CREDENTIAL|API_?KEY|_KEY$"),
                                          QRegularExpression::CaseInsensitiveOption);
    return words.match(name).hasMatch();
}

Row variablesRow(Machine &machine, Row top, Hive hive, const QString &key)
{
    core::RegistryView &registry = machine.registry();
    QStringList names = registry.valueNames(hive, key);
    std::ranges::sort(
        names, [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    for (const QString &name : names) {
        if (machine.stopRequested())
            break;
        const QString text = registry.value(hive, key, name).toText();
        Row &row = top.add(item("Variable", name, text));
        if (holdsSecret(name))
            row.privacy = Privacy::Secret;
        else if (text.contains(QLatin1Char(';')))
            addEntries(machine, row, text);
        else
            checkPath(machine, row, text);
    }
    return withNone(std::move(top));
}

} // namespace

Page environmentPage(Machine &machine, const Publish &publish)
{
    Page page = emptyPage(PageId::EnvironmentVariables);
    const QString icon = QStringLiteral("SysInfoWindows16.png");
    Row user = section(SYSTEMINFO_LABEL("User Variables"), icon);
    Row system = section(SYSTEMINFO_LABEL("System Variables"), icon);
    page.sections = {user, system};
    publish(page);
    page.sections[0] =
        variablesRow(machine, std::move(user), Hive::CurrentUser, QStringLiteral("Environment"));
    publish(page);
    page.sections[1] =
        variablesRow(machine, std::move(system), Hive::LocalMachine,
                     QStringLiteral("SYSTEM\\CurrentControlSet\\Control\\Session Manager\\Environment"));
    return page;
}

} // namespace systeminfo
