// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Icons.h"

#include "platform/Com.h"

#include <shellapi.h>

namespace platform
{

QImage systemFolderIcon()
{
    const ComScope com; // the shell asks its icon handlers through COM
    SHFILEINFOW info = {};
    // With the attributes given, the name stands for any folder and nothing is looked up on a disk.
    if (!SHGetFileInfoW(L"folder", FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_NORMAL, &info, sizeof info,
                        SHGFI_USEFILEATTRIBUTES | SHGFI_ICON | SHGFI_SMALLICON))
        return {};
    const IconHandle icon(info.hIcon);
    return icon ? QImage::fromHICON(icon.get()) : QImage();
}

} // namespace platform
