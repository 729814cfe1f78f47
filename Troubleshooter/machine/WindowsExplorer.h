// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/World.h"

namespace repair
{

class WindowsExplorer : public Explorer
{
public:
    bool runs() override;
    int folderWindows() override;
    bool isCopying() override;
    bool end(const core::CancelFlag &cancel) override;
    bool start() override;
    bool isDesktopShown() override;
    bool isAwaited() override;
    void setAwaited(bool awaited) override;
};

// In the user's local application data.
class WindowsCaches : public Caches
{
public:
    explicit WindowsCaches(QString localData);

    std::optional<QList<CacheFile>> list(CacheKind kind) override;
    QString erase(const CacheFile &file) override;

private:
    QString m_localData;
};

class WindowsStore : public Store
{
public:
    StoreFacts facts() override;
};

} // namespace repair
