// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/DevicePosition.h"
#include "automation/FeaturePage.h"
#include "automation/engine/DarkMode.h"
#include "core/LatestAnswer.h"
#include "widgets/SettingsBinding.h"

class QButtonGroup;
class QLineEdit;
class QPushButton;
class QTimeEdit;

namespace settings
{
struct Number;
}

// Settings for when Windows and apps are light and when they are dark.
class AutoDarkModeForm : public automation::FeaturePage
{
    Q_OBJECT

public:
    explicit AutoDarkModeForm(QWidget *parent = nullptr);
    AutoDarkModeForm(automation::AskForPosition ask, QWidget *parent);

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
    void askForPosition();
    void showPosition(const automation::DevicePosition &found);

    automation::AskForPosition m_ask;
    core::LatestAnswer m_answer;
    SettingsBinding m_binding;
    QButtonGroup *m_choice;
    QTimeEdit *m_light;
    QTimeEdit *m_dark;
    QLineEdit *m_latitude;
    QLineEdit *m_longitude;
    QPushButton *m_locate;
    QLabel *m_place;
    QLabel *m_today;
    QLabel *m_tomorrow;
    QAction *m_privacy; // opens the Windows setting that allows it
};
