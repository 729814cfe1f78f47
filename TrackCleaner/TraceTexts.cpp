// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/TraceTexts.h"

#include "core/CountText.h"
#include "core/SizeText.h"

#include <QCoreApplication>
#include <QMap>

#include <array>

namespace tracks
{

namespace
{

QString tr(const char *text)
{
    return QCoreApplication::translate("tracks", text);
}

QString valueSentence(Item item, const RegistryValue &value)
{
    if (isOrderList(value.name))
        return tr("The order of the other entries; it goes with them.");
    switch (item) {
    case Item::RecentFiles:
        return tr("The name of a file or folder that you opened; programs no longer offer it.");
    case Item::TypedPaths:
        return tr("A path that you typed; the address bar no longer offers it.");
    case Item::SearchHistory:
        return tr("Words that you searched for; the search box no longer offers them.");
    default:
        return tr("A command that you ran; the Run box no longer offers it.");
    }
}

QString recentSentence(const QString &name, const QString &folder)
{
    // File Explorer's own jump list.
    if (name.startsWith(QLatin1String("f01b4d95cf55d32a."), Qt::CaseInsensitive))
        return tr(
            "Quick access: the folders that you use often, and those that you pinned. The pins go too.");
    if (folder.endsWith(QLatin1String("\\AutomaticDestinations")))
        return tr(
            "The jump list of a program: what it opened lately, and what you pinned there. The pins go too.");
    if (folder.endsWith(QLatin1String("\\CustomDestinations")))
        return tr(
            "The jump list that a program made itself; it comes back when the program creates it again.");
    if (name.endsWith(QLatin1String(".lnk"), Qt::CaseInsensitive))
        return tr("A shortcut to what you opened; the list of recent files no longer shows it.");
    return tr("A file in the folder of the recent files, which works without it.");
}

QString fileSentence(Item item, const QString &name, const QString &folder)
{
    switch (item) {
    case Item::RecentFiles:
        return recentSentence(name, folder);
    case Item::LogFiles:
        return tr("What Windows or a program noted of its work; it can no longer be looked up.");
    case Item::ErrorReporting:
        return tr("A part of the report of a crash; support can no longer ask for it.");
    case Item::NetworkData:
        return tr("A part of the record of what each program sent and received; it starts over.");
    default:
        return tr("What a program put aside for a short time; one that still runs may miss it.");
    }
}

QString entriesOfRegistry(int values)
{
    return core::countText(values, tr("1 entry of the registry"), tr("%1 entries of the registry"));
}

} // namespace

QString label(const CatalogueRow &row)
{
    return tr(row.label);
}

QString itemText(Item item)
{
    switch (item) {
    case Item::RecentFiles:
        return tr(
            "The files and folders that you opened lately, and the jump lists of programs. Quick access "
            "forgets its pinned folders with them, and programs what you pinned in their lists.");
    case Item::TypedPaths:
        return tr(
            "Paths that you typed into the address bar of File Explorer, which no longer offers them. It "
            "may write back those of this session when you sign out.");
    case Item::SearchHistory:
        return tr("Words that you searched for in File Explorer, which no longer offers them.");
    case Item::RunDialog:
        return tr(
            "Commands that you ran from the Run box, which no longer offers them. It may write back those "
            "of this session when you sign out.");
    case Item::LogFiles:
        return tr(
            "What Windows and its programs noted of their work. What went wrong before can no longer be "
            "looked up.");
    case Item::ErrorReporting:
        return tr("Reports of programs that crashed or hung. Support can no longer ask for them.");
    case Item::NetworkData:
        return tr(
            "How much each program sent and received. The settings of Windows show it from zero again.");
    case Item::TempFiles:
        break;
    }
    return tr(
        "What programs put aside for a short time. A program or an installation that still runs may miss "
        "it.");
}

QString traceText(const ScanResult &found, Item item, std::size_t row)
{
    const ItemTraces &traces = found[item];
    if (!traces.isFile(row))
        return valueSentence(item, traces.valueAt(row).value);
    const FileTrace trace = traces.files.at(row);
    return fileSentence(item, trace.name.toString(), traces.files.folder(trace.folder));
}

QString stateText(const ScanResult &found, const LeftOut &leftOut, Item item, std::size_t row)
{
    switch (found[item].keep(row)) {
    case Keep::Database:
        return tr("kept: part of a database");
    case Keep::UsedToday:
        return tr("kept: in use today");
    case Keep::NeedsAdministrator:
        return tr("kept: needs an administrator");
    case Keep::No:
        break;
    }
    return isLeftOut(leftOut, item, row) ? tr("left out") : tr("will be cleared");
}

QString outcomeText(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Changed:
        return tr("it has changed since it was found");
    case Outcome::ThroughLink:
        return tr("it lies behind a link, in another place");
    case Outcome::InUse:
        return tr("it is in use by another program");
    case Outcome::ReadOnly:
        return tr("it is read-only");
    case Outcome::Denied:
        return tr("it needs an administrator");
    case Outcome::HasSubkeys:
        return tr("its registry key holds other keys");
    case Outcome::Removed:
    case Outcome::Vanished:
    case Outcome::Failed:
        break;
    }
    return tr("Windows did not remove it");
}

QString countText(int count)
{
    return tr("%1 item(s) found").arg(QString::number(count));
}

QString countText(int count, quint64 bytes)
{
    return tr("%1 item(s) found - %2").arg(QString::number(count), core::sizeText(bytes));
}

QString noteText(const ScanResult &found, Item item)
{
    const ItemTraces &traces = found[item];
    QStringList notes;
    switch (traces.obstacle) {
    case Obstacle::None:
        break;
    case Obstacle::NeedsAdministrator:
        notes += tr("%1 needs an administrator and was skipped.");
        break;
    case Obstacle::ThroughLink:
        notes += tr("%1 lies behind a link and was skipped.");
        break;
    case Obstacle::TempDriveRoot:
        notes += tr("The temporary folder is the whole drive %1 and was skipped.");
        break;
    case Obstacle::TempHoldsSystem:
        notes += tr("The temporary folder %1 holds your files or Windows itself and was skipped.");
        break;
    case Obstacle::TempNotTemporary:
        notes += tr("%1 does not look like a folder for temporary files and was skipped.");
        break;
    case Obstacle::TempUnknown:
        notes += tr("Windows did not say where the temporary files are.");
        break;
    }
    if (!notes.isEmpty() && notes[0].contains(QLatin1String("%1")))
        notes[0] = notes[0].arg(traces.obstacleFolder);

    std::array<int, 4> kept{};
    for (std::size_t row = 0; row < traces.files.size(); ++row)
        ++kept[static_cast<std::size_t>(traces.keep(row))];
    const auto addKept = [&](Keep keep, const QString &one, const QString &many) {
        if (const int count = kept[static_cast<std::size_t>(keep)])
            notes += core::countText(count, one, many);
    };
    addKept(Keep::Database, tr("1 is kept: part of a database."), tr("%1 are kept: part of a database."));
    addKept(Keep::UsedToday, tr("1 is kept: in use today."), tr("%1 are kept: in use today."));
    addKept(Keep::NeedsAdministrator, tr("1 is kept: it needs an administrator."),
            tr("%1 are kept: they need an administrator."));
    if (traces.unreadableFolders > 0)
        notes += core::countText(traces.unreadableFolders,
                                 tr("1 folder could not be looked into: it needs an administrator."),
                                 tr("%1 folders could not be looked into: they need an administrator."));
    return notes.join(QLatin1Char(' '));
}

QString totalsText(const ClearTotals &totals)
{
    const QString files = tr("%1 (%2)").arg(core::countText(totals.files, tr("1 file"), tr("%1 files")),
                                            core::sizeText(totals.bytes));
    if (totals.values == 0)
        return files;
    const QString values = entriesOfRegistry(totals.values);
    return totals.files == 0 ? values : tr("%1 and %2").arg(files, values);
}

QString questionText(const ClearPlan &plan)
{
    QString text = tr("Clear %1?").arg(totalsText(totalsOf(plan)));
    text += QLatin1Char('\n');
    for (const CatalogueRow &row : catalogue()) {
        ClearPlan one{plan.found, plan.leftOut, {}};
        one.items[indexOf(row.item)] = plan.items[indexOf(row.item)];
        const ClearTotals totals = totalsOf(one);
        if (totals.all() > 0)
            text += QStringLiteral("\n%1: %2").arg(label(row), totalsText(totals));
    }
    text += QStringLiteral("\n\n") + tr("Files are removed for good: they do not go to the recycle bin.");
    if (totalsOf({plan.found, plan.leftOut, {true}}).files > 0 && plan.items[indexOf(Item::RecentFiles)])
        text += QLatin1Char(' ') + tr("Quick access forgets its pinned folders as well.");
    return text;
}

QString resultText(const ClearResult &result)
{
    const ClearTotals cleared{result.deletedFiles, result.deletedValues, result.deletedBytes};
    QString text = cleared.all() == 1 && cleared.values == 0 ? tr("%1 was cleared.") : tr("%1 were cleared.");
    text = text.arg(totalsText(cleared));
    if (result.cancelled)
        text = tr("Cancelled: %1").arg(text);
    if (result.stayed.empty())
        return text;
    QMap<QString, int> reasons;
    for (const Stayed &stayed : result.stayed)
        ++reasons[outcomeText(stayed.why)];
    QStringList parts;
    for (auto reason = reasons.cbegin(); reason != reasons.cend(); ++reason)
        parts += QStringLiteral("%1: %2").arg(QString::number(reason.value()), reason.key());
    return tr("%1 %2 stayed (%3).")
        .arg(text, QString::number(result.stayed.size()), parts.join(QStringLiteral("; ")));
}

QString faultText(const RegFileContent &content)
{
    switch (content.fault) {
    case RegFileFault::None:
        break;
    case RegFileFault::NotARegFile:
        return tr("This is no file of saved registry entries.");
    case RegFileFault::Damaged:
        return tr("Line %1 cannot be read. Nothing was put back.").arg(QString::number(content.line));
    case RegFileFault::OtherKeys:
        return tr("Line %1 names a place in the registry that Track Cleaner does not clear. Nothing was put "
                  "back.")
            .arg(QString::number(content.line));
    case RegFileFault::Deletions:
        return tr("Line %1 would remove something. Nothing was put back.").arg(QString::number(content.line));
    }
    return {};
}

} // namespace tracks
