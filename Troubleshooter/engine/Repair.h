// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

// A repair: what is found, what could be done about it and what that would cost, the doing, and what is found
// then. Nothing is done that was not shown and chosen.
namespace repair
{

enum class Health { Good, Note, Problem };

struct Finding {
    Health health = Health::Good;
    QString subject; // "Address"
    QString text;
};

// One thing that can be done.
struct Step {
    QString id;           // "flush"
    QString title;        // what it does
    QString plan;         // what it closes, resets or breaks off, and what is kept for the way back
    QString obstacle;     // why it cannot be done now; empty when it can
    bool advised = false; // by what was found
    bool elevated = false;
    bool restart = false; // has its effect after Windows was restarted
};

struct Examination {
    QList<Finding> findings;
    QList<Step> steps;

    qsizetype problems() const;
    const Step *step(const QString &id) const;
};

struct Outcome {
    QString step; // id
    QString title;
    bool done = false;
    bool restart = false; // to be shown to the user
    QString text;
};

// All functions may take long; any thread, one at a time.
class Repair
{
public:
    virtual ~Repair() = default;

    // Changes nothing.
    virtual Examination check(const core::CancelFlag &cancel) = 0;
    // A step of the latest check() that has no obstacle. Ends whole, or says what was done and what not.
    virtual Outcome apply(const Step &step, const core::CancelFlag &cancel) = 0;
};

struct Report {
    QList<Outcome> outcomes; // in the order in which they were to be done
    Examination after;

    bool allDone() const;
    bool restart() const;
};

// Does the chosen steps of what was shown: looks again first, since time has passed, and leaves a step that
// was not shown, is not there any more, or has an obstacle by now. A cancel ends it between two steps. Looks
// once more at the end. `tell` is told what is being done.
Report applySteps(Repair &repair, const Examination &shown, const QStringList &chosen,
                  const core::CancelFlag &cancel, const std::function<void(const QString &)> &tell);

} // namespace repair
