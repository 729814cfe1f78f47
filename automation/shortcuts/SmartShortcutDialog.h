// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/FormDialog.h"
#include "automation/shortcuts/ShortcutFiles.h"
#include "core/LatestAnswer.h"

class QComboBox;
class QLineEdit;
class QSpinBox;
class QToolButton;

// Makes a smart shortcut, or changes the one that it is given. Stays open until its owner has stored what was
// asked for.
class SmartShortcutDialog : public FormDialog
{
    Q_OBJECT

public:
    // `places`: where the shortcut can be put.
    explicit SmartShortcutDialog(const QList<automation::ShortcutPlace> &places, QWidget *parent = nullptr);

    // Fills the fields from a program or from a shortcut to one.
    void propose(const QString &path);
    // Fills the fields with a shortcut that exists. It stays where it is.
    void edit(const automation::SmartShortcut &shortcut);

    automation::ShortcutWish wish() const;
    QString folder() const;

    // It was not stored: says why, and goes on.
    void refuse(const QString &problem);

signals:
    // "Save".
    void saveRequested();

private:
    void buildFields();
    void addRows();
    void connectFields();
    void take(const automation::ShortcutWish &wish);
    void proposeName();
    void chooseProgram();
    void check();
    automation::Priority priority() const;

    QLineEdit *m_program;
    QToolButton *m_programButton;
    QLineEdit *m_arguments;
    QLineEdit *m_startIn;
    QToolButton *m_startInButton;
    QComboBox *m_priority;
    QComboBox *m_window;
    QSpinBox *m_processors;
    QLineEdit *m_name;
    QComboBox *m_place;
    QLineEdit *m_description;
    bool m_editing = false;
    QString m_programText;  // what the program says of itself
    QString m_proposedName; // the user has typed another one, or not
    core::LatestAnswer m_proposal;
};
