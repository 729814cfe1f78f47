// SPDX-License-Identifier: GPL-3.0-or-later
#include "Troubleshooter/TroubleshooterForm.h"

#include "Troubleshooter/RepairPage.h"
#include "Troubleshooter/engine/CacheRepair.h"
#include "Troubleshooter/engine/InternetRepair.h"
#include "Troubleshooter/engine/StoreRepair.h"
#include "Troubleshooter/machine/WindowsExplorer.h"
#include "Troubleshooter/machine/WindowsNetwork.h"
#include "Troubleshooter/machine/WindowsTools.h"
#include "platform/DetachedThread.h"
#include "platform/KnownFolders.h"
#include "widgets/FLTabWidget.h"
#include "widgets/PageHeader.h"
#include "widgets/Theme.h"

#include <QVBoxLayout>

#include <tuple>

using namespace repair;

namespace
{

RepairWorld windowsWorld()
{
    return {std::make_shared<WindowsNetwork>(), std::make_shared<WindowsTools>(),
            std::make_shared<WindowsCaches>(platform::knownFolder(platform::KnownFolder::LocalAppData)),
            std::make_shared<WindowsExplorer>(), std::make_shared<WindowsStore>()};
}

// A repair, kept together with the parts of RepairWorld that it references.
template <class Kind, class... Parts>
std::shared_ptr<Repair> make(const Parts &...parts)
{
    struct Kept {
        std::tuple<Parts...> parts;
        Kind repair;
    };
    auto kept = std::make_shared<Kept>(Kept{std::tuple(parts...), Kind(*parts...)});
    return {kept, &kept->repair};
}

} // namespace

void TroubleshooterForm::finishInterruptedRepair()
{
    if (!WindowsExplorer().isAwaited())
        return;
    platform::runDetached([] {
        WindowsExplorer explorer;
        repair::finishInterruptedRepair(explorer);
    });
}

TroubleshooterForm::TroubleshooterForm(QWidget *parent) : TroubleshooterForm(windowsWorld(), parent) {}

TroubleshooterForm::TroubleshooterForm(const RepairWorld &world, QWidget *parent) : FLWidget(parent)
{
    auto *header = new PageHeader(PageHeader::Kind::Start, this);
    header->setTitle(tr("Troubleshooter"));
    header->setText(tr("Finds common problems with the Internet connection, icons, thumbnails and the "
                       "Microsoft Store. A check changes nothing, and only what you choose is done."));

    auto *tabs = new FLTabWidget(this);
    tabs->setObjectName(QStringLiteral("tabWidget"));
    const auto add = [tabs](const char *name, const QString &title, const QString &description,
                            std::shared_ptr<Repair> repair) {
        auto *page = new RepairPage(description, std::move(repair), tabs);
        page->setObjectName(QString::fromLatin1(name));
        tabs->addTab(page, title);
    };
    add("internetPage", tr("Internet"),
        tr("Checks the connection, its address and the proxy, looks up %1 and connects to it, as Windows "
           "itself does to test for Internet access.")
            .arg(testHost),
        make<InternetRepair>(world.network, world.tools));
    struct IconRepair : CacheRepair {
        IconRepair(Caches &caches, Explorer &explorer) : CacheRepair(CacheKind::Icons, caches, explorer) {}
    };
    struct ThumbnailRepair : CacheRepair {
        ThumbnailRepair(Caches &caches, Explorer &explorer)
            : CacheRepair(CacheKind::Thumbnails, caches, explorer)
        {
        }
    };
    add("iconsPage", tr("Icons"),
        tr("Windows keeps the icons of programs and files in a cache. When it is damaged, icons are wrong or "
           "blank."),
        make<IconRepair>(world.caches, world.explorer));
    add("thumbnailsPage", tr("Thumbnails"),
        tr("Windows keeps the small previews of pictures and videos in a cache. When it is damaged, previews "
           "are wrong or missing."),
        make<ThumbnailRepair>(world.caches, world.explorer));
    add("storePage", tr("Microsoft Store"),
        tr("Checks whether the Store and the services it needs are available. Emptying its cache helps when "
           "it does not open or does not load apps."),
        make<StoreRepair>(world.store, world.tools));

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::space);
    layout->setSpacing(theme::space);
    layout->addWidget(header);
    layout->addWidget(tabs, 1);
}
