// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QMetaMethod>

#include <utility>

// Connects a button to the slot on_NAME_clicked() of `receiver`, or to `otherwise` if there is no such slot:
// the buttons of the module table are only known by name.
template <class Function>
void connectNamed(QAbstractButton *button, QObject *receiver, Function otherwise)
{
    const QByteArray slot = "on_" + button->objectName().toLatin1() + "_clicked()";
    const int index = receiver->metaObject()->indexOfSlot(slot.constData());
    if (index >= 0)
        QObject::connect(button, QMetaMethod::fromSignal(&QAbstractButton::clicked), receiver,
                         receiver->metaObject()->method(index));
    else
        QObject::connect(button, &QAbstractButton::clicked, receiver, std::move(otherwise));
}
