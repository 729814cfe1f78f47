// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

namespace platform
{

// Disk, any thread. A text that a program or library says of itself ("CompanyName", "FileDescription"), in
// the first language that it has. Empty when there is none.
QString versionText(const QString &file, QStringView name);

} // namespace platform
