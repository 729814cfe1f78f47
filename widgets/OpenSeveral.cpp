// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/OpenSeveral.h"

#include "platform/Paths.h"
#include "platform/Shell.h"
#include "widgets/Controls.h"

#include <QCoreApplication>
#include <QIcon>
#include <QMenu>
#include <QSet>

namespace
{

QString tr(const char *text)
{
    return QCoreApplication::translate("OpenSeveral", text);
}

// `onlySome` contains %1 for the number opened and %2 for the total; `refused` contains %1 for the path.
OpenedSeveral openFirst(const QStringList &paths, bool (platform::Shell::*open)(const QString &),
                        const QString &refused, const QString &onlySome)
{
    QStringList failed;
    QStringList others;
    for (const QString &path : paths.first(qMin(paths.size(), maxOpenedAtOnce)))
        if (!platform::survivesWin32(platform::shownPath(path)))
            others.append(path);
        else if (!(platform::shell().*open)(path))
            failed.append(path);
    if (!others.isEmpty())
        return {tr("%1: Windows would take this name for that of another file.")
                    .arg(others.join(QStringLiteral(", "))),
                true};
    if (!failed.isEmpty())
        return {refused.arg(failed.join(QStringLiteral(", "))), true};
    if (paths.size() > maxOpenedAtOnce)
        return {onlySome.arg(QString::number(maxOpenedAtOnce), QString::number(paths.size())), false};
    return {};
}

// Whether opening a file with that extension may run a program or change the system.
bool isProgram(const QString &path)
{
    static const QSet<QString> extensions{
        QStringLiteral("appref-ms"), QStringLiteral("application"), QStringLiteral("bat"),
        QStringLiteral("chm"),       QStringLiteral("cmd"),         QStringLiteral("com"),
        QStringLiteral("cpl"),       QStringLiteral("exe"),         QStringLiteral("hta"),
        QStringLiteral("jar"),       QStringLiteral("js"),          QStringLiteral("jse"),
        QStringLiteral("lnk"),       QStringLiteral("msc"),         QStringLiteral("msi"),
        QStringLiteral("msp"),       QStringLiteral("pif"),         QStringLiteral("ps1"),
        QStringLiteral("reg"),       QStringLiteral("scr"),         QStringLiteral("url"),
        QStringLiteral("vbe"),       QStringLiteral("vbs"),         QStringLiteral("wsf"),
        QStringLiteral("wsh")};
    const qsizetype dot = path.lastIndexOf(u'.');
    return dot > path.lastIndexOf(u'\\') && extensions.contains(path.mid(dot + 1).toLower());
}

} // namespace

OpenedSeveral openFiles(const QStringList &paths)
{
    QStringList opened = paths;
    const bool programs = paths.size() > 1 && opened.removeIf(isProgram) > 0;
    OpenedSeveral result =
        openFirst(opened, &platform::Shell::openFile,
                  tr("%1 could not be opened. It may have been moved or deleted since the scan."),
                  tr("Only the first %1 of the %2 selected files were opened."));
    if (programs)
        result.notice = (result.notice + QLatin1Char(' ') + tr("Programs were not opened.")).trimmed();
    return result;
}

OpenedSeveral revealFiles(const QStringList &paths)
{
    QStringList firsts;
    QSet<QString> folders;
    for (const QString &path : paths) {
        const QString folder = path.left(path.lastIndexOf(u'\\'));
        if (!folders.contains(folder)) {
            folders.insert(folder);
            firsts.append(path);
        }
    }
    return openFirst(firsts, &platform::Shell::revealInExplorer, tr("%1 could not be shown in Explorer."),
                     tr("Only the first %1 of the %2 folders were opened."));
}

void addOpenFirsts(QMenu *menu, const QStringList &firsts, std::function<void(const OpenedSeveral &)> tell)
{
    const bool several = firsts.size() > 1;
    QAction *open = menu->addAction(controls::image("Activate24"),
                                    several ? tr("Open the First File of Each") : tr("Open the First File"),
                                    menu, [firsts, tell] { tell(openFiles(firsts)); });
    QAction *reveal = menu->addAction(controls::image("FolderSearch24"),
                                      several ? tr("Show the First File of Each in Explorer")
                                              : tr("Show the First File in Explorer"),
                                      menu, [firsts, tell] { tell(revealFiles(firsts)); });
    open->setEnabled(!firsts.isEmpty());
    reveal->setEnabled(!firsts.isEmpty());
}
