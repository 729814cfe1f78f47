// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/engine/Payloads.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace qr
{

namespace
{

// The short-link hosts of the two services.
constexpr auto chatAddress = "https://wa.me/"_L1;
constexpr auto paymentAddress = "https://paypal.me/"_L1;

} // namespace

QString callPayload(int diallingCode, const QString &number)
{
    return number.isEmpty() ? QString() : "tel:+"_L1 + QString::number(diallingCode) + number;
}

QString smsPayload(int diallingCode, const QString &number, const QString &message)
{
    return number.isEmpty() ? QString()
                            : "SMSTO:+"_L1 + QString::number(diallingCode) + number + ':'_L1 + message;
}

QString emailPayload(const QString &address, const QString &subject, const QString &message)
{
    // The odd end is part of the format.
    return address.isEmpty()
               ? QString()
               : "MATMSG:TO:"_L1 + address + ";SUB:"_L1 + subject + ";BODY:"_L1 + message + ",;;"_L1;
}

QString whatsappPayload(int diallingCode, const QString &number, const QString &message)
{
    if (number.isEmpty())
        return {};
    QString text = message;
    text.replace(u' ', u'+');
    return chatAddress + QString::number(diallingCode) + number + "/?text="_L1 + text;
}

QString wifiPayload(const QString &network, WifiType type, const QString &password, bool hidden)
{
    if (network.isEmpty())
        return {};
    const auto typeText = type == WifiType::Wep ? "WEP"_L1 : "WPA"_L1;
    const auto hiddenText = hidden ? "true"_L1 : "false"_L1;
    return "WIFI:S:"_L1 + network + ";T:"_L1 + typeText + ";P:"_L1 + password + ";H:"_L1 + hiddenText +
           ";;"_L1;
}

QString contactPayload(const Contact &contact)
{
    const QStringList lines{
        u"BEGIN:VCARD"_s,
        u"VERSION:2.1"_s,
        "N;CHARSET=UTF-8:"_L1 + contact.lastName + ';'_L1 + contact.firstName,
        "FN;CHARSET=UTF-8:"_L1 + contact.firstName + ' '_L1 + contact.lastName,
        "TEL;CELL:"_L1 + contact.mobile,
        "TEL;HOME;VOICE:"_L1 + contact.phone,
        "ORG;CHARSET=UTF-8:"_L1 + contact.company,
        "TITLE;CHARSET=UTF-8:"_L1 + contact.jobTitle,
        "TEL;WORK;FAX:"_L1 + contact.fax,
        "ADR;CHARSET=UTF-8;WORK;PREF:;;"_L1 + contact.address + ';'_L1 + contact.city + ';'_L1 +
            contact.postCode + ';'_L1 + contact.country,
        "EMAIL:"_L1 + contact.email,
        "URL:"_L1 + contact.website,
        u"END:VCARD"_s,
    };
    return lines.join(u'\n');
}

QString paymentPayload(const QString &user, const QString &amount, const QString &currency)
{
    if (user.isEmpty())
        return {};
    const QString link = paymentAddress + user;
    return amount.isEmpty() ? link : link + '/'_L1 + amount + currency;
}

} // namespace qr
