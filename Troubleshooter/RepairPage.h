// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/Repair.h"
#include "widgets/JobHost.h"

#include <QWidget>

#include <memory>

class NoticeBar;
class QCheckBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QScrollArea;
class QVBoxLayout;

namespace repair
{

// The page of one repair: findings, possible steps with their side effects, and the report. No step is
// preselected.
class RepairPage : public QWidget
{
    Q_OBJECT

public:
    // `description`: what the check examines.
    RepairPage(const QString &description, std::shared_ptr<Repair> repair, QWidget *parent = nullptr);

private:
    void buildLayout(const QString &description);
    void check();
    void apply();
    void showCheck(const Examination &found);
    void showFindings();
    void showSteps(const QList<Outcome> &outcomes);
    void showReport(const Report &report);
    void showBusy();
    QStringList chosen() const;
    JobOptions options(const QString &busyText);

    const std::shared_ptr<Repair> m_repair; // shared with jobs
    Examination m_found;
    bool m_busy = false; // as shown
    bool m_checked = false;
    NoticeBar *m_notice;
    QPushButton *m_check;
    QPushButton *m_apply;
    QPushButton *m_cancel;
    QLabel *m_status;
    QLabel *m_findingsTitle;
    QLabel *m_stepsTitle;
    QWidget *m_content;
    QWidget *m_findings = nullptr; // recreated by each check
    QWidget *m_steps = nullptr;
    QVBoxLayout *m_rows;
    QList<QCheckBox *> m_boxes;
    JobHost m_jobs;
};

} // namespace repair
