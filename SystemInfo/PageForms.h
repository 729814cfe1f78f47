// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

// Makes the form of a page, which begins to gather at once.
InfoPageForm *makePageForm(systeminfo::PageId id, QWidget *parent);
