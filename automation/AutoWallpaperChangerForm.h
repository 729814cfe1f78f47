// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/FeaturePage.h"
#include "widgets/SettingsBinding.h"

class OwnImagesView;
class QCheckBox;
class QComboBox;
class QPushButton;
class ShownImagePanel;

// Settings for the source of the wallpapers and the time of changes; shows the current wallpaper and the time
// of the next change.
class AutoWallpaperChangerForm : public automation::FeaturePage
{
    Q_OBJECT

public:
    explicit AutoWallpaperChangerForm(QWidget *parent = nullptr);

protected:
    QString outlook() const override;
    bool mayTurn(bool on) override;
    void refreshed() override;

private:
    void addShown();
    void addSource();
    void addTime();
    void addConditions();
    void ask(unsigned which);
    void showChoice();
    void storeOwn();

    SettingsBinding m_binding;
    ShownImagePanel *m_shown;
    QComboBox *m_source;
    QComboBox *m_region;
    QComboBox *m_time;
    QComboBox *m_period;
    OwnImagesView *m_own;
    QPushButton *m_newest;
    QCheckBox *m_metered;
};
