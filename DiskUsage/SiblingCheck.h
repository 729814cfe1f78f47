// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/WorkerThread.h"

#include <QStringList>

namespace diskusage
{

// Folders beside `folder` whose path begins with its text: excluding it leaves them out as well. Full paths;
// reads the folder above.
QStringList siblingsLeftOut(const QString &folder, const core::CancelFlag &cancel);

} // namespace diskusage

// Looks for such siblings of several folders, which may lie on slow drives.
class SiblingCheck : public core::WorkerThread
{
    Q_OBJECT

public:
    explicit SiblingCheck(QStringList folders) : m_folders(std::move(folders)) {}

    // After finished().
    QStringList siblings() const { return m_siblings; }

protected:
    void run() override;

private:
    QStringList m_folders;
    QStringList m_siblings;
};
