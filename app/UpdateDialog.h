// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QUrl>

class QLabel;
class QProgressBar;
class QPushButton;
class UpdateCheck;
struct UpdateAnswer;

// Checks for the newest release on creation and shows the result. Deletes itself when closed, which cancels
// the check.
class UpdateDialog : public QDialog
{
    Q_OBJECT

public:
    explicit UpdateDialog(QWidget *parent = nullptr);

private:
    void buildWidgets();
    void check();
    void showNoFeed();
    void showAnswer(const UpdateAnswer &answer);
    void openPage();

    UpdateCheck *m_check;
    QUrl m_page;
    QLabel *m_icon = nullptr;
    QLabel *m_title = nullptr;
    QLabel *m_detail = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_open = nullptr;
    QPushButton *m_again = nullptr;
    QPushButton *m_close = nullptr;
};
