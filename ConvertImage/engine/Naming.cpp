// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Naming.h"

#include <QSet>

#include <algorithm>

namespace conversion
{

namespace
{

qsizetype afterFolder(const QString &path)
{
    return std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')) + 1;
}

// Comparison key of a path: lower case, with one kind of separator.
QString key(const QString &path)
{
    return QString(path).replace(u'/', u'\\').toLower();
}

QString joined(const QString &folder, const QString &name)
{
    return folder + u'\\' + name;
}

QString withoutLastSuffix(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot < 0 ? name : name.left(dot);
}

} // namespace

QString baseName(const QString &path)
{
    const QString name = path.mid(afterFolder(path));
    const qsizetype dot = name.indexOf(u'.');
    return dot < 0 ? name : name.left(dot);
}

QString folderOf(const QString &path)
{
    return path.left(std::max<qsizetype>(0, afterFolder(path) - 1));
}

QString outputPath(const QString &folder, const QString &source, const QString &extension)
{
    QString trimmed = folder;
    while (trimmed.endsWith(u'\\') || trimmed.endsWith(u'/'))
        trimmed.chop(1);
    return joined(trimmed, baseName(source) + extension);
}

bool isSameFile(const QString &one, const QString &other)
{
    return key(one) == key(other);
}

std::vector<PlannedFile> plannedFiles(const QStringList &sources, const QString &folder,
                                      const QString &extension, const QHash<QString, QString> &subfolders)
{
    const auto into = [&](const QString &source) {
        const QString below = subfolders.value(source);
        return folder.isEmpty() ? folderOf(source) : below.isEmpty() ? folder : joined(folder, below);
    };
    std::vector<PlannedFile> plan;
    plan.reserve(static_cast<std::size_t>(sources.size()));
    for (const QString &source : sources)
        plan.push_back({source, outputPath(into(source), source, extension)});
    return plan;
}

std::vector<Clash> clashes(const std::vector<PlannedFile> &plan)
{
    std::vector<Clash> all;
    QHash<QString, std::size_t> firsts; // index in `all`
    for (std::size_t i = 0; i < plan.size(); ++i) {
        const QString output = key(plan[i].output);
        const auto known = firsts.constFind(output);
        if (known != firsts.cend()) {
            all[*known].files.push_back(i);
            continue;
        }
        firsts.insert(output, all.size());
        all.push_back({plan[i].output, {i}});
    }
    std::erase_if(all, [](const Clash &clash) { return clash.files.size() < 2; });
    return all;
}

QString freeName(const QString &path, const std::function<bool(const QString &)> &isTaken)
{
    const QString folder = folderOf(path);
    const QString name = path.mid(afterFolder(path));
    const QString base = withoutLastSuffix(name);
    const QString suffix = name.mid(base.size());
    for (int number = 2;; ++number) {
        QString free = joined(folder, base + QStringLiteral(" (%1)").arg(number) + suffix);
        if (!isTaken(free))
            return free;
    }
}

void resolveClashes(std::vector<PlannedFile> &plan, const std::function<bool(const QString &)> &isTaken)
{
    QSet<QString> used;
    for (const PlannedFile &file : plan)
        used.insert(key(file.output));
    const auto unavailable = [&](const QString &path) { return used.contains(key(path)) || isTaken(path); };
    for (const Clash &clash : clashes(plan)) {
        for (std::size_t i = 1; i < clash.files.size(); ++i) {
            PlannedFile &file = plan[clash.files[i]];
            const QString name = file.source.mid(afterFolder(file.source));
            const QString suffix = file.output.mid(file.output.lastIndexOf(u'.'));
            QString output = joined(folderOf(file.output), withoutLastSuffix(name) + suffix);
            if (unavailable(output))
                output = freeName(output, unavailable);
            file.output = output;
            used.insert(key(output));
        }
    }
}

} // namespace conversion
