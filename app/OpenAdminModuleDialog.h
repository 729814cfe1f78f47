// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

// Waits for the window of a companion that is being started, and closes when that appears or on "Cancel".
// Modeless; deletes itself. If the user refuses the elevation there is no notification, and the dialog waits
// until it is cancelled.
class OpenAdminModuleDialog : public QDialog
{
    Q_OBJECT

public:
    // The module's name is also the title of the awaited window. If it is not installed, the dialog says so,
    // but waits all the same.
    OpenAdminModuleDialog(const QString &moduleName, bool installed, QWidget *parent = nullptr);

public slots:
    void MyTimerSlot();
    void on_pushButton_clicked() { close(); }

private:
    QString m_moduleName;
};
