// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FLWidget.h"

#include <QTimer>

class AgentLogView;
class NoticeBar;
class QCheckBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;
class WrappedLabel;

namespace settings
{
struct Flag;
}

namespace automation
{

// The page of a background feature: its switch, what happens next, what happened last and why, the settings,
// and the log. The page only stores settings and notifies the agent, which does the work.
class FeaturePage : public FLWidget
{
    Q_OBJECT

protected:
    struct Texts {
        QString title;
        QString description;
        QString switchText; // "Keep this PC awake"
    };

    // `feature`: the feature's name in the agent (automation/engine/AgentLog.h). `enabled` must be a
    // constant.
    FeaturePage(QStringView feature, const settings::Flag &enabled, const Texts &texts, QWidget *parent);

    QCheckBox *featureSwitch() const { return m_switch; }
    // The layout for settings: rows with a label.
    QFormLayout *settingsForm() const { return m_settings; }
    // Adds a button beside the switch, for an immediate action.
    void addAction(QPushButton *button);
    // Adds a widget below the switch, above the status lines.
    void addToCard(QWidget *widget);
    NoticeBar *notice() const { return m_notice; }

    // Notifies the agent of changed settings.
    void apply();
    // Called before the flag is stored; return false to reject the change.
    virtual bool mayTurn(bool on)
    {
        Q_UNUSED(on)
        return true;
    }
    // The page's own forecast while the agent has none; empty for nothing.
    virtual QString outlook() const { return {}; }
    // Reads and shows the state that the agent has stored.
    void refresh();
    void showSwitch(); // from the stored flag
    // Called after each refresh(), every second while the page is visible.
    virtual void refreshed() {}

private:
    QWidget *statusCard(const QString &switchText);
    void turn(bool on);
    void orderTabs();

    QStringView m_feature;
    const settings::Flag &m_enabled;
    QCheckBox *m_switch;
    QVBoxLayout *m_actions;
    QVBoxLayout *m_extras;
    WrappedLabel *m_now;
    WrappedLabel *m_next;
    WrappedLabel *m_last;
    QWidget *m_agentRow;
    QPushButton *m_startAgent;
    QFormLayout *m_settings;
    NoticeBar *m_notice;
    AgentLogView *m_log;
    QTimer m_refresh;
};

} // namespace automation
