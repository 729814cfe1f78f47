// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class FLTableView;

namespace diskusage
{

// For lists with diskusage::FileColumn: shows the columns for the user in suitable widths; call after
// setModel().
void showFileColumns(FLTableView &table);

} // namespace diskusage
