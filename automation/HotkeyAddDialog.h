// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/ShortcutCommand.h"

#include <QDialog>

#include <optional>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QToolButton;

// Adds a shortcut, or changes the one that it is given.
class HotkeyAddDialog : public QDialog
{
    Q_OBJECT

public:
    explicit HotkeyAddDialog(QWidget *parent = nullptr);

    // Fills the fields with a stored shortcut.
    void edit(const automation::ShortcutCommand &command);
    automation::ShortcutCommand command() const;

signals:
    // "Save": the stored form.
    void insertDataSignal(const QString &command);

private:
    struct Field {
        QLabel *label;
        QWidget *row;
    };

    void buildFields();
    void buildLayout();
    QWidget *withButton(QLineEdit *edit, QToolButton *button);
    Field addField(QFormLayout *form, const QString &label, QWidget *row, QWidget *buddy);
    void connectFields();
    void showAction();
    void check();
    void chooseFolder(QLineEdit *edit);
    void chooseProgram();
    automation::ShortcutAction action() const;

    QLabel *m_headline;
    QComboBox *m_key1;
    QComboBox *m_key2;
    QLineEdit *m_key3;
    QComboBox *m_action1;
    QComboBox *m_action2;
    QLineEdit *m_startIn;
    QToolButton *m_startInButton;
    QLineEdit *m_app;
    QToolButton *m_appButton;
    QSpinBox *m_delay;
    QLabel *m_notice;
    QPushButton *m_save;
    Field m_builtInField{};
    Field m_appField{};
    Field m_startInField{};
    Field m_delayField{};
};
