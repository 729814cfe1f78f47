// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageStartForm.h"

FindDuplicateImageStartForm::FindDuplicateImageStartForm(QWidget *parent)
    : StartPage(
          {tr("Find all duplicate images"),
           tr("Pictures are compared by what they show: copies in another format, size or brightness are "
              "found as well. Nothing is removed unless you say so."),
           tr("Drop folders here"), tr("Drop folders here"), "FindDuplicateImage48"},
          parent)
{
    using platform::KnownFolder;
    offerFolder({"selectFolderButton", "FolderOpen24", tr("Select Folder"), tr("Select the folder to scan")},
                tr("Select Folder"));
    addSpecialFolders(
        {KnownFolder::Pictures, KnownFolder::Downloads, KnownFolder::Desktop, KnownFolder::Documents});
}
