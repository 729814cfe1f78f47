// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/World.h"
#include "widgets/FLWidget.h"

#include <memory>

// The system interfaces used by the repairs; shared by jobs and form.
struct RepairWorld {
    std::shared_ptr<repair::Network> network;
    std::shared_ptr<repair::Tools> tools;
    std::shared_ptr<repair::Caches> caches;
    std::shared_ptr<repair::Explorer> explorer;
    std::shared_ptr<repair::Store> store;
};

// Four repairs on tabs: Internet connection, icons, thumbnails and Microsoft Store.
class TroubleshooterForm : public FLWidget
{
    Q_OBJECT

public:
    explicit TroubleshooterForm(QWidget *parent = nullptr);
    TroubleshooterForm(const RepairWorld &world, QWidget *parent);

    // Call at application start (there is a single instance): if the previous one was killed during a repair,
    // restores the desktop. Does not block.
    static void finishInterruptedRepair();
};
