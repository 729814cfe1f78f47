// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/AutoDarkModeForm.h"

#include "automation/AgentLink.h"
#include "automation/engine/AgentLog.h"
#include "platform/Shell.h"
#include "platform/TopLevelWindows.h"
#include "settings/AutoDarkSettings.h"
#include "widgets/Controls.h"
#include "widgets/NoticeBar.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimeEdit>

#include <utility>

using automation::FeaturePage;

namespace
{

enum Choice { byHours, bySun };
constexpr int coordinateWidth = 110;

// Two decimals: about a kilometre, or a tenth of a minute in the time of sunrise.
QString rounded(double degrees)
{
    return QString::number(degrees, 'f', 2);
}

} // namespace

AutoDarkModeForm::AutoDarkModeForm(QWidget *parent)
    : AutoDarkModeForm(automation::askWindowsForPosition, parent)
{
}

AutoDarkModeForm::AutoDarkModeForm(automation::AskForPosition ask, QWidget *parent)
    : FeaturePage(
          automation::features::autoDarkMode, settings::autoDarkEnabled,
          {tr("Auto Dark Mode"),
           tr("Light by day, dark by night: at hours of your choice, or with the sun. What you switch "
              "yourself stays until the next change."),
           tr("Switch between light and dark")},
          parent),
      m_ask(std::move(ask)),
      m_binding(SettingsBinding::Write::OnChange),
      m_choice(new QButtonGroup(this))
{
    QPushButton *now = controls::pushButton(
        this, {"switchNowButton", "", tr("Switch Now"), tr("Light becomes dark, or dark light, at once")});
    FeaturePage::addAction(now);
    connect(now, &QPushButton::clicked, this, [this] {
        if (!featureSwitch()->isChecked() || !automation::postToAgent(platform::messageSwitchTheme))
            notice()->showNotice(NoticeBar::Kind::Info,
                                 tr("The background agent switches, once this is on and it is running."));
    });
    addHours();
    addSun();
    addAction();
    const bool sun = settings::autoDarkBySun.read();
    m_choice->button(sun ? bySun : byHours)->setChecked(true);
    connect(m_choice, &QButtonGroup::idClicked, this, [this](int id) {
        settings::autoDarkBySun.write(id == bySun);
        showChoice();
        apply();
    });
    connect(&m_binding, &SettingsBinding::changed, this, [this] {
        showChoice();
        apply();
    });
    showChoice();
}

QTimeEdit *AutoDarkModeForm::timeEdit(const char *name, const QString &accessibleName,
                                      const settings::Number &hour, const settings::Number &minute,
                                      const settings::Number &period)
{
    auto *edit = new QTimeEdit(automation::fromTwelveHours(hour.read(), minute.read(), period.read()), this);
    edit->setObjectName(QString::fromLatin1(name));
    edit->setAccessibleName(accessibleName);
    edit->setDisplayFormat(QStringLiteral("h:mm AP"));
    connect(edit, &QTimeEdit::timeChanged, this, [this, &hour, &minute, &period](const QTime &time) {
        hour.write(time.hour() % 12 == 0 ? 12 : time.hour() % 12);
        minute.write(time.minute());
        period.write(time.hour() >= 12 ? 1 : 0);
        showChoice();
        apply();
    });
    return edit;
}

void AutoDarkModeForm::addHours()
{
    auto *button = new QRadioButton(tr("At these hours: light from"), this);
    button->setObjectName(QStringLiteral("hoursRadioButton"));
    m_choice->addButton(button, byHours);
    m_light = timeEdit("lightTimeEdit", tr("Light from"), settings::lightHour, settings::lightMinute,
                       settings::lightPeriod);
    m_dark = timeEdit("darkTimeEdit", tr("Dark from"), settings::darkHour, settings::darkMinute,
                      settings::darkPeriod);
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceSnug);
    row->addWidget(button);
    row->addWidget(m_light);
    row->addWidget(new QLabel(tr("dark from"), this));
    row->addWidget(m_dark);
    row->addStretch();
    settingsForm()->addRow(tr("When:"), row);
}

void AutoDarkModeForm::addSun()
{
    auto *button = new QRadioButton(tr("With the sun, at latitude"), this);
    button->setObjectName(QStringLiteral("sunRadioButton"));
    m_choice->addButton(button, bySun);
    const auto coordinate = [this](const char *name, const QString &accessibleName, const QString &example) {
        auto *line = new QLineEdit(this);
        line->setObjectName(QString::fromLatin1(name));
        line->setAccessibleName(accessibleName);
        line->setPlaceholderText(example);
        line->setFixedWidth(coordinateWidth);
        return line;
    };
    m_latitude = coordinate("latitudeLineEdit", tr("Latitude"), tr("52.52"));
    m_longitude = coordinate("longitudeLineEdit", tr("Longitude"), tr("13.405"));
    m_binding.add(m_latitude, settings::autoDarkLatitude);
    m_binding.add(m_longitude, settings::autoDarkLongitude);
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceSnug);
    row->addWidget(button);
    row->addWidget(m_latitude);
    row->addWidget(new QLabel(tr("longitude"), this));
    row->addWidget(m_longitude);
    row->addStretch();
    settingsForm()->addRow(QString(), row);
    m_place = new QLabel(tr("In degrees; south and west are negative."), this);
    m_place->setObjectName(QStringLiteral("placeLabel"));
    m_locate = controls::pushButton(
        this, {"locateButton", "", tr("&Use My Location"),
               tr("Asks Windows where this computer is; Windows may ask for your permission. The position is "
                  "rounded to a kilometre, kept in your settings and never sent anywhere.")});
    connect(m_locate, &QPushButton::clicked, this, &AutoDarkModeForm::askForPosition);
    m_privacy = new QAction(tr("Open Location Settings"), this);
    connect(m_privacy, &QAction::triggered, this,
            [] { platform::shell().openSettingsPage(QStringLiteral("privacy-location")); });
    auto *place = new QHBoxLayout;
    place->setSpacing(theme::spaceSnug);
    place->addWidget(m_locate);
    place->addWidget(m_place, 1);
    settingsForm()->addRow(QString(), place);
    m_today = new QLabel(this);
    m_today->setObjectName(QStringLiteral("todayLabel"));
    settingsForm()->addRow(tr("Today:"), m_today);
    m_tomorrow = new QLabel(this);
    m_tomorrow->setObjectName(QStringLiteral("tomorrowLabel"));
    settingsForm()->addRow(tr("Tomorrow:"), m_tomorrow);
}

void AutoDarkModeForm::addAction()
{
    auto *what = new QComboBox(this);
    what->setObjectName(QStringLiteral("actionComboBox"));
    what->setAccessibleName(tr("What is switched"));
    what->addItems({tr("Apps and Windows"), tr("Apps only"), tr("Windows only: taskbar and Start")});
    settingsForm()->addRow(tr("Switch:"), what);
    m_binding.add(what, settings::autoDarkAction);
    auto *wait = new QCheckBox(tr("Wait while a program covers the whole screen"), this);
    wait->setObjectName(QStringLiteral("fullScreenCheckBox"));
    settingsForm()->addRow(QString(), wait);
    m_binding.add(wait, settings::autoDarkWaits);
}

automation::DarkSettings AutoDarkModeForm::shown() const
{
    automation::DarkSettings settings;
    settings.bySun = m_choice->checkedId() == bySun;
    settings.light = m_light->time();
    settings.dark = m_dark->time();
    settings.position = automation::parsePosition(m_latitude->text(), m_longitude->text());
    return settings;
}

void AutoDarkModeForm::showChoice()
{
    const automation::DarkSettings settings = shown();
    m_light->setEnabled(!settings.bySun);
    m_dark->setEnabled(!settings.bySun);
    m_latitude->setEnabled(settings.bySun);
    m_longitude->setEnabled(settings.bySun);
    m_locate->setEnabled(settings.bySun);
    m_locate->setText(m_answer.isWaiting() ? tr("&Stop Asking") : tr("&Use My Location"));
    const bool typed = !m_latitude->text().isEmpty() || !m_longitude->text().isEmpty();
    m_place->setText(m_answer.isWaiting() ? tr("Asking Windows …")
                     : settings.bySun && typed && !settings.position
                         ? tr("Latitude is -90 to 90 and longitude -180 to 180 degrees.")
                         : tr("In degrees; south and west are negative."));
    const QDateTime now = QDateTime::currentDateTime();
    const auto show = [&](QLabel *label, const QDate &day) {
        const QString text = automation::dryRun(settings, day, now);
        label->setText(!text.isEmpty()  ? text
                       : settings.bySun ? tr("Type the place first")
                                        : tr("Choose two hours that differ"));
    };
    show(m_today, now.date());
    show(m_tomorrow, now.date().addDays(1));
}

// Starts the request, or cancels the running one.
void AutoDarkModeForm::askForPosition()
{
    if (m_answer.isWaiting())
        m_answer.forget();
    else
        m_answer.ask([ask = m_ask](const core::Asking &asking) { return ask(asking.cancel()); },
                     [this](const automation::DevicePosition &found) { showPosition(found); });
    showChoice();
}

void AutoDarkModeForm::showPosition(const automation::DevicePosition &found)
{
    using Failure = automation::DevicePosition::Failure;
    if (found.position) {
        m_binding.show({{settings::autoDarkLatitude.name.toString(), rounded(found.position->latitude)},
                        {settings::autoDarkLongitude.name.toString(), rounded(found.position->longitude)}});
        notice()->showNotice(NoticeBar::Kind::Success, tr("The location was taken from Windows."));
    } else if (found.failure == Failure::NotAllowed) {
        notice()->showNotice(
            NoticeBar::Kind::Warning,
            tr("Windows does not let programs know where this computer is. Allow it for desktop "
               "apps, or type the place."),
            m_privacy);
    } else {
        notice()->showNotice(NoticeBar::Kind::Warning,
                             tr("Windows does not know where this computer is. Type the place."));
    }
    showChoice();
}

QString AutoDarkModeForm::outlook() const
{
    return featureSwitch()->isChecked() ? QString() : tr("The theme stays as it is");
}
