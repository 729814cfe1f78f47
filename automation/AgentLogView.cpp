// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/AgentLogView.h"

#include "platform/KnownFolders.h"

#include <QFile>
#include <QFileInfo>
#include <QHeaderView>

using namespace automation;

namespace
{

constexpr int maxRows = 200;
constexpr int minViewHeight = 96;

} // namespace

AgentLogView::AgentLogView(QStringView feature, QWidget *parent) : FLTreeWidget(parent), m_feature(feature)
{
    setObjectName(QStringLiteral("logTreeWidget"));
    setAccessibleName(tr("What happened"));
    setHeaderLabels({tr("Time"), tr("Subject"), tr("What happened")});
    setRootIsDecorated(false);
    setPlaceholder(tr("Nothing has happened yet."));
    setMinimumHeight(minViewHeight);
    header()->resizeSection(0, 150);
    header()->resizeSection(1, 150);
}

void AgentLogView::refresh()
{
    QFile file(agentLogPath(platform::knownFolder(platform::KnownFolder::LocalAppData)));
    const QDateTime written = QFileInfo(file).lastModified();
    if (written == m_shown || !file.open(QIODevice::ReadOnly))
        return;
    m_shown = written;
    const QList<LogEntry> entries = parseLog(file.read(2 * maxLogBytes));
    clear();
    m_latest = {};
    for (auto entry = entries.crbegin(); entry != entries.crend() && topLevelItemCount() < maxRows; ++entry) {
        if (entry->feature != m_feature)
            continue;
        if (!m_latest.time.isValid())
            m_latest = *entry;
        new QTreeWidgetItem(
            this, {entry->time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")), entry->subject, entry->text});
    }
}
