// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QProgressBar;

// Shown while the models of a result are freed.
class DiskUsageClearRamForm : public QWidget
{
    Q_OBJECT

public:
    explicit DiskUsageClearRamForm(QWidget *parent = nullptr);

    void begin(int steps);
    void addStep();

private:
    QProgressBar *m_bar;
};
