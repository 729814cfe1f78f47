// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/InfoPageForm.h"

// Creates the form of a page, which starts gathering at once.
InfoPageForm *makePageForm(systeminfo::PageId id, QWidget *parent);
