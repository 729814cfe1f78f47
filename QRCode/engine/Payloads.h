// SPDX-License-Identifier: GPL-3.0-or-later
// The texts that codes hold, put together from what the user typed. Fields are copied as they are: these
// formats are what old installations made, character for character, and nothing is escaped. FieldChecks.h
// says what a format cannot carry. Pure.
#pragma once

#include <QString>

namespace qr
{

// Each is empty when the one field is that the rest is nothing without.
QString callPayload(int diallingCode, const QString &number);
QString smsPayload(int diallingCode, const QString &number, const QString &message);
QString emailPayload(const QString &address, const QString &subject, const QString &message);
// A link that opens a chat; of the message, spaces alone are encoded.
QString whatsappPayload(int diallingCode, const QString &number, const QString &message);

enum class WifiType { Wep, Wpa };
QString wifiPayload(const QString &network, WifiType type, const QString &password, bool hidden);

struct Contact {
    QString firstName;
    QString lastName;
    QString phone;
    QString mobile;
    QString fax;
    QString email;
    QString website;
    QString company;
    QString jobTitle;
    QString address;
    QString city;
    QString postCode;
    QString country;
};
// vCard 2.1: always all of its 13 lines, so never empty.
QString contactPayload(const Contact &contact);

// A link to the page on which the user is paid. The amount is a decimal number or empty ("any amount"), the
// currency a three-letter code, which counts only with an amount.
QString paymentPayload(const QString &user, const QString &amount, const QString &currency);

} // namespace qr
