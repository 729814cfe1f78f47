// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QTest>
#include <QWidget>

namespace tests
{

// A widget by its object name; ends the program when it is not there.
template <class Widget>
Widget *find(const QWidget &in, const char *name)
{
    auto *widget = in.findChild<Widget *>(QLatin1String(name));
    if (!widget)
        qFatal("no widget %s", name);
    return widget;
}

inline void click(const QWidget &in, const char *name)
{
    QTest::mouseClick(find<QAbstractButton>(in, name), Qt::LeftButton);
}

} // namespace tests
