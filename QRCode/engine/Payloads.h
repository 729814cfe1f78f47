// SPDX-License-Identifier: GPL-3.0-or-later
// Builds the payload texts from the user's input. Fields are copied unchanged: the formats are those of old
// installations, character for character, and nothing is escaped. FieldChecks.h warns about what a format
// cannot represent. Pure.
#pragma once

#include <QString>

namespace qr
{

// Each returns an empty text if its mandatory field is empty.
QString callPayload(int diallingCode, const QString &number);
QString smsPayload(int diallingCode, const QString &number, const QString &message);
QString emailPayload(const QString &address, const QString &subject, const QString &message);
// A link that opens a chat; in the message only spaces are encoded.
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
// vCard 2.1: always all 13 lines, so never empty.
QString contactPayload(const Contact &contact);

// A link to the user's payment page. The amount is a decimal number, or empty for any amount; the currency is
// a three-letter code, used only with an amount.
QString paymentPayload(const QString &user, const QString &amount, const QString &currency);

} // namespace qr
