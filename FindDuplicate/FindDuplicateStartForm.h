// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/DropFrame.h"

class QAction;
class NoticeBar;
class QLabel;
class QPushButton;
class QToolButton;
class QVBoxLayout;

// Where a scan begins: any folder, or one dropped on the page.
class FindDuplicateStartForm : public DropFrame
{
    Q_OBJECT

public:
    explicit FindDuplicateStartForm(QWidget *parent = nullptr);

    void showNotice(const QString &text);
    void hideNotice();
    // Says that there is a result to go back to.
    void offerResult(const QString &text, QAction *show);
    // What the next scan compares, in a sentence.
    void showScope(const QString &text);

signals:
    void folderChosen(const QString &folder);
    void optionsRequested();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void buildHeader(QVBoxLayout *page);
    void buildFrame(QVBoxLayout *page);
    void selectFolder();

    QPushButton *m_select;
    QToolButton *m_options;
    QLabel *m_scope;
    NoticeBar *m_notice;
};
