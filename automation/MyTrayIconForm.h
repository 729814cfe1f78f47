// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/FeaturePage.h"

// Settings for the suite's icon with its quick menu in the notification area.
class MyTrayIconForm : public automation::FeaturePage
{
    Q_OBJECT

public:
    explicit MyTrayIconForm(QWidget *parent = nullptr);

protected:
    QString outlook() const override;
};
