// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/TestPrefix.h"

#include "platform/Paths.h"
#include "settings/Settings.h"

#include <QDir>

namespace tests
{

namespace
{

bool isInTestPrefix()
{
    quint32 prefix = 0;
    return settings::readDword(u"Software\\Fernlight Larkspur Tests", u"Prefix", prefix) && prefix == 1;
}

void wipeSettings()
{
    for (const QStringView tree :
         {u"Software\\Fernlight Larkspur", u"Software\\Fernlight", u"Software\\Folder Size Analyzer"})
        settings::deleteKeyWithSubkeys(tree);
}

} // namespace

void requireTestPrefix()
{
    if (!isInTestPrefix())
        qFatal("This test changes the registry or removes files and runs only in a test prefix: see "
               "tools/wine-prefix.");
}

void requireBelow(const QString &root, const QString &path)
{
    requireTestPrefix();
    if (!platform::isInside(QDir::tempPath(), root))
        qFatal("Not below the temporary folder: %ls", qUtf16Printable(root));
    const QString native = platform::shownPath(path);
    const QString folder = native.left(native.lastIndexOf(u'\\'));
    const QString existing = platform::fileExists(path) ? path : folder;
    const bool isRoot =
        platform::shownPath(existing).compare(platform::shownPath(root), Qt::CaseInsensitive) == 0;
    // The root itself serves as the folder of a path that does not exist yet.
    if (!platform::isInside(root, existing) && !(isRoot && existing == folder))
        qFatal("Not below %ls: %ls", qUtf16Printable(root), qUtf16Printable(path));
}

RegistryGuard::RegistryGuard()
{
    requireTestPrefix();
    wipeSettings();
}

RegistryGuard::~RegistryGuard()
{
    wipeSettings();
}

} // namespace tests
