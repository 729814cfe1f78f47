// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Pages.h"

#include <algorithm>

namespace systeminfo
{

// Everything is read from the registry. The enumerating APIs load some codecs into the calling process, and a
// broken one would crash it.
namespace
{

using Hive = core::RegistryView::Hive;

const QString drivers = QStringLiteral("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Drivers32");
const QString descriptions = QStringLiteral("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\drivers.desc");
const QString classes = QStringLiteral("SOFTWARE\\Classes\\");
const QString icon = QStringLiteral("SysInfoMonitor16.png");

QString textOf(core::RegistryView &registry, const QString &key, const QString &name = {})
{
    return registry.value(Hive::LocalMachine, key, name).toText();
}

Row codecRow(const QString &name, const QString &category, const QString &identification, const QString &file)
{
    Row row = item("Codec", name.isEmpty() ? identification : name, category);
    row.add(fact(SYSTEMINFO_LABEL("Identification"), identification));
    row.add(fact(SYSTEMINFO_LABEL("File"), file));
    return row;
}

void sort(Row &top)
{
    std::ranges::stable_sort(top.children, [](const Row &a, const Row &b) {
        return a.label.compare(b.label, Qt::CaseInsensitive) < 0;
    });
}

// Drivers of the legacy interfaces: "vidc.mrle" and "msacm.imaadpcm".
Row driversRow(core::RegistryView &registry, Row top, const QString &prefix)
{
    for (const QString &name : registry.valueNames(Hive::LocalMachine, drivers)) {
        if (!name.startsWith(prefix, Qt::CaseInsensitive))
            continue;
        const QString file = textOf(registry, drivers, name);
        const QString description = textOf(registry, descriptions, file);
        top.add(codecRow(description.isEmpty() ? file : description, {}, name.mid(prefix.size()), file));
    }
    sort(top);
    return withNone(std::move(top));
}

QString serverOf(core::RegistryView &registry, const QString &classId)
{
    return textOf(registry,
                  classes + QStringLiteral("CLSID\\") + classId + QStringLiteral("\\InprocServer32"));
}

struct Category {
    const char *id;
    const char *title;
};

constexpr Category filterCategories[] = {
    {"{083863F1-70DE-11d0-BD40-00A0C911CE86}", SYSTEMINFO_LABEL("Filter")},
    {"{33D9A760-90C8-11d0-BD43-00A0C911CE86}", SYSTEMINFO_LABEL("Video compressor")},
    {"{33D9A761-90C8-11d0-BD43-00A0C911CE86}", SYSTEMINFO_LABEL("Audio compressor")},
};

constexpr Category transformCategories[] = {
    {"{d6c02d4b-6833-45b4-971a-05a4b04bab91}", SYSTEMINFO_LABEL("Video decoder")},
    {"{f79eac7d-e545-4387-bdee-d647d7bde42a}", SYSTEMINFO_LABEL("Video encoder")},
    {"{12e17c21-532c-4a6e-8a1c-40825a736397}", SYSTEMINFO_LABEL("Video effect")},
    {"{302ea3fc-aa5f-47f9-9f7a-c2188bb16302}", SYSTEMINFO_LABEL("Video processor")},
    {"{9ea73fb4-ef7a-4559-8d5d-719d8f0426c7}", SYSTEMINFO_LABEL("Audio decoder")},
    {"{91c64bd0-f91e-4d8c-9276-db248279d975}", SYSTEMINFO_LABEL("Audio encoder")},
    {"{11064c48-3648-4ed0-932e-05ce8ac811b7}", SYSTEMINFO_LABEL("Audio effect")},
};

Row filtersRow(core::RegistryView &registry)
{
    Row top = section(SYSTEMINFO_LABEL("DirectShow Filters"), icon);
    for (const Category &category : filterCategories) {
        const QString list =
            classes + QStringLiteral("CLSID\\") + QLatin1String(category.id) + QStringLiteral("\\Instance");
        for (const QString &instance : registry.subkeys(Hive::LocalMachine, list)) {
            const QString key = list + QLatin1Char('\\') + instance;
            const QString classId = textOf(registry, key, QStringLiteral("CLSID"));
            top.add(codecRow(textOf(registry, key, QStringLiteral("FriendlyName")), Words::tr(category.title),
                             classId, serverOf(registry, classId)));
        }
    }
    sort(top);
    return withNone(std::move(top));
}

QString transformCategory(core::RegistryView &registry, const QString &id)
{
    for (const Category &category : transformCategories) {
        const QString key = classes + QStringLiteral("MediaFoundation\\Transforms\\Categories\\") +
                            QString::fromLatin1(category.id).mid(1).chopped(1);
        const QStringList members = registry.subkeys(Hive::LocalMachine, key);
        if (members.contains(id, Qt::CaseInsensitive))
            return Words::tr(category.title);
    }
    return {};
}

Row transformsRow(core::RegistryView &registry)
{
    Row top = section(SYSTEMINFO_LABEL("Media Foundation Transforms"), icon);
    const QString list = classes + QStringLiteral("MediaFoundation\\Transforms");
    for (const QString &id : registry.subkeys(Hive::LocalMachine, list)) {
        if (id.compare(QStringLiteral("Categories"), Qt::CaseInsensitive) == 0)
            continue;
        const QString classId = QLatin1Char('{') + id + QLatin1Char('}');
        top.add(codecRow(textOf(registry, list + QLatin1Char('\\') + id), transformCategory(registry, id),
                         classId, serverOf(registry, classId)));
    }
    sort(top);
    return withNone(std::move(top));
}

} // namespace

Page codecsPage(Machine &machine, const Publish &publish)
{
    Page page = emptyPage(PageId::Codecs);
    core::RegistryView &registry = machine.registry();
    page.sections = {
        driversRow(registry, section(SYSTEMINFO_LABEL("Video Codecs"), icon), QStringLiteral("vidc.")),
        driversRow(registry, section(SYSTEMINFO_LABEL("Audio Codecs"), icon), QStringLiteral("msacm."))};
    publish(page);
    page.sections.push_back(filtersRow(registry));
    page.sections.push_back(transformsRow(registry));
    return page;
}

} // namespace systeminfo
