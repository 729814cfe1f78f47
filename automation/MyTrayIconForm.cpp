// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/MyTrayIconForm.h"

#include "automation/engine/AgentLog.h"
#include "settings/TaskbarSettings.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>

using automation::FeaturePage;

MyTrayIconForm::MyTrayIconForm(QWidget *parent)
    : FeaturePage(
          automation::features::trayIcon, settings::trayIconShown,
          {tr("My Tray Icon"),
           tr("An icon beside the clock, with a quick menu: keep this PC awake, switch light and dark, "
              "pages of Windows' settings, and the tools of this suite."),
           tr("Show the tray icon")},
          parent)
{
    settingsForm()->addRow(tr("Open the menu:"),
                           new QLabel(tr("Click the icon, or press Windows+B and Enter"), this));
    settingsForm()->addRow(tr("Hide it again:"), new QLabel(tr("Here, or in its own menu"), this));
}

QString MyTrayIconForm::outlook() const
{
    return featureSwitch()->isChecked() ? QString() : tr("No icon is shown");
}
