// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMessageBox>
#include <QString>
#include <QStringList>

class QWidget;

namespace platform
{

// Flags and results of the Windows message box (winuser.h), for callers that do not include <windows.h>.
inline constexpr unsigned yesNoWarning = 0x34; // MB_YESNO | MB_ICONEXCLAMATION
inline constexpr int idYes = 6;
inline constexpr int idNo = 7;

// All message boxes and file dialogs of the program. Interface thread only. All functions return after the
// user has answered; window messages are processed meanwhile, so callers must copy what they need, check
// their objects again afterwards, and keep their page disabled. Tests install a FakeDialogs, so that no test
// run waits for a person.
class Dialogs
{
public:
    virtual ~Dialogs() = default;

    // The Windows message box without an owner; returns the id of the pressed button.
    virtual int messageBox(const QString &text, const QString &caption, unsigned flags) = 0;

    // Question, information and warning in the application's style; the text is shown as plain text.
    virtual QMessageBox::StandardButton ask(QWidget *parent, const QString &title, const QString &text,
                                            QMessageBox::StandardButtons buttons = QMessageBox::Yes |
                                                                                   QMessageBox::No,
                                            QMessageBox::StandardButton preset = QMessageBox::No) = 0;
    virtual void inform(QWidget *parent, const QString &title, const QString &text) = 0;
    virtual void warn(QWidget *parent, const QString &title, const QString &text) = 0;

    // File dialogs; native separators, empty when cancelled. `filter` as in QFileDialog: "CSV (*.csv)".
    virtual QString chooseFolder(QWidget *parent, const QString &title, const QString &start = {}) = 0;
    virtual QString chooseFileToSave(QWidget *parent, const QString &title, const QString &suggested,
                                     const QString &filter) = 0;
    virtual QStringList chooseFilesToOpen(QWidget *parent, const QString &title, const QString &start,
                                          const QString &filter) = 0;
};

Dialogs &dialogs();
// For tests; null restores the real implementation. The object is not owned.
void setDialogs(Dialogs *replacement);

} // namespace platform
