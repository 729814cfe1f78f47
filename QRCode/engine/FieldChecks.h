// SPDX-License-Identifier: GPL-3.0-or-later
// Warnings about characters that a payload format cannot represent, shown beside the field. The payload
// itself is not changed. Each function returns a sentence for the user, or an empty text. Pure.
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
    // Becomes part of a link in which only spaces are encoded.
    static QString chatMessage(const QString &message);
    static QString wifiName(const QString &network);
    static QString wifiPassword(WifiType type, const QString &password);
    // In a contact, ";" and line feeds end a field.
    static QString contactText(const QString &text);
    static QString contactPhone(const QString &number);
    static QString contactMail(const QString &address);
    static QString paymentUser(const QString &user);
    static QString paymentAmount(const QString &amount);
};

} // namespace qr
