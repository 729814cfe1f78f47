// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Drives.h"

#include <QDialog>

class QComboBox;
class QPushButton;

// Asks for the drive whose free space is to be overwritten.
class FreeSpaceDialog : public QDialog
{
    Q_OBJECT

public:
    explicit FreeSpaceDialog(QWidget *parent = nullptr);

signals:
    void driveChosen(const QString &root, quint64 freeBytes);

private:
    void addDrive(const platform::Drive &drive);
    void choose();

    QComboBox *m_drives;
    bool m_picked = false; // by the user
    QPushButton *m_start;
    QList<platform::Drive> m_ready;
    platform::DriveLister m_lister;
};
