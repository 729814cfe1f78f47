// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Drives.h"
#include "widgets/DropFrame.h"

#include <QHash>

#include <optional>

class CardGridLayout;
class ClickableLabel;
class FLCardButton;
class NoticeBar;
class QLabel;
class QPushButton;
class QToolButton;
class QVBoxLayout;

// Where a scan begins: any folder, a drive, a special folder, a folder scanned before, or a folder dropped on
// the page.
class DiskUsageStartForm : public DropFrame
{
    Q_OBJECT

public:
    explicit DiskUsageStartForm(QWidget *parent = nullptr);
    // With another way of reading drives.
    explicit DiskUsageStartForm(platform::DriveLister::Reader reader, QWidget *parent = nullptr);
    ~DiskUsageStartForm() override;

    void showRecentFolders(const QStringList &folders);
    void showNotice(const QString &text);
    void hideNotice();
    // What is known of the drive, when it has been read.
    std::optional<platform::Drive> drive(const QString &root) const;

    // Reads the drives again; driveRead() follows for each.
    void refreshDrives();

signals:
    void driveRead(const platform::Drive &drive);
    void folderChosen(const QString &folder);
    void optionsRequested();
    void recentFoldersCleared();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void buildPage();
    QWidget *buildHeader();
    CardGridLayout *addSection(QVBoxLayout *page, QLabel *title, int cardWidth, QWidget *beside = nullptr);
    void buildSpecialFolders();
    void connectAll();

    FLCardButton *addCard(CardGridLayout *grid, const QString &title, const QString &icon,
                          const QString &folder);
    void selectFolder();
    void showDrive(const platform::Drive &drive);
    void orderTabs();

    QPushButton *m_select;
    QToolButton *m_options;
    NoticeBar *m_notice;
    QLabel *m_recentTitle;
    ClickableLabel *m_clearRecent;
    CardGridLayout *m_driveGrid = nullptr;
    CardGridLayout *m_specialGrid = nullptr;
    CardGridLayout *m_recentGrid = nullptr;
    QHash<QString, FLCardButton *> m_driveCards;
    QHash<QString, platform::Drive> m_drives;
    platform::DriveLister m_lister;
};
