// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/machine/WindowsMachine.h"

#include "platform/Com.h"
#include "platform/Handle.h"
#include "platform/Text.h"

#include <initguid.h>

#include <dxgi.h>

namespace systeminfo
{

// DXGI also reports the memory of adapters whose drivers store nothing in the registry. It is loaded on
// demand so that the program starts without it. No device is created, so no driver is loaded.
std::vector<GraphicsAdapter> WindowsMachine::graphics()
{
    constexpr UINT maxAdapters = 64;
    using Create = HRESULT(WINAPI *)(REFIID, void **);
    std::vector<GraphicsAdapter> adapters;
    const platform::Library library(LoadLibraryExW(L"dxgi.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
    const auto create = reinterpret_cast<Create>(reinterpret_cast<void (*)()>(
        library ? GetProcAddress(library.get(), "CreateDXGIFactory1") : nullptr));
    platform::ComPointer<IDXGIFactory1> factory;
    if (!create || FAILED(create(IID_IDXGIFactory1, factory.putVoid())))
        return adapters;
    for (UINT i = 0; i < maxAdapters; ++i) {
        platform::ComPointer<IDXGIAdapter1> adapter;
        DXGI_ADAPTER_DESC1 about = {};
        if (FAILED(factory->EnumAdapters1(i, adapter.put())))
            break;
        if (SUCCEEDED(adapter->GetDesc1(&about)) && !(about.Flags & DXGI_ADAPTER_FLAG_SOFTWARE))
            adapters.push_back({platform::fromWide(about.Description), about.DedicatedVideoMemory,
                                about.SharedSystemMemory});
    }
    return adapters;
}

} // namespace systeminfo
