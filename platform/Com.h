// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

#include <objbase.h>

namespace platform
{

// COM for the current thread while the object lives; must be destroyed on the thread that made it. Does
// nothing on a thread that already uses COM with the other threading model, where calls work all the same.
class ComScope
{
public:
    explicit ComScope(DWORD model = COINIT_APARTMENTTHREADED) noexcept
        : m_result(CoInitializeEx(nullptr, model | COINIT_DISABLE_OLE1DDE))
    {
    }
    ComScope(const ComScope &) = delete;
    ComScope &operator=(const ComScope &) = delete;
    // S_FALSE (initialised before) is a success that has to be paired as well.
    ~ComScope()
    {
        if (SUCCEEDED(m_result))
            CoUninitialize();
    }

    bool usable() const noexcept { return SUCCEEDED(m_result) || m_result == RPC_E_CHANGED_MODE; }

private:
    HRESULT m_result;
};

// Memory that COM and the shell hand out.
struct CoTaskMemoryTraits {
    using Raw = void *;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { CoTaskMemFree(raw); }
};
using CoTaskMem = UniqueHandle<CoTaskMemoryTraits>;

} // namespace platform
