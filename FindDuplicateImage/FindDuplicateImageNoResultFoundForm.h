// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include <cstddef>

class EmptyState;
class QPushButton;

// What is shown when no two pictures are alike.
class FindDuplicateImageNoResultFoundForm : public QWidget
{
    Q_OBJECT

public:
    explicit FindDuplicateImageNoResultFoundForm(QWidget *parent = nullptr);

    void showScan(const QString &root, std::size_t imagesCompared);

signals:
    void noResult_backToMain();

protected:
    void showEvent(QShowEvent *event) override;

private:
    EmptyState *m_state;
    QPushButton *m_back;
};
