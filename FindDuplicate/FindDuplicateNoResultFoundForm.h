// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class EmptyState;
class QPushButton;

// Shown when a scan found no duplicates.
class FindDuplicateNoResultFoundForm : public QWidget
{
    Q_OBJECT

public:
    // `details` says what was compared.
    explicit FindDuplicateNoResultFoundForm(const QString &details, QWidget *parent = nullptr);

signals:
    void noResult_backToMain();

protected:
    void showEvent(QShowEvent *event) override;

private:
    EmptyState *m_message;
    QPushButton *m_back;
};
