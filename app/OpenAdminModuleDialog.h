// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

// Waits for the window of a companion that is being started, and goes when it sees it, or with "Cancel".
// Modeless; deletes itself in either case. When the companion is missing or the user has refused to start it,
// nobody says so, and the dialog waits until it is cancelled.
class OpenAdminModuleDialog : public QDialog
{
    Q_OBJECT

public:
    // The name of the module is also the title of the window that is waited for.
    // One that is not installed is said to be so, and waited for all the same.
    OpenAdminModuleDialog(const QString &moduleName, bool installed, QWidget *parent = nullptr);

public slots:
    void MyTimerSlot();
    void on_pushButton_clicked() { close(); }

private:
    QString m_moduleName;
};
