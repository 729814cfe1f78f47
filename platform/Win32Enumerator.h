// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/DirectoryEnumerator.h"
#include "platform/InterruptibleCalls.h"

namespace platform
{

// Lists folders with FindFirstFileW and FindNextFileW, in their order and with unmodified names. One object
// may be used on any number of threads.
class Win32Enumerator : public core::DirectoryEnumerator
{
public:
    void list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &cancel) override;
    std::optional<core::FileIdentity> identity(const QString &path) override;
    void interrupt() override { m_calls.interrupt(); }

private:
    InterruptibleCalls m_calls;
};

// Does disk I/O; any thread. One item as listed by its folder; an empty listing if it does not exist. The
// listing owns the name.
void listItem(const QString &path, core::DirectoryListing &out);

} // namespace platform
