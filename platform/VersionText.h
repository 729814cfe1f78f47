// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

namespace platform
{

// Does disk I/O; any thread. A string from a file's version resource ("CompanyName", "FileDescription"), in
// the first language present. Empty if there is none.
QString versionText(const QString &file, QStringView name);

} // namespace platform
