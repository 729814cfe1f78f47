// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/FeaturePage.h"
#include "widgets/SettingsBinding.h"

class OwnPicturesView;
class QCheckBox;
class QComboBox;
class QPushButton;
class ShownPicturePanel;

// Where the pictures of the desktop come from and when they change; what is shown now, and the next one.
class AutoWallpaperChangerForm : public FeaturePage
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
    ShownPicturePanel *m_shown;
    QComboBox *m_source;
    QComboBox *m_region;
    QComboBox *m_time;
    QComboBox *m_period;
    OwnPicturesView *m_own;
    QPushButton *m_newest;
    QCheckBox *m_metered;
};
