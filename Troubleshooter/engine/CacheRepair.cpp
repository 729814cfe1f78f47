// SPDX-License-Identifier: GPL-3.0-or-later
#include "Troubleshooter/engine/CacheRepair.h"

#include "core/SizeText.h"

#include <QCoreApplication>

#include <optional>

namespace repair
{

namespace
{

// Windows normally limits them to less; a larger cache is a sign of a fault.
constexpr quint64 unusualBytes = quint64(1) << 30;

QString tr(const char *text)
{
    return QCoreApplication::translate("repair", text);
}

quint64 bytesOf(const QList<CacheFile> &files)
{
    quint64 bytes = 0;
    for (const CacheFile &file : files)
        bytes += file.size;
    return bytes;
}

// Restarts Explorer on every exit path; the awaited flag tells the next process if this one is killed
// meanwhile.
class ExplorerPause
{
public:
    explicit ExplorerPause(Explorer &explorer) : m_explorer(explorer) { m_explorer.setAwaited(true); }
    ExplorerPause(const ExplorerPause &) = delete;
    ExplorerPause &operator=(const ExplorerPause &) = delete;
    ~ExplorerPause() { end(); }

    // Returns whether Explorer is running.
    bool end()
    {
        constexpr int attempts = 2;
        for (int attempt = 0; attempt < attempts && !m_runs; ++attempt)
            m_runs = m_explorer.start();
        if (m_runs)
            m_explorer.setAwaited(false);
        return m_runs;
    }

private:
    Explorer &m_explorer;
    bool m_runs = false;
};

QString fileCount(qsizetype count)
{
    return count == 1 ? tr("1 file") : tr("%1 files").arg(count);
}

// What Explorer is doing, which a rebuild interrupts.
struct ExplorerState {
    bool runs = false;
    bool copies = false;
    int windows = 0;
};

ExplorerState stateOf(Explorer &explorer)
{
    const bool runs = explorer.runs();
    return {runs, runs && explorer.isCopying(), runs ? explorer.folderWindows() : 0};
}

Finding explorerFinding(const ExplorerState &explorer)
{
    const QString windows = explorer.windows == 0   ? tr("No folder window is open.")
                            : explorer.windows == 1 ? tr("One folder window is open.")
                                                    : tr("%1 folder windows are open.").arg(explorer.windows);
    return {explorer.copies ? Health::Note : Health::Good, tr("Explorer"),
            !explorer.runs    ? tr("It is not running.")
            : explorer.copies ? tr("It is copying, moving or removing files.")
                              : windows};
}

// The side effect of a rebuild; empty if Explorer is not running.
QString restartText(const ExplorerState &explorer)
{
    if (!explorer.runs)
        return {};
    const QString closes = explorer.windows == 0 ? QString()
                           : explorer.windows == 1
                               ? tr("The open folder window closes and does not come back.")
                               : tr("%1 folder windows close and do not come back.").arg(explorer.windows);
    return tr("Explorer is closed and started again: desktop and taskbar are gone for some seconds. %1")
        .arg(closes)
        .trimmed();
}

} // namespace

QString CacheRepair::name() const
{
    return m_kind == CacheKind::Icons ? tr("Icon cache") : tr("Thumbnail cache");
}

Examination CacheRepair::check(const core::CancelFlag &)
{
    Examination found;
    const std::optional<QList<CacheFile>> files = m_caches.list(m_kind);
    const quint64 bytes = files ? bytesOf(*files) : 0;
    const bool unusual = bytes > unusualBytes;
    if (!files)
        found.findings.append({Health::Problem, name(), tr("Its folder cannot be read.")});
    else if (files->isEmpty())
        found.findings.append({Health::Good, name(), tr("Empty: Windows fills it as pictures are needed.")});
    else
        found.findings.append({unusual ? Health::Problem : Health::Good, name(),
                               tr("%1, %2.").arg(fileCount(files->size()), core::sizeText(bytes)) +
                                   (unusual ? u' ' + tr("That is unusually large.") : QString())});
    found.findings.append(
        {Health::Note, tr("Damage"),
         m_kind == CacheKind::Icons
             ? tr("The files do not show it. Wrong or blank icons on the desktop or in folders are the sign.")
             : tr("The files do not show it. Wrong or missing previews of pictures and videos are the "
                  "sign.")});

    const ExplorerState explorer = stateOf(m_explorer);
    found.findings.append(explorerFinding(explorer));
    found.steps.append({.id = QStringLiteral("rebuild"),
                        .title = m_kind == CacheKind::Icons ? tr("Rebuild the icon cache")
                                                            : tr("Rebuild the thumbnail cache"),
                        .plan = (restartText(explorer) + u' ' +
                                 tr("Removes %1. Windows creates them again as needed.")
                                     .arg(fileCount(files ? files->size() : 0)))
                                    .trimmed(),
                        .obstacle = !files             ? tr("The folder of the cache cannot be read.")
                                    : files->isEmpty() ? tr("There is nothing to remove.")
                                    : explorer.copies
                                        ? tr("Not while Explorer copies, moves or removes files.")
                                        : QString(),
                        .advised = unusual});
    return found;
}

Outcome CacheRepair::apply(const Step &step, const core::CancelFlag &cancel)
{
    Outcome outcome{step.id, step.title};
    // With another shell, Explorer need not be ended or started.
    std::optional<ExplorerPause> pause;
    if (m_explorer.runs()) {
        if (m_explorer.isCopying()) {
            outcome.text = tr("Nothing was removed: Explorer copies, moves or removes files.");
            return outcome;
        }
        pause.emplace(m_explorer);
        if (!m_explorer.end(cancel)) {
            outcome.text = tr("Nothing was removed: Explorer did not end when it was asked to.");
            return outcome;
        }
    }
    // Listed again, since Explorer writes to them when it ends.
    const QList<CacheFile> files = m_caches.list(m_kind).value_or(QList<CacheFile>());
    quint64 bytes = 0;
    QStringList left;
    for (const CacheFile &file : files) {
        const QString reason = m_caches.erase(file);
        if (reason.isEmpty())
            bytes += file.size;
        else
            left.append(tr("%1 (%2)").arg(file.path.mid(file.path.lastIndexOf(u'\\') + 1), reason));
    }
    const qsizetype gone = files.size() - left.size();
    outcome.done = gone > 0 && left.isEmpty();
    outcome.text = tr("%1 removed, %2.").arg(fileCount(gone), core::sizeText(bytes));
    if (!left.isEmpty())
        outcome.text += u' ' + tr("Left: %1.").arg(left.join(QStringLiteral(", ")));
    if (pause && !pause->end()) {
        outcome.done = false;
        outcome.text +=
            u' ' + tr("Explorer did not start again: press Ctrl+Shift+Esc, choose \"Run new task\", and "
                      "type explorer.");
    }
    return outcome;
}

void finishInterruptedRepair(Explorer &explorer)
{
    if (explorer.isAwaited() && (explorer.isDesktopShown() || explorer.start()))
        explorer.setAwaited(false);
}

} // namespace repair
