// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateStartForm.h"

FindDuplicateStartForm::FindDuplicateStartForm(QWidget *parent)
    : StartPage({tr("Find Duplicate"),
                 tr("Finds files of the same type, size and time of the last change. Nothing is opened, and "
                    "nothing is removed without being asked for."),
                 tr("Drop the folder to search it"), tr("Drop folders here"), "FileDuplicate48"},
                parent)
{
    offerFolder(
        {"selectFolderButton", "FolderOpen24", tr("Select Folder"), tr("Select the folder to search")},
        tr("Select Folder"));
    addOptions(tr("File types to search for, and the smallest size"));
}
