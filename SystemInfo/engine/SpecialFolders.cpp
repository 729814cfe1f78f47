// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Pages.h"

#include <algorithm>

namespace systeminfo
{

Page specialFoldersPage(Machine &machine, const Publish &publish)
{
    Page page = emptyPage(PageId::SpecialFolders);
    page.sections = {section(SYSTEMINFO_LABEL("Folders of the User"), QStringLiteral("SysInfoDisk16.png")),
                     section(SYSTEMINFO_LABEL("Folders of All Users"), QStringLiteral("SysInfoDisk16.png"))};
    publish(page);
    std::vector<SpecialFolder> folders = machine.specialFolders();
    std::ranges::sort(folders, [](const SpecialFolder &a, const SpecialFolder &b) {
        return a.name.compare(b.name, Qt::CaseInsensitive) < 0;
    });
    // Some folders have two ids.
    const auto same = [](const SpecialFolder &a, const SpecialFolder &b) {
        return a.common == b.common && a.name == b.name && a.path.compare(b.path, Qt::CaseInsensitive) == 0;
    };
    folders.erase(std::unique(folders.begin(), folders.end(), same), folders.end());
    for (const SpecialFolder &folder : folders) {
        if (machine.stopRequested())
            break;
        Row &row = page.sections[folder.common ? 1 : 0].add(item("Folder", folder.name, folder.path));
        switch (machine.pathState(folder.path)) {
        case PathState::Exists:
            row.openPath = folder.path;
            break;
        case PathState::Missing:
            row.problem = Words::tr("does not exist");
            break;
        case PathState::NotChecked:
            row.hint = Words::tr("On another computer; not looked at.");
            row.openPath = folder.path;
            break;
        }
    }
    return page;
}

} // namespace systeminfo
