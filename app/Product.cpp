// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Product.h"

#include <QString>

QVersionNumber product::version()
{
    return QVersionNumber::fromString(QLatin1StringView(LARKSPUR_VERSION));
}
