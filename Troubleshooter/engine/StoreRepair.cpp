// SPDX-License-Identifier: GPL-3.0-or-later
#include "Troubleshooter/engine/StoreRepair.h"

#include "Troubleshooter/engine/ToolText.h"
#include "core/SizeText.h"

#include <QCoreApplication>

namespace repair
{

namespace
{

QString tr(const char *text)
{
    return QCoreApplication::translate("repair", text);
}

} // namespace

Examination StoreRepair::check(const core::CancelFlag &)
{
    const StoreFacts facts = m_store.facts();
    Examination found;
    found.findings.append(
        {facts.installed ? Health::Good : Health::Problem, tr("Microsoft Store"),
         facts.installed ? tr("Installed for this account.") : tr("Not installed for this account.")});
    if (facts.installed)
        found.findings.append({Health::Good, tr("Cache"), core::sizeText(facts.cacheBytes)});
    for (const StoreService &service : facts.services) {
        if (service.disabled)
            found.findings.append({Health::Problem, tr("Service"),
                                   tr("\"%1\" is disabled, so the Store cannot install anything. Enable it "
                                      "in Windows' \"Services\".")
                                       .arg(service.title)});
    }
    if (!facts.services.isEmpty() && found.problems() == (facts.installed ? 0 : 1))
        found.findings.append(
            {Health::Good, tr("Services"), tr("The services the Store needs are enabled.")});
    found.steps.append({.id = QStringLiteral("reset"),
                        .title = tr("Empty the cache of the Store"),
                        .plan = tr("The Store closes and opens again after half a minute. Downloads in "
                                   "progress start over. Your apps, their data and your account stay."),
                        .obstacle = !facts.installed     ? tr("The Store is not installed.")
                                    : !facts.toolIsThere ? tr("This Windows has no wsreset program.")
                                                         : QString()});
    return found;
}

Outcome StoreRepair::apply(const Step &step, const core::CancelFlag &cancel)
{
    const ToolRun run = m_tools.run(Tool::ResetStore, {}, cancel);
    return {step.id, step.title, run.succeeded(), false, toolText(run, tr("The cache is empty."))};
}

} // namespace repair
