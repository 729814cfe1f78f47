// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/StayAwakeForm.h"

#include "automation/engine/AgentLog.h"
#include "platform/PowerSchemes.h"
#include "platform/Programs.h"
#include "settings/AgentState.h"
#include "settings/StayAwakeSettings.h"
#include "widgets/NoticeBar.h"
#include "widgets/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSpinBox>

using automation::FeaturePage;

namespace
{

QHBoxLayout *row(std::initializer_list<QWidget *> widgets)
{
    auto *layout = new QHBoxLayout;
    layout->setSpacing(theme::spaceSnug);
    for (QWidget *widget : widgets)
        layout->addWidget(widget);
    layout->addStretch();
    return layout;
}

QCheckBox *named(const char *name, const QString &text)
{
    auto *box = new QCheckBox(text);
    box->setObjectName(QString::fromLatin1(name));
    return box;
}

} // namespace

StayAwakeForm::StayAwakeForm(QWidget *parent)
    : FeaturePage(automation::features::stayAwake, settings::stayAwakeActive,
                  {tr("Stay Awake"),
                   tr("Keeps this PC from going to sleep, for as long as you need it. The background agent "
                      "does it, also while this window is closed."),
                   tr("Keep this PC awake")},
                  parent),
      m_binding(SettingsBinding::Write::OnChange)
{
    settings::takeOverWakeward();
    addDuration();
    addPower();
    addEnd();
    showDuration();
    connect(&m_binding, &SettingsBinding::changed, this, [this] { apply(); });
    for (QRadioButton *button : {m_forEver, m_forTime, m_untilEnd})
        connect(button, &QRadioButton::clicked, this, &StayAwakeForm::storeDuration);
    connect(m_duration, &QSpinBox::editingFinished, this, &StayAwakeForm::storeDuration);
    connect(m_unit, &QComboBox::activated, this, &StayAwakeForm::storeDuration);
    connect(m_program, &QComboBox::activated, this, &StayAwakeForm::storeDuration);
    connect(m_program->lineEdit(), &QLineEdit::editingFinished, this, &StayAwakeForm::storeDuration);
}

void StayAwakeForm::addDuration()
{
    m_forEver = new QRadioButton(tr("Until I switch it off"));
    m_forEver->setObjectName(QStringLiteral("foreverRadioButton"));
    m_forTime = new QRadioButton(tr("For"));
    m_forTime->setObjectName(QStringLiteral("durationRadioButton"));
    m_duration = new QSpinBox;
    m_duration->setObjectName(QStringLiteral("durationSpinBox"));
    m_duration->setAccessibleName(tr("Duration"));
    m_duration->setRange(1, settings::awakeDuration.maximum);
    m_duration->setValue(30);
    m_unit = new QComboBox;
    m_unit->setObjectName(QStringLiteral("durationUnitComboBox"));
    m_unit->setAccessibleName(tr("Unit of the duration"));
    m_unit->addItems({tr("minutes"), tr("hours")});
    m_untilEnd = new QRadioButton(tr("Until this program has ended:"));
    m_untilEnd->setObjectName(QStringLiteral("programRadioButton"));
    m_program = new QComboBox;
    m_program->setObjectName(QStringLiteral("programComboBox"));
    m_program->setAccessibleName(tr("Program that is waited for"));
    m_program->setEditable(true);
    m_program->setMinimumContentsLength(24);
    m_program->addItems(platform::programsWithWindows());
    m_program->setCurrentIndex(-1);
    m_program->lineEdit()->setPlaceholderText(tr("setup.exe"));

    settingsForm()->addRow(tr("How long:"), m_forEver);
    settingsForm()->addRow(QString(), row({m_forTime, m_duration, m_unit}));
    settingsForm()->addRow(QString(), row({m_untilEnd, m_program}));
}

void StayAwakeForm::addPower()
{
    auto *monitor = named("monitorOnCheckBox", tr("Keep the screen on as well"));
    settingsForm()->addRow(tr("Screen:"), monitor);
    m_binding.add(monitor, settings::awakeMonitorOn);

    auto *on = named("powerSchemeCheckBox", tr("While awake, use"));
    auto *schemes = new QComboBox;
    schemes->setObjectName(QStringLiteral("powerSchemeComboBox"));
    schemes->setAccessibleName(tr("Power scheme"));
    for (const platform::PowerScheme &scheme : platform::powerSchemes())
        schemes->addItem(scheme.name);
    settingsForm()->addRow(tr("Power scheme:"), row({on, schemes}));
    m_binding.add(on, settings::awakeSchemeOn);
    m_binding.add(schemes, settings::awakeSchemeIndex);
    // Indices shift when schemes are added, so look up the stored name.
    const int meant = schemes->findText(settings::awakeSchemeName.read());
    if (meant >= 0)
        schemes->setCurrentIndex(meant);
    connect(schemes, &QComboBox::activated, this, [this, schemes] {
        settings::awakeSchemeName.write(schemes->currentText());
        apply();
    });
    if (schemes->count() == 0) {
        schemes->addItem(tr("Windows lists none"));
        on->setEnabled(false);
    }
    schemes->setEnabled(on->isChecked() && on->isEnabled());
    connect(on, &QCheckBox::toggled, schemes, [schemes](bool checked) {
        schemes->setEnabled(checked);
        if (checked)
            settings::awakeSchemeName.write(schemes->currentText());
    });

    auto *nudge = named("simulatePressCheckBox", tr("Look busy to other programs: touch the pointer every"));
    auto *seconds = new QSpinBox;
    seconds->setObjectName(QStringLiteral("simulatePressSpinBox"));
    seconds->setAccessibleName(tr("Seconds between two touches"));
    seconds->setSuffix(tr(" seconds"));
    settingsForm()->addRow(tr("Activity:"), row({nudge, seconds}));
    m_binding.add(nudge, settings::awakeNudge);
    m_binding.add(seconds, settings::awakeNudgeSeconds);
}

void StayAwakeForm::addEnd()
{
    auto *shutdown = named("shutdownCheckBox", tr("Shut down Windows at the end, after a minute to stop it"));
    settingsForm()->addRow(tr("At the end:"), shutdown);
    m_binding.add(shutdown, settings::awakeShutDown);
    auto *lid = named("lidCheckBox", tr("Stay awake when the lid is closed"));
    settingsForm()->addRow(tr("Laptop:"), lid);
    m_binding.add(lid, settings::awakeWithLidClosed);
    auto *battery = named("batteryCheckBox", tr("Stay awake when the battery is low"));
    settingsForm()->addRow(QString(), battery);
    m_binding.add(battery, settings::awakeOnLowBattery);
}

void StayAwakeForm::showDuration()
{
    const QString program = settings::awakeProgram.read();
    const int duration = settings::awakeDuration.read();
    m_unit->setCurrentIndex(settings::awakeDurationUnit.read());
    if (duration > 0)
        m_duration->setValue(duration);
    if (!program.isEmpty()) {
        m_program->setEditText(program);
        m_untilEnd->setChecked(true);
    } else {
        (duration > 0 ? m_forTime : m_forEver)->setChecked(true);
    }
    m_duration->setEnabled(m_forTime->isChecked());
    m_unit->setEnabled(m_forTime->isChecked());
    m_program->setEnabled(m_untilEnd->isChecked());
}

void StayAwakeForm::storeDuration()
{
    m_duration->setEnabled(m_forTime->isChecked());
    m_unit->setEnabled(m_forTime->isChecked());
    m_program->setEnabled(m_untilEnd->isChecked());
    const QString program = m_untilEnd->isChecked() ? m_program->currentText().trimmed() : QString();
    const int duration = m_forTime->isChecked() ? m_duration->value() : 0;
    if (program == settings::awakeProgram.read() && duration == settings::awakeDuration.read() &&
        m_unit->currentIndex() == settings::awakeDurationUnit.read())
        return;
    settings::awakeProgram.write(program);
    settings::awakeDurationUnit.write(m_unit->currentIndex());
    settings::awakeDuration.write(duration);
    if (m_untilEnd->isChecked() && program.isEmpty())
        return; // not entered yet
    settings::writeAgentNote(settings::awakeEndNote, {});
    apply();
}

bool StayAwakeForm::mayTurn(bool on)
{
    if (on && m_untilEnd->isChecked() && m_program->currentText().trimmed().isEmpty()) {
        notice()->showNotice(NoticeBar::Kind::Warning, tr("Choose the program to wait for."));
        m_program->setFocus();
        return false;
    }
    if (on)
        settings::writeAgentNote(settings::awakeEndNote, {}); // starts a new period
    return true;
}

QString StayAwakeForm::outlook() const
{
    return featureSwitch()->isChecked() ? QString() : tr("This PC sleeps as set in Windows");
}

void StayAwakeForm::shellEvent(ShellEvent event, quint32 value)
{
    Q_UNUSED(value) // the stored state is more recent
    if (event == ShellEvent::StayAwakeState)
        refresh();
}
