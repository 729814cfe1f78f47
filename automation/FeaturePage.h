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

// The page of a background feature: whether it is on, what happens next, what happened last and why, and one
// switch; the settings below, and the log. A page stores settings and tells the agent, which acts.
class FeaturePage : public FLWidget
{
    Q_OBJECT

protected:
    struct Texts {
        QString title;
        QString description;
        QString switchText; // "Keep this PC awake"
    };

    // `feature`: the agent's name of it (automation/engine/AgentLog.h). `enabled`: a constant.
    FeaturePage(QStringView feature, const settings::Flag &enabled, const Texts &texts, QWidget *parent);

    QCheckBox *featureSwitch() const { return m_switch; }
    // Where settings go: rows with a label.
    QFormLayout *settingsForm() const { return m_settings; }
    // Beside the switch, for what is done at once.
    void addAction(QPushButton *button);
    // Below the switch, above the lines of what happens.
    void addToCard(QWidget *widget);
    NoticeBar *notice() const { return m_notice; }

    // Tells the agent that something was stored.
    void apply();
    // Before the flag is stored: false keeps the switch where it was.
    virtual bool mayTurn(bool on)
    {
        Q_UNUSED(on)
        return true;
    }
    // What the page says by itself, of a feature that is on or would be; empty for nothing.
    virtual QString outlook() const { return {}; }
    // Reads what the agent has left, and shows it.
    void refresh();
    void showSwitch(); // as it is stored
    // After refresh(), which comes each second as well while the page is on the screen.
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
