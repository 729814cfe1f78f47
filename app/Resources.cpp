// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Resources.h"

#include <QDir>

void initResources()
{
    Q_INIT_RESOURCE(resources);
    Q_INIT_RESOURCE(documents);
}
