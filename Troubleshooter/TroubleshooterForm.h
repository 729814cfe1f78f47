// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/World.h"
#include "widgets/FLWidget.h"

#include <memory>

// What the repairs work with; jobs share it with the form.
struct RepairWorld {
    std::shared_ptr<repair::Network> network;
    std::shared_ptr<repair::Tools> tools;
    std::shared_ptr<repair::Caches> caches;
    std::shared_ptr<repair::Explorer> explorer;
    std::shared_ptr<repair::Store> store;
};

// Four repairs, one a tab: the Internet connection, the icons, the thumbnails and the Microsoft Store.
class TroubleshooterForm : public FLWidget
{
    Q_OBJECT

public:
    explicit TroubleshooterForm(QWidget *parent = nullptr);
    TroubleshooterForm(const RepairWorld &world, QWidget *parent);

    // At the start of the application, of which only one runs: when it was ended in the middle of a repair,
    // the desktop comes back. Does not wait.
    static void finishInterruptedRepair();
};
