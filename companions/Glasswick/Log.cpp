// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/Log.h"

#include "automation/engine/AgentLog.h"
#include "platform/NewFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace agent
{

Log::Log(const QString &path) : m_path(path)
{
    QDir().mkpath(QFileInfo(path).path());
}

void Log::write(QStringView feature, const QString &subject, const QString &text)
{
    const QByteArray line =
        automation::logLine({QDateTime::currentDateTime(), feature.toString(), subject, text});
    if (QFileInfo(m_path).size() + line.size() > automation::maxLogBytes) {
        if (QFile full(m_path); full.open(QIODevice::ReadOnly)) {
            const QByteArray kept = automation::newerHalf(full.read(automation::maxLogBytes));
            full.close();
            platform::NewFile::save(m_path, kept);
        }
    }
    QFile file(m_path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append))
        file.write(line);
}

} // namespace agent
