// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/TransparentTaskbarModuleForm.h"

#include "automation/engine/AgentLog.h"
#include "settings/TaskbarSettings.h"
#include "widgets/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>

using automation::FeaturePage;

namespace
{

constexpr int sliderWidth = 240;

}

TransparentTaskbarModuleForm::TransparentTaskbarModuleForm(QWidget *parent)
    : FeaturePage(
          automation::features::taskbar, settings::taskbarEnabled,
          {tr("Transparent Taskbar"),
           tr("Lets the desktop show through the taskbar of every monitor. Newer versions of Windows 11 "
              "draw their taskbar in a way that does not allow it; this page says so then."),
           tr("Make the taskbar transparent")},
          parent),
      m_binding(SettingsBinding::Write::OnChange)
{
    auto *level = new QSlider(Qt::Horizontal, this);
    level->setObjectName(QStringLiteral("levelSlider"));
    level->setAccessibleName(tr("Transparency"));
    level->setFixedWidth(sliderWidth);
    level->setPageStep(10);
    auto *percent = new QLabel(this);
    percent->setObjectName(QStringLiteral("levelLabel"));
    connect(level, &QSlider::valueChanged, percent,
            [percent](int value) { percent->setText(tr("%1 %").arg(value)); });
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceSnug);
    row->addWidget(level);
    row->addWidget(percent);
    settingsForm()->addRow(tr("Transparency:"), row);
    m_binding.add(level, settings::taskbarLevel);
    percent->setText(tr("%1 %").arg(level->value()));

    auto *mode = new QComboBox(this);
    mode->setObjectName(QStringLiteral("modeComboBox"));
    mode->setAccessibleName(tr("What is behind"));
    mode->addItems({tr("Clear"), tr("Blurred"), tr("Blurred, with the grain of acrylic")});
    settingsForm()->addRow(tr("What is behind:"), mode);
    m_binding.add(mode, settings::taskbarMode);
    connect(&m_binding, &SettingsBinding::changed, this, [this] { apply(); });
}

QString TransparentTaskbarModuleForm::outlook() const
{
    return featureSwitch()->isChecked() ? QString() : tr("The taskbar stays as Windows draws it");
}
