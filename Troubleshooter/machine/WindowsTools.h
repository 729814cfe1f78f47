// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/World.h"

namespace repair
{

// Runs tools from the Windows folder by full path, without a window. Those that need an administrator are
// elevated one by one, with constant arguments.
class WindowsTools : public Tools
{
public:
    QDateTime now() override { return QDateTime::currentDateTime(); }
    ToolRun run(Tool tool, const QString &file, const core::CancelFlag &cancel) override;
    QString restoreFolder() override;
    bool save(const QString &path, const QByteArray &bytes) override;
    bool holdsSomething(const QString &path) override;
};

} // namespace repair
