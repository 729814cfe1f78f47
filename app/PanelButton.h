// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/RunningJobs.h"

#include <QToolButton>

// An entry of the side panel: icon and text side by side; the checked one is tinted and has a bar in the
// accent colour at its leading edge. A dot shows that a job is running on the page, or has ended there.
class PanelButton : public QToolButton
{
    Q_OBJECT

public:
    explicit PanelButton(QWidget *parent = nullptr);

    void showJob(RunningJobs::State state);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    RunningJobs::State m_job = RunningJobs::State::None;
};
