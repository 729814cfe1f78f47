// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/DirectoryEnumerator.h"
#include "platform/InterruptibleCalls.h"

namespace platform
{

// Folders as FindFirstFileW and FindNextFileW list them, in their order; names are passed on unchanged. One
// object serves any number of threads.
class Win32Enumerator : public core::DirectoryEnumerator
{
public:
    void list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &cancel) override;
    std::optional<core::FileIdentity> identity(const QString &path) override;
    void interrupt() override { m_calls.interrupt(); }

private:
    InterruptibleCalls m_calls;
};

// Disk, any thread. One item as its folder lists it; nothing when it is not there. The listing owns its name.
void listItem(const QString &path, core::DirectoryListing &out);

} // namespace platform
