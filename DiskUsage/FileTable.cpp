// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/FileTable.h"

#include "DiskUsage/DataFilesModel.h"
#include "widgets/FLTableView.h"
#include "widgets/Theme.h"

#include <QHeaderView>

namespace diskusage
{

void showFileColumns(FLTableView &table)
{
    table.showColumns({FileName, FileSizeText, FileLastAccess, FilePath});
    const QFontMetrics metrics(table.font());
    const auto widthOf = [&metrics](const char16_t *text) {
        return metrics.horizontalAdvance(QString::fromUtf16(text)) + 2 * theme::space;
    };
    QHeaderView *header = table.horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->resizeSection(FileName, widthOf(u"a file's usual name.txt"));
    header->resizeSection(FileSizeText, widthOf(u"1000.00 GB"));
    header->resizeSection(FileLastAccess, widthOf(u"Wed Nov 25 23:59:59 2026"));
    header->setStretchLastSection(true);
}

} // namespace diskusage
