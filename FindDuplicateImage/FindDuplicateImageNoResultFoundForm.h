// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class EmptyState;
class QPushButton;
struct ImageReport;

// Shown when no similar images were found.
class FindDuplicateImageNoResultFoundForm : public QWidget
{
    Q_OBJECT

public:
    explicit FindDuplicateImageNoResultFoundForm(QWidget *parent = nullptr);

    void showScan(const ImageReport &report, const QString &notice = {});

signals:
    void noResult_backToMain();

protected:
    void showEvent(QShowEvent *event) override;

private:
    EmptyState *m_state;
    QPushButton *m_back;
};
