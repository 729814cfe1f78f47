// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/FormDialog.h"
#include "automation/engine/ShortcutCommand.h"

class QComboBox;
class QLineEdit;
class QSpinBox;
class QToolButton;

// Adds a shortcut or edits an existing one.
class HotkeyAddDialog : public automation::FormDialog
{
    Q_OBJECT

public:
    explicit HotkeyAddDialog(QWidget *parent = nullptr);

    // Fills the fields from a stored shortcut.
    void edit(const automation::ShortcutCommand &command);
    automation::ShortcutCommand command() const;

signals:
    // Emitted by "Save", with the stored form.
    void insertDataSignal(const QString &command);

private:
    void buildFields();
    void addRows();
    void connectFields();
    void showAction();
    void check();
    void chooseProgram();
    automation::ShortcutAction action() const;

    QComboBox *m_key1;
    QComboBox *m_key2;
    QLineEdit *m_key3;
    QComboBox *m_action1;
    QComboBox *m_action2;
    QLineEdit *m_app;
    QToolButton *m_appButton;
    QLineEdit *m_startIn;
    QToolButton *m_startInButton;
    QSpinBox *m_delay;
    Row m_builtInRow{};
    Row m_appRow{};
    Row m_startInRow{};
    Row m_delayRow{};
};
