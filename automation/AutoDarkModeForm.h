// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/FeaturePage.h"
#include "automation/engine/DarkMode.h"
#include "widgets/SettingsBinding.h"

class QButtonGroup;
class QLineEdit;
class QTimeEdit;

namespace settings
{
struct Number;
}

// When Windows and its apps are light and when they are dark.
class AutoDarkModeForm : public FeaturePage
{
    Q_OBJECT

public:
    explicit AutoDarkModeForm(QWidget *parent = nullptr);

protected:
    QString outlook() const override;

private:
    void addHours();
    void addSun();
    void addAction();
    QTimeEdit *timeEdit(const char *name, const QString &accessibleName, const settings::Number &hour,
                        const settings::Number &minute, const settings::Number &period);
    automation::DarkSettings shown() const;
    void showChoice();

    SettingsBinding m_binding;
    QButtonGroup *m_choice;
    QTimeEdit *m_light;
    QTimeEdit *m_dark;
    QLineEdit *m_latitude;
    QLineEdit *m_longitude;
    QLabel *m_place;
    QLabel *m_today;
    QLabel *m_tomorrow;
};
