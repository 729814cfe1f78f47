// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class FLTableView;

namespace diskusage
{

// Shows the columns that a person reads of a list with diskusage::FileColumn, in widths that suit them; after
// setModel().
void showFileColumns(FLTableView &table);

} // namespace diskusage
