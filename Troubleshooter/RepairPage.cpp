// SPDX-License-Identifier: GPL-3.0-or-later
#include "Troubleshooter/RepairPage.h"

#include "widgets/Controls.h"
#include "widgets/NoticeBar.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QTime>
#include <QVBoxLayout>

#include <utility>

namespace repair
{

namespace
{

constexpr int iconSide = 16;
constexpr int subjectWidth = 130;

QLabel *iconLabel(const char *image, const QString &meaning, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setPixmap(controls::image(image).pixmap(iconSide, iconSide));
    label->setAccessibleName(meaning);
    label->setToolTip(meaning);
    label->setAlignment(Qt::AlignTop | Qt::AlignHCenter);
    return label;
}

QLabel *healthLabel(Health health, QWidget *parent)
{
    switch (health) {
    case Health::Good:
        return iconLabel("Checkmark16", RepairPage::tr("In order"), parent);
    case Health::Problem:
        return iconLabel("Error16", RepairPage::tr("Problem"), parent);
    case Health::Note:
        break;
    }
    return iconLabel("Info16", RepairPage::tr("Note"), parent);
}

WrappedLabel *wrapped(const QString &text, QWidget *parent)
{
    auto *label = new WrappedLabel(parent);
    label->setText(text);
    return label;
}

QLabel *sectionTitle(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setFont(theme::sectionTitle(parent->font()));
    return label;
}

} // namespace

RepairPage::RepairPage(const QString &description, std::shared_ptr<Repair> repair, QWidget *parent)
    : QWidget(parent),
      m_repair(std::move(repair)),
      m_jobs(this)
{
    m_notice = new NoticeBar(this);
    m_check = controls::pushButton(this, {"checkButton", "", tr("Check"), {}, QKeySequence::Refresh},
                                   controls::Rank::Primary);
    m_apply = controls::pushButton(this, {"applyButton", "", tr("Repair Selected")});
    m_cancel = controls::pushButton(this, {"cancelButton", "", tr("Cancel")});
    m_status = new QLabel(tr("Not checked yet."), this);
    m_status->setObjectName(QStringLiteral("statusLabel"));
    m_content = new QWidget;
    m_rows = new QVBoxLayout(m_content);
    m_findingsTitle = sectionTitle(tr("What was found"), m_content);
    m_stepsTitle = sectionTitle(tr("What can be done"), m_content);
    buildLayout(description);
    connect(m_check, &QPushButton::clicked, this, &RepairPage::check);
    connect(m_apply, &QPushButton::clicked, this, &RepairPage::apply);
    connect(m_cancel, &QPushButton::clicked, &m_jobs, &JobHost::cancel);
    showBusy();
}

void RepairPage::buildLayout(const QString &description)
{
    auto *text = wrapped(description, this);
    theme::makeMuted(text);
    auto *top = new QHBoxLayout;
    top->setSpacing(theme::spaceWide);
    top->addWidget(text, 1);
    top->addWidget(m_check, 0, Qt::AlignTop);

    m_rows->setContentsMargins(0, 0, theme::spaceSnug, 0);
    m_rows->setSpacing(theme::space);
    m_rows->addWidget(m_findingsTitle);
    m_rows->addWidget(m_stepsTitle);
    m_rows->addStretch();
    m_findingsTitle->hide();
    m_stepsTitle->hide();
    QScrollArea *area = controls::scrollArea(m_content, this);
    area->setFocusPolicy(Qt::TabFocus); // a report has nothing else to scroll it by keyboard

    auto *bottom = new QHBoxLayout;
    bottom->setSpacing(theme::spaceSnug);
    bottom->addWidget(m_status, 1);
    bottom->addWidget(m_cancel);
    bottom->addWidget(m_apply);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, theme::space, 0, 0);
    layout->setSpacing(theme::space);
    layout->addLayout(top);
    layout->addWidget(m_notice);
    layout->addWidget(area, 1);
    layout->addLayout(bottom);
}

JobOptions RepairPage::options(const QString &busyText)
{
    return {.busyText = busyText, .progress = [this](const core::ScanProgress &progress) {
                if (!progress.path.isEmpty())
                    m_status->setText(progress.path + QStringLiteral(" ..."));
            }};
}

void RepairPage::check()
{
    if (m_jobs.isBusy())
        return;
    m_notice->hide();
    m_jobs.run(
        options(tr("a check")),
        [repair = m_repair](const core::JobControl &job) { return repair->check(job.cancel); },
        [this, before = m_status->text()](auto &job) {
            const auto found = job.takeResult();
            m_status->setText(before);
            if (found && !job.stopRequested())
                showCheck(*found);
            else if (!job.error().isEmpty())
                m_notice->showNotice(NoticeBar::Kind::Error, job.error());
            showBusy();
        });
    m_status->setText(tr("Checking ..."));
    showBusy();
}

void RepairPage::apply()
{
    if (m_jobs.isBusy() || chosen().isEmpty())
        return;
    m_notice->hide();
    m_jobs.run(
        options(tr("a repair")),
        [repair = m_repair, shown = m_found, steps = chosen()](const core::JobControl &job) {
            return applySteps(*repair, shown, steps, job.cancel,
                              [&job](const QString &text) { job.progress.setPath(text); });
        },
        [this](auto &job) {
            m_jobs.keepOpen(); // so that the user can read the report
            if (const auto report = job.takeResult())
                showReport(*report);
            else
                m_notice->showNotice(NoticeBar::Kind::Error, job.error());
            showBusy();
        });
    showBusy();
}

void RepairPage::showCheck(const Examination &found)
{
    m_found = found;
    m_checked = true;
    showFindings();
    showSteps({});
    const qsizetype problems = found.problems();
    m_status->setText(tr("Checked at %1").arg(QTime::currentTime().toString(QStringLiteral("hh:mm"))));
    if (problems == 0)
        m_notice->showNotice(NoticeBar::Kind::Success, tr("No problem was found."));
    else
        m_notice->showNotice(NoticeBar::Kind::Warning, problems == 1
                                                           ? tr("One problem was found.")
                                                           : tr("%1 problems were found.").arg(problems));
}

void RepairPage::showFindings()
{
    delete m_findings;
    m_findings = new QWidget(m_content);
    auto *grid = new QGridLayout(m_findings);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(theme::spaceSnug);
    grid->setVerticalSpacing(theme::spaceSnug);
    grid->setColumnStretch(2, 1);
    grid->setColumnMinimumWidth(1, subjectWidth);
    for (int row = 0; row < m_found.findings.size(); ++row) {
        const Finding &finding = m_found.findings.at(row);
        grid->addWidget(healthLabel(finding.health, m_findings), row, 0, Qt::AlignTop);
        grid->addWidget(new QLabel(finding.subject, m_findings), row, 1, Qt::AlignTop);
        grid->addWidget(wrapped(finding.text, m_findings), row, 2);
    }
    m_rows->insertWidget(m_rows->indexOf(m_findingsTitle) + 1, m_findings);
    m_findingsTitle->show();
}

void RepairPage::showSteps(const QList<Outcome> &outcomes)
{
    delete m_steps;
    m_boxes.clear();
    m_steps = new QWidget(m_content);
    auto *grid = new QGridLayout(m_steps);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(theme::spaceSnug);
    grid->setVerticalSpacing(theme::spaceTight);
    grid->setColumnStretch(1, 1);
    grid->setColumnMinimumWidth(0, theme::spaceWide); // aligned with the check box's text
    for (const Step &step : m_found.steps) {
        auto *box = new QCheckBox(step.advised ? tr("%1 (advised)").arg(step.title) : step.title, m_steps);
        box->setObjectName(step.id + QStringLiteral("CheckBox"));
        box->setAccessibleDescription(step.plan);
        box->setEnabled(step.obstacle.isEmpty());
        connect(box, &QCheckBox::toggled, this, &RepairPage::showBusy);
        m_boxes.append(box);
        grid->addWidget(box, grid->rowCount(), 0, 1, 2, Qt::AlignLeft);
        auto *plan = wrapped(step.obstacle.isEmpty() ? step.plan : step.obstacle, m_steps);
        theme::makeMuted(plan);
        grid->addWidget(plan, grid->rowCount(), 1);
        for (const Outcome &outcome : outcomes) {
            if (outcome.step != step.id)
                continue;
            const int row = grid->rowCount();
            grid->addWidget(outcome.done ? iconLabel("Checkmark16", tr("Done"), m_steps)
                                         : iconLabel("Warning16", tr("Not done"), m_steps),
                            row, 0, Qt::AlignTop);
            auto *text = wrapped(outcome.text, m_steps);
            text->setObjectName(step.id + QStringLiteral("OutcomeLabel"));
            grid->addWidget(text, row, 1);
        }
        grid->setRowMinimumHeight(grid->rowCount(), theme::spaceTight);
    }
    QWidget *before = m_check;
    for (QCheckBox *box : std::as_const(m_boxes)) {
        setTabOrder(before, box);
        before = box;
    }
    setTabOrder(before, m_apply);
    m_rows->insertWidget(m_rows->indexOf(m_stepsTitle) + 1, m_steps);
    m_stepsTitle->show();
}

void RepairPage::showReport(const Report &report)
{
    m_found = report.after;
    showFindings();
    showSteps(report.outcomes);
    m_status->setText(tr("Checked again at %1").arg(QTime::currentTime().toString(QStringLiteral("hh:mm"))));
    if (report.restart())
        m_notice->showNotice(
            NoticeBar::Kind::Warning,
            report.allDone() ? tr("Restart Windows for this to take effect.")
                             : tr("Not everything was done. Restart Windows for the rest to take effect."));
    else if (report.allDone())
        m_notice->showNotice(NoticeBar::Kind::Success, report.after.problems() == 0
                                                           ? tr("Done. No problems remain.")
                                                           : tr("Done, but there are still problems."));
    else
        m_notice->showNotice(NoticeBar::Kind::Warning, tr("Not everything was done. See below."));
}

QStringList RepairPage::chosen() const
{
    QStringList ids;
    for (qsizetype index = 0; index < m_boxes.size(); ++index) {
        if (m_boxes.at(index)->isChecked())
            ids.append(m_found.steps.at(index).id);
    }
    return ids;
}

void RepairPage::showBusy()
{
    const bool busy = m_jobs.isBusy();
    const bool turns = std::exchange(m_busy, busy) != busy;
    const bool focused = isAncestorOf(QApplication::focusWidget());
    m_check->setEnabled(!busy);
    m_check->setText(m_checked ? tr("Check Again") : tr("Check"));
    m_apply->setVisible(m_checked);
    m_apply->setEnabled(!busy && !chosen().isEmpty());
    m_cancel->setVisible(busy);
    m_content->setEnabled(!busy);
    if (turns && focused) // the focused widget is disabled or hidden now
        (busy ? m_cancel : m_check)->setFocus();
}

} // namespace repair
