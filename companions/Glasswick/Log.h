// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace agent
{

// Appends to the log that the forms show (automation/engine/AgentLog.h). Write errors are ignored.
class Log
{
public:
    explicit Log(const QString &path);

    void write(QStringView feature, const QString &subject, const QString &text);

private:
    QString m_path;
};

} // namespace agent
