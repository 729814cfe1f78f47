// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Icons.h"

#include "platform/Com.h"
#include "platform/Text.h"

#include <shellapi.h>

namespace platform
{

namespace
{

// With SHGFI_USEFILEATTRIBUTES the file need not exist, and the disk is not accessed.
QImage shellIcon(const wchar_t *name, DWORD attributes, UINT flags)
{
    const ComScope com; // the shell asks its icon handlers through COM
    SHFILEINFOW info = {};
    if (!SHGetFileInfoW(name, attributes, &info, sizeof info, SHGFI_ICON | flags))
        return {};
    const IconHandle icon(info.hIcon);
    return icon ? QImage::fromHICON(icon.get()) : QImage();
}

} // namespace

QImage systemFolderIcon()
{
    return shellIcon(L"folder", FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_NORMAL,
                     SHGFI_USEFILEATTRIBUTES | SHGFI_SMALLICON);
}

QImage systemFileIcon(const QString &fileName)
{
    return shellIcon(wide(fileName), FILE_ATTRIBUTE_NORMAL, SHGFI_USEFILEATTRIBUTES | SHGFI_LARGEICON);
}

QImage smallIconOf(const QString &path)
{
    return shellIcon(wide(path), 0, SHGFI_SMALLICON);
}

} // namespace platform
