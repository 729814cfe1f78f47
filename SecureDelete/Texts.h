// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Shred.h"
#include "platform/Guard.h"

#include <QCoreApplication>

// Texts that the pages of secure delete show for the engine's values.
namespace securedelete
{

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(securedelete::Texts)

public:
    // "using DOD 5220.22M (7 Pass)"
    static QString method(Method method);
    // "35 passes"
    static QString passes(Method method, int randomPasses);
    // Why an item was left, as a sentence without its subject.
    static QString fault(Fault fault);
    // The outcome for one item, as shown in the report.
    static QString outcome(const ShredRecord &record);
};

Fault faultOf(platform::Guarded result);

} // namespace securedelete
