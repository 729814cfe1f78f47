// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTabWidget>

// Tabs with flat headings; the current one is underlined in the accent colour.
class FLTabWidget : public QTabWidget
{
    Q_OBJECT

public:
    explicit FLTabWidget(QWidget *parent = nullptr);
};
