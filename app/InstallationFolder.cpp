// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/InstallationFolder.h"

#include "settings/Keys.h"
#include "settings/Settings.h"

#include <QDir>

namespace
{

QString current;

} // namespace

void installation::load()
{
    current = settings::installationFolder();
    if (current.isEmpty())
        setFolder(QDir::currentPath());
}

QString installation::folder()
{
    return current;
}

void installation::setFolder(const QString &folder)
{
    current = folder;
    settings::writeString(settings::keys::root, u"Path", folder);
}

QString installation::companion(const QString &executable)
{
    return current + executable;
}
