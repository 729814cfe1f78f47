// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QString>

// The system's icons for files, asked for once an extension, for all lists together, and only when a row is
// painted. Interface thread.
class FileIcons
{
public:
    // `fileName` bears the extension; nothing is looked at on the disk.
    static QIcon icon(const QString &fileName);
    static QIcon missing();
    static QIcon removed();
};
