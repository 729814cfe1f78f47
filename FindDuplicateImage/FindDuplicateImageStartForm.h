// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/DropFrame.h"

class QAction;
class NoticeBar;
class QPushButton;
class QVBoxLayout;

// Where a scan for pictures that look alike begins: a folder chosen, dropped, or one of those where pictures
// usually are.
class FindDuplicateImageStartForm : public DropFrame
{
    Q_OBJECT

public:
    explicit FindDuplicateImageStartForm(QWidget *parent = nullptr);

    void showNotice(const QString &text);
    void hideNotice();
    // Says that there is a result to go back to.
    void offerResult(const QString &text, QAction *show);

signals:
    void folderChosen(const QString &folder);

protected:
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private slots:
    void on_selectFolderButton_clicked();

private:
    void buildPage();
    QWidget *buildDropArea();
    QWidget *buildFolders();

    QPushButton *m_select;
    NoticeBar *m_notice;
    QWidget *m_dropArea = nullptr;
};
