// SPDX-License-Identifier: GPL-3.0-or-later

// The icons of all libraries of a folder against the least that anyone can do: a loop of Win32 calls that
// loads and decodes the same. Both ways take turns; the medians are compared. Then the stall of the page
// while it shows one library of many icons, and is scrolled. usage: icon_listing FOLDER LIBRARY [ROUNDS]

#include "ExtractIcon/ExtractIconForm.h"
#include "ExtractIcon/IconFiles.h"
#include "ExtractIcon/engine/IconListing.h"
#include "bench/Bench.h"
#include "bench/Heartbeat.h"

#include <QDir>
#include <QListView>
#include <QScrollBar>

#include <cstdlib>
#include <windows.h>

namespace
{

struct Counts {
    int icons = 0;
    int images = 0;
};

QByteArrayView bytesOf(HMODULE module, const wchar_t *name, const wchar_t *type)
{
    const HRSRC found = FindResourceW(module, name, type);
    const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    const void *bytes = loaded ? LockResource(loaded) : nullptr;
    return bytes ? QByteArrayView(static_cast<const char *>(bytes), SizeofResource(module, found))
                 : QByteArrayView();
}

BOOL CALLBACK decodeGroup(HMODULE module, const wchar_t *, wchar_t *name, LONG_PTR parameter)
{
    if (!IS_INTRESOURCE(name))
        return TRUE;
    auto *counts = reinterpret_cast<Counts *>(parameter);
    ++counts->icons;
    const auto directory = icons::parseGroup(bytesOf(module, name, RT_GROUP_ICON));
    for (qsizetype i = 0; directory && i < directory->entries.size(); ++i) {
        const icons::DirectoryEntry &entry = directory->entries[i];
        const QByteArrayView bytes = bytesOf(module, MAKEINTRESOURCEW(entry.place), RT_ICON);
        counts->images += !icons::decodeImage(bytes, entry).image.isNull();
    }
    return TRUE;
}

Counts bareLoop(const QStringList &paths)
{
    Counts counts;
    for (const QString &path : paths) {
        const HMODULE module = LoadLibraryExW(reinterpret_cast<const wchar_t *>(path.utf16()), nullptr,
                                              LOAD_LIBRARY_AS_DATAFILE);
        if (!module)
            continue;
        EnumResourceNamesW(module, RT_GROUP_ICON, decodeGroup, reinterpret_cast<LONG_PTR>(&counts));
        FreeLibrary(module);
    }
    return counts;
}

// As the page does it for the icons that are exported.
Counts decodeAll(const QStringList &paths)
{
    Counts counts;
    for (const QString &path : paths) {
        const auto source = icons::openIcons(path);
        for (const icons::IconRecord &record : icons::listIcons(*source, {})) {
            ++counts.icons;
            if (const auto icon = icons::readIcon(*source, record.id)) {
                for (const icons::IconImage &image : icons::decodeIcon(*icon))
                    counts.images += !image.image.isNull();
            }
        }
    }
    return counts;
}

// As the page does it for its list.
Counts listWithThumbnails(const QStringList &paths)
{
    Counts counts;
    for (const QString &path : paths) {
        const auto source = icons::openIcons(path);
        for (const icons::IconRecord &record : icons::listIcons(*source, {})) {
            ++counts.icons;
            counts.images += !icons::thumbnail(*source, record, 96).isNull();
        }
    }
    return counts;
}

void compare(const QStringList &paths, int rounds)
{
    std::vector<double> bare, all, list;
    Counts bareCounts, allCounts, listCounts;
    for (int round = 0; round < rounds; ++round) {
        bare.push_back(bench::seconds([&] { bareCounts = bareLoop(paths); }));
        all.push_back(bench::seconds([&] { allCounts = decodeAll(paths); }));
        list.push_back(bench::seconds([&] { listCounts = listWithThumbnails(paths); }));
    }
    const auto reportCounts = [](const char *what, const Counts &counts) {
        std::printf("%s: %d icons, %d images\n", what, counts.icons, counts.images);
    };
    reportCounts("bare loop", bareCounts);
    reportCounts("all images", allCounts);
    reportCounts("the list", listCounts);
    bench::report("bare loop, all images", bench::median(bare), "s");
    bench::report("all images", bench::median(all), "s");
    bench::report("the list with its pictures", bench::median(list), "s");
    bench::report("ratio, all images", bench::median(all) / bench::median(bare));
}

void show(const QString &library)
{
    ExtractIconForm form;
    form.resize(1000, 700);
    form.show();
    bench::spin(bench::settle);
    auto *list = form.findChild<QListView *>(QStringLiteral("listView"));
    bench::Heartbeat heart;
    QElapsedTimer clock;
    clock.start();
    form.open(library);
    while (list->model()->rowCount() == 0 && clock.elapsed() < 60'000) {
        bench::spin(bench::beat);
        form.shellEvent(ShellEvent::RefreshIcons, 0); // the part of the main window
    }
    std::printf("%d icons listed after %lld ms\n", list->model()->rowCount(), clock.elapsed());
    const auto isComplete = [list] {
        const int last = list->model()->rowCount() - 1;
        return !list->model()->index(last, 0).data(Qt::DecorationRole).isNull();
    };
    while (!isComplete() && clock.elapsed() < 60'000)
        bench::spin(bench::beat);
    std::printf("their pictures after %lld ms\n", clock.elapsed());
    bench::measured("while they are listed and decoded", heart);
    for (int part = 0; part <= 10; ++part) {
        list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum() * part / 10);
        bench::spin(60);
    }
    bench::measured("scrolling", heart);
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 3)
        return EXIT_FAILURE;
    QStringList paths;
    for (const QFileInfo &file :
         QDir(arguments[1]).entryInfoList({QStringLiteral("*.dll"), QStringLiteral("*.exe")}))
        paths.append(QDir::toNativeSeparators(file.filePath()));
    compare(paths, arguments.size() > 3 ? arguments[3].toInt() : 5);
    show(arguments[2]);
    return EXIT_SUCCESS;
}
