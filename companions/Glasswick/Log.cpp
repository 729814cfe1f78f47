// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/Log.h"

#include "automation/engine/AgentLog.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

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
        QFile full(m_path);
        QSaveFile kept(m_path);
        if (full.open(QIODevice::ReadOnly) && kept.open(QIODevice::WriteOnly)) {
            kept.write(automation::newerHalf(full.read(automation::maxLogBytes)));
            full.close();
            kept.commit();
        }
    }
    QFile file(m_path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append))
        file.write(line);
}

} // namespace agent
