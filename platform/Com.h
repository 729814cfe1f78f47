// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

#include <objbase.h>

namespace platform
{

// Initialises COM for the current thread while the object lives; must be destroyed on the thread that created
// it. Does nothing on a thread that already uses COM with the other threading model, where calls work all the
// same.
class ComScope
{
public:
    explicit ComScope(DWORD model = COINIT_APARTMENTTHREADED) noexcept
        : m_result(CoInitializeEx(nullptr, model | COINIT_DISABLE_OLE1DDE))
    {
    }
    ComScope(const ComScope &) = delete;
    ComScope &operator=(const ComScope &) = delete;
    // S_FALSE (already initialised) is a success and must be balanced too.
    ~ComScope()
    {
        if (SUCCEEDED(m_result))
            CoUninitialize();
    }

    bool usable() const noexcept { return SUCCEEDED(m_result) || m_result == RPC_E_CHANGED_MODE; }

private:
    HRESULT m_result;
};

// Owner of one reference to a COM object.
template <class Interface>
struct ComTraits {
    using Raw = Interface *;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { raw->Release(); }
};
template <class Interface>
class ComPointer : public UniqueHandle<ComTraits<Interface>>
{
public:
    using UniqueHandle<ComTraits<Interface>>::UniqueHandle;

    Interface *operator->() const noexcept { return this->get(); }
    // For functions that return an object through a void **. Releases the current object.
    void **putVoid() noexcept { return reinterpret_cast<void **>(this->put()); }
};

// Memory allocated by COM and the shell.
struct CoTaskMemoryTraits {
    using Raw = void *;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { CoTaskMemFree(raw); }
};
using CoTaskMem = UniqueHandle<CoTaskMemoryTraits>;

} // namespace platform
