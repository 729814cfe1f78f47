// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/AutoWallpaperChangerForm.h"

#include "automation/AgentLink.h"
#include "automation/OwnImagesView.h"
#include "automation/ShownImagePanel.h"
#include "automation/engine/AgentLog.h"
#include "automation/engine/ImageOfDay.h"
#include "platform/TopLevelWindows.h"
#include "settings/WallpaperSettings.h"
#include "widgets/Controls.h"
#include "widgets/NoticeBar.h"
#include "widgets/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QPushButton>

using automation::FeaturePage;
using automation::ImageSource;

namespace
{

constexpr int ownSource = static_cast<int>(ImageSource::Own);
enum Which : unsigned { newest, next, previous }; // wParam of messageChangeWallpaper

QComboBox *comboBox(QWidget *parent, const char *name, const QString &accessibleName)
{
    auto *box = new QComboBox(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setAccessibleName(accessibleName);
    return box;
}

QCheckBox *checkBox(QWidget *parent, const char *name, const QString &text)
{
    auto *box = new QCheckBox(text, parent);
    box->setObjectName(QString::fromLatin1(name));
    return box;
}

} // namespace

AutoWallpaperChangerForm::AutoWallpaperChangerForm(QWidget *parent)
    : FeaturePage(automation::features::wallpaper, settings::wallpaperEnabled,
                  {tr("Auto Wallpaper Changer"),
                   tr("Another picture on the desktop every day or hour: the picture of the day of Bing or "
                      "NASA, or your own. When you switch it off, your former wallpaper comes back."),
                   tr("Change the wallpaper automatically")},
                  parent),
      m_binding(SettingsBinding::Write::OnChange)
{
    addShown();
    addSource();
    addTime();
    addConditions();
    showChoice();
    connect(&m_binding, &SettingsBinding::changed, this, [this] {
        showChoice();
        apply();
    });
    connect(m_own, &OwnImagesView::changed, this, &AutoWallpaperChangerForm::storeOwn);
    connect(m_own, &OwnImagesView::leftOut, this,
            [this](const QString &text) { notice()->showNotice(NoticeBar::Kind::Info, text); });
}

void AutoWallpaperChangerForm::addShown()
{
    m_shown = new ShownImagePanel(this);
    addToCard(m_shown);
    auto *row = new QWidget(this);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::spaceSnug);
    const auto add = [&](const char *name, const QString &text, Which which) {
        QPushButton *button = controls::pushButton(row, {name, "", text});
        connect(button, &QPushButton::clicked, this, [this, which] { ask(which); });
        layout->addWidget(button);
        return button;
    };
    add("previousButton", tr("Previous"), previous);
    add("nextButton", tr("Next"), next);
    m_newest = add("newestButton", tr("Look for a New One"), newest);
    auto *keep = checkBox(row, "keepCheckBox", tr("Keep this picture"));
    layout->addSpacing(theme::spaceSnug);
    layout->addWidget(keep);
    layout->addStretch();
    addToCard(row);
    m_binding.add(keep, settings::wallpaperKeep);
}

void AutoWallpaperChangerForm::addSource()
{
    m_source = comboBox(this, "sourceComboBox", tr("Where pictures come from"));
    m_source->addItems(
        {tr("Bing: picture of the day"), tr("NASA: astronomy picture of the day"), tr("My own pictures")});
    settingsForm()->addRow(tr("Pictures from:"), m_source);
    m_region = comboBox(this, "regionComboBox", tr("Region of the pictures"));
    for (const automation::ImageRegion &region : automation::imageRegions())
        m_region->addItem(QString::fromLatin1(region.name));
    settingsForm()->addRow(tr("Region:"), m_region);
    m_own = new OwnImagesView(this);
    m_own->setFiles(settings::customFiles.read());
    settingsForm()->addRow(tr("My pictures:"), m_own);
    m_binding.add(m_source, settings::wallpaperSource);
    m_binding.add(m_region, settings::wallpaperRegion);
}

void AutoWallpaperChangerForm::addTime()
{
    m_time = comboBox(this, "timeComboBox", tr("When the picture changes"));
    m_time->addItem(tr("Every hour"));
    for (int hour = 1; hour <= settings::wallpaperTime.maximum; ++hour)
        m_time->addItem(tr("Every day at %1:00").arg(hour));
    m_period = comboBox(this, "periodComboBox", tr("Half of the day"));
    m_period->addItems({tr("AM"), tr("PM")});
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceSnug);
    row->addWidget(m_time);
    row->addWidget(m_period);
    row->addStretch();
    settingsForm()->addRow(tr("Change:"), row);
    m_binding.add(m_time, settings::wallpaperTime);
    m_binding.add(m_period, settings::wallpaperPeriod);
}

void AutoWallpaperChangerForm::addConditions()
{
    const auto add = [this](const QString &label, const char *name, const QString &text,
                            const settings::Flag &flag) {
        QCheckBox *box = checkBox(this, name, text);
        settingsForm()->addRow(label, box);
        m_binding.add(box, flag);
        return box;
    };
    add(tr("Monitors:"), "perMonitorCheckBox", tr("Another picture on each monitor"),
        settings::wallpaperPerMonitor);
    m_metered = add(tr("Network:"), "meteredCheckBox", tr("Also on a metered connection"),
                    settings::wallpaperOnMetered);
    add(tr("Remote use:"), "remoteCheckBox", tr("Wait while this PC is used remotely"),
        settings::wallpaperWaitsRemote);
}

void AutoWallpaperChangerForm::ask(unsigned which)
{
    if (!featureSwitch()->isChecked() || !automation::postToAgent(platform::messageChangeWallpaper, which))
        notice()->showNotice(NoticeBar::Kind::Info,
                             tr("The background agent changes it, once this is on and it is running."));
}

void AutoWallpaperChangerForm::showChoice()
{
    const int source = m_source->currentIndex();
    settingsForm()->setRowVisible(m_own, source == ownSource);
    settingsForm()->setRowVisible(m_region, source == static_cast<int>(ImageSource::Bing));
    settingsForm()->setRowVisible(m_metered, source != ownSource);
    m_newest->setVisible(source != ownSource);
    m_period->setEnabled(m_time->currentIndex() > 0);
}

// Keeps the index on the current image when images before it are added or removed.
void AutoWallpaperChangerForm::storeOwn()
{
    const QStringList before = settings::customFiles.read();
    const QStringList files = m_own->files();
    const int index = settings::customIndex.read();
    const qsizetype place = index < before.size() ? files.indexOf(before[index]) : -1;
    if (!settings::customFiles.write(files))
        notice()->showNotice(NoticeBar::Kind::Error, tr("Windows refused to store the setting."));
    if (place >= 0)
        settings::customIndex.write(static_cast<int>(place));
    apply();
}

bool AutoWallpaperChangerForm::mayTurn(bool on)
{
    if (!on || m_source->currentIndex() != ownSource || !m_own->files().isEmpty())
        return true;
    notice()->showNotice(NoticeBar::Kind::Warning, tr("Add pictures first, or choose a service."));
    return false;
}

QString AutoWallpaperChangerForm::outlook() const
{
    return featureSwitch()->isChecked() ? QString() : tr("The wallpaper stays as it is");
}

void AutoWallpaperChangerForm::refreshed()
{
    m_shown->refresh();
}
