// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/World.h"
#include "widgets/FLWidget.h"

#include <memory>

namespace repair
{

// The system interfaces used by the repairs; shared by jobs and form.
struct RepairWorld {
    std::shared_ptr<Network> network;
    std::shared_ptr<Tools> tools;
    std::shared_ptr<Caches> caches;
    std::shared_ptr<Explorer> explorer;
    std::shared_ptr<Store> store;
};

} // namespace repair

// Four repairs on tabs: Internet connection, icons, thumbnails and Microsoft Store.
class TroubleshooterForm : public FLWidget
{
    Q_OBJECT

public:
    explicit TroubleshooterForm(QWidget *parent = nullptr);
    TroubleshooterForm(const repair::RepairWorld &world, QWidget *parent);

    // Call at application start (there is a single instance): if the previous one was killed during a repair,
    // restores the desktop. Does not block.
    static void finishInterruptedRepair();
};
