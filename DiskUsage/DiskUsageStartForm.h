// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Drives.h"
#include "widgets/StartPage.h"

#include <QHash>

#include <optional>

// The start page: choose any folder, a drive, a special folder or a recent one, or drop a folder.
class DiskUsageStartForm : public StartPage
{
    Q_OBJECT

public:
    explicit DiskUsageStartForm(QWidget *parent = nullptr);
    // With another function for reading drives.
    explicit DiskUsageStartForm(platform::DriveLister::Reader reader, QWidget *parent = nullptr);
    ~DiskUsageStartForm() override;

    void showRecentFolders(const QStringList &folders);
    // The drive's figures; nullopt before they have been read.
    std::optional<platform::Drive> drive(const QString &root) const;
    // Reads the drives again; driveRead() follows for each.
    void refreshDrives();

signals:
    void driveRead(const platform::Drive &drive);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void showDrive(const platform::Drive &drive);

    CardGridLayout *m_driveGrid;
    QHash<QString, FLCardButton *> m_driveCards;
    QHash<QString, platform::Drive> m_drives;
    platform::DriveLister m_lister;
};
