// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/FeaturePage.h"
#include "widgets/SettingsBinding.h"

class QComboBox;
class QRadioButton;
class QSpinBox;

// Settings for how long and how the PC is kept awake.
class StayAwakeForm : public automation::FeaturePage
{
    Q_OBJECT

public:
    explicit StayAwakeForm(QWidget *parent = nullptr);

    void shellEvent(ShellEvent event, quint32 value) override;

protected:
    bool mayTurn(bool on) override;
    QString outlook() const override;

private:
    void addDuration();
    void addPower();
    void addEnd();
    void showDuration();
    void storeDuration();

    SettingsBinding m_binding;
    QRadioButton *m_forEver;
    QRadioButton *m_forTime;
    QRadioButton *m_untilEnd;
    QSpinBox *m_duration;
    QComboBox *m_unit;
    QComboBox *m_program;
};
