// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileProbe.h"

#include "platform/Handle.h"
#include "platform/Paths.h"

namespace platform
{

namespace
{

class Win32FileProbe : public core::FileProbe
{
public:
    std::optional<quint32> listedAttributes(const QString &path) override
    {
        if (isDriveRoot(path))
            return std::nullopt; // no folder lists it
        const std::wstring name = apiPath(path);
        // The verbatim prefix has a question mark of its own; any other one would be a pattern.
        if (name.find_first_of(L"*?", 4) != std::wstring::npos)
            return std::nullopt;
        WIN32_FIND_DATAW found;
        const FindHandle search(FindFirstFileW(name.c_str(), &found));
        return search ? std::optional<quint32>(found.dwFileAttributes) : std::nullopt;
    }

    std::optional<core::FileFacts> facts(const QString &path) override { return fileFacts(path); }

    bool isInside(const QString &root, const QString &item) override
    {
        return platform::isInside(root, item);
    }
};

core::FileProbe *replaced = nullptr;

} // namespace

core::FileProbe &fileProbe()
{
    static Win32FileProbe real;
    return replaced ? *replaced : real;
}

void setFileProbe(core::FileProbe *replacement)
{
    replaced = replacement;
}

} // namespace platform
