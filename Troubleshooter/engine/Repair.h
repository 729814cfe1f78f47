// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

// A repair: findings, possible steps with their side effects, execution, and a new check. Only steps that
// were shown and chosen are executed.
namespace repair
{

enum class Health { Good, Note, Problem };

struct Finding {
    Health health = Health::Good;
    QString subject; // "Address"
    QString text;
};

// One possible action.
struct Step {
    QString id;           // "flush"
    QString title;        // what it does
    QString plan;         // what it closes, resets or interrupts, and what is saved for undoing it
    QString obstacle;     // why it is not possible now; empty if it is
    bool advised = false; // recommended by the findings
    bool elevated = false;
    bool restart = false; // takes effect after Windows is restarted
};

struct Examination {
    QList<Finding> findings;
    QList<Step> steps;

    qsizetype problems() const;
    const Step *step(const QString &id) const;
};

struct Outcome {
    QString step; // id of the step
    QString title;
    bool done = false;
    bool restart = false; // message for the user
    QString text;
};

// All functions may block; any thread, one call at a time.
class Repair
{
public:
    virtual ~Repair() = default;

    // Read-only.
    virtual Examination check(const core::CancelFlag &cancel) = 0;
    // Executes a step of the latest check() that has no obstacle. Completes it, or reports which part was
    // done.
    virtual Outcome apply(const Step &step, const core::CancelFlag &cancel) = 0;
};

struct Report {
    QList<Outcome> outcomes; // in the order of execution
    Examination after;

    bool allDone() const;
    bool restart() const;
};

// Executes the chosen steps. Checks first, since time has passed, and skips steps that were not shown, no
// longer apply or are blocked now. A cancel takes effect between steps. Checks again at the end. `progress`
// receives the current action.
Report applySteps(Repair &repair, const Examination &shown, const QStringList &chosen,
                  const core::CancelFlag &cancel, const std::function<void(const QString &)> &progress);

} // namespace repair
