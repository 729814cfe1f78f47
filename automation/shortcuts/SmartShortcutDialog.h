// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/FormDialog.h"
#include "automation/shortcuts/ShortcutFiles.h"
#include "core/LatestAnswer.h"

class QComboBox;
class QLineEdit;
class QSpinBox;
class QToolButton;

// Creates or edits a smart shortcut. Stays open until the owner has stored it.
class SmartShortcutDialog : public automation::FormDialog
{
    Q_OBJECT

public:
    // `places`: folders to choose from.
    explicit SmartShortcutDialog(const QList<automation::ShortcutPlace> &places, QWidget *parent = nullptr);

    // Fills the fields from a program, or from a shortcut to one.
    void propose(const QString &path);
    // Fills the fields from an existing shortcut, whose folder cannot be changed.
    void edit(const automation::SmartShortcut &shortcut);

    automation::ShortcutWish wish() const;
    QString folder() const;

    // Storing failed: shows the reason and re-enables saving.
    void refuse(const QString &problem);

signals:
    // Emitted by "Save".
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
    QString m_programText;  // description from the program's version resource
    QString m_proposedName; // the suggested name; another one was typed by the user
    core::LatestAnswer m_proposal;
};
