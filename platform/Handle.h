// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <windows.h>

#include <utility>

namespace platform
{

// Owns one system handle and closes it. Traits define the raw type, the invalid value (null for most,
// INVALID_HANDLE_VALUE for files and searches) and the closing function. This header and its traits are the
// only place where such functions are called.
template <class Traits>
class UniqueHandle
{
public:
    using Raw = typename Traits::Raw;

    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Raw raw) noexcept : m_raw(raw) {}
    UniqueHandle(UniqueHandle &&other) noexcept : m_raw(other.release()) {}
    UniqueHandle &operator=(UniqueHandle &&other) noexcept
    {
        if (this != &other)
            reset(other.release());
        return *this;
    }
    ~UniqueHandle() { reset(); }

    Raw get() const noexcept { return m_raw; }
    explicit operator bool() const noexcept { return m_raw != Traits::none(); }

    Raw release() noexcept { return std::exchange(m_raw, Traits::none()); }
    void reset(Raw raw = Traits::none()) noexcept
    {
        const Raw old = std::exchange(m_raw, raw);
        if (old != Traits::none()) {
            // Closing must not change GetLastError() between a failing call and its evaluation.
            const DWORD error = GetLastError();
            Traits::close(old);
            SetLastError(error);
        }
    }
    // For functions that return a handle through a pointer. Closes the current one.
    Raw *put() noexcept
    {
        reset();
        return &m_raw;
    }

private:
    Raw m_raw = Traits::none();
};

// CreateFileW
struct FileTraits {
    using Raw = HANDLE;
    static Raw none() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(Raw raw) noexcept { CloseHandle(raw); }
};
using FileHandle = UniqueHandle<FileTraits>;

// Processes, threads, events, mappings: functions that return null on failure.
struct ObjectTraits {
    using Raw = HANDLE;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { CloseHandle(raw); }
};
using ObjectHandle = UniqueHandle<ObjectTraits>;

// FindFirstFileW
struct FindTraits {
    using Raw = HANDLE;
    static Raw none() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(Raw raw) noexcept { FindClose(raw); }
};
using FindHandle = UniqueHandle<FindTraits>;

struct RegistryTraits {
    using Raw = HKEY;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { RegCloseKey(raw); }
};
using RegKey = UniqueHandle<RegistryTraits>;

// LoadLibraryExW
struct LibraryTraits {
    using Raw = HMODULE;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { FreeLibrary(raw); }
};
using Library = UniqueHandle<LibraryTraits>;

// Memory allocated by the system for LocalFree (FormatMessageW).
struct LocalMemoryTraits {
    using Raw = HLOCAL;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { LocalFree(raw); }
};
using LocalMem = UniqueHandle<LocalMemoryTraits>;

// Icons owned by the program (SHGetFileInfoW with SHGFI_ICON, CreateIcon...; not those of LoadIconW).
struct IconTraits {
    using Raw = HICON;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { DestroyIcon(raw); }
};
using IconHandle = UniqueHandle<IconTraits>;

// CreateFontIndirectW
struct FontTraits {
    using Raw = HFONT;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { DeleteObject(raw); }
};
using FontHandle = UniqueHandle<FontTraits>;

} // namespace platform
