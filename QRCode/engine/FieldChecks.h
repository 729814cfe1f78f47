// SPDX-License-Identifier: GPL-3.0-or-later
// What a payload's format cannot carry, said beside the field in which it stands. The payload stays as typed.
// Each function returns a sentence for the user, or an empty text when nothing is to be said. Pure.
#pragma once

#include "QRCode/engine/Payloads.h"

#include <QCoreApplication>
#include <QString>

namespace qr
{

class FieldChecks
{
    Q_DECLARE_TR_FUNCTIONS(QRCodeFieldChecks)

public:
    static QString link(const QString &address);
    static QString phone(int diallingCode, const QString &number);
    // In the mail format ";" ends a field.
    static QString mailText(const QString &text);
    static QString mailAddress(const QString &address);
    // Becomes part of a link, in which only spaces are encoded.
    static QString chatMessage(const QString &message);
    static QString wifiName(const QString &network);
    static QString wifiPassword(WifiType type, const QString &password);
    // In a contact ";" and line feeds end a field.
    static QString contactText(const QString &text);
    static QString contactPhone(const QString &number);
    static QString contactMail(const QString &address);
    static QString paymentUser(const QString &user);
    static QString paymentAmount(const QString &amount);
};

} // namespace qr
