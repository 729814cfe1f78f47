// SPDX-License-Identifier: GPL-3.0-or-later
#include "Troubleshooter/engine/Repair.h"

#include <QCoreApplication>

#include <algorithm>

namespace repair
{

namespace
{

QString tr(const char *text)
{
    return QCoreApplication::translate("repair", text);
}

} // namespace

qsizetype Examination::problems() const
{
    return std::ranges::count(findings, Health::Problem, &Finding::health);
}

const Step *Examination::step(const QString &id) const
{
    const auto found = std::ranges::find(steps, id, &Step::id);
    return found == steps.cend() ? nullptr : &*found;
}

bool Report::allDone() const
{
    return std::ranges::all_of(outcomes, &Outcome::done);
}

bool Report::restart() const
{
    return std::ranges::any_of(outcomes, &Outcome::restart);
}

Report applySteps(Repair &repair, const Examination &shown, const QStringList &chosen,
                  const core::CancelFlag &cancel, const std::function<void(const QString &)> &progress)
{
    Report report;
    progress(tr("Checking again before anything is done"));
    const Examination now = repair.check(cancel);
    for (const Step &step : shown.steps) {
        if (!chosen.contains(step.id))
            continue;
        Outcome outcome{step.id, step.title};
        const Step *current = now.step(step.id);
        if (cancel.isSet())
            outcome.text = tr("Not done: you cancelled.");
        else if (!step.obstacle.isEmpty() || !current)
            outcome.text = tr("Not done: it cannot be done now.");
        else if (!current->obstacle.isEmpty())
            outcome.text = current->obstacle;
        else {
            progress(step.title);
            outcome = repair.apply(*current, cancel);
            outcome.step = step.id;
            outcome.title = step.title;
        }
        report.outcomes.append(outcome);
    }
    progress(tr("Checking again"));
    // The final check runs even after a cancel, since steps may have been executed.
    const core::CancelFlag never;
    report.after = repair.check(never);
    return report;
}

} // namespace repair
