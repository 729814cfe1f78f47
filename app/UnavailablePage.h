// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FLWidget.h"

struct Module;

// Stands in for a module that is not part of this build, and says so.
class UnavailablePage : public FLWidget
{
    Q_OBJECT

public:
    explicit UnavailablePage(const Module &module, QWidget *parent = nullptr);
};
