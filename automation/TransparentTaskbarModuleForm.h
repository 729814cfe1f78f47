// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/FeaturePage.h"
#include "widgets/SettingsBinding.h"

// Settings for the transparency of the taskbar.
class TransparentTaskbarModuleForm : public automation::FeaturePage
{
    Q_OBJECT

public:
    explicit TransparentTaskbarModuleForm(QWidget *parent = nullptr);

protected:
    QString outlook() const override;

private:
    SettingsBinding m_binding;
};
