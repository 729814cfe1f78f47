// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileProbe.h"

#include "platform/Paths.h"
#include "platform/Win32Enumerator.h"

namespace platform
{

namespace
{

class Win32FileProbe : public core::FileProbe
{
public:
    std::optional<quint32> listedAttributes(const QString &path) override
    {
        core::DirectoryListing found;
        listItem(path, found);
        return found.size() > 0 ? std::optional<quint32>(found.at(0).attributes) : std::nullopt;
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
