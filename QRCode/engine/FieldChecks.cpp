// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/engine/FieldChecks.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qr
{

namespace
{

// The first character of `special` that occurs in the text, or null.
QChar firstOf(const QString &text, QStringView special)
{
    const auto found = std::ranges::find_if(text, [&](QChar c) { return special.contains(c); });
    return found == text.end() ? QChar() : *found;
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isAscii(const QString &text)
{
    return std::ranges::all_of(text, [](QChar c) { return c.unicode() < 0x80; });
}

bool looksLikeMail(const QString &address)
{
    const qsizetype at = address.indexOf(u'@');
    return at > 0 && at == address.lastIndexOf(u'@') && at + 1 < address.size() && !address.contains(u' ');
}

} // namespace

QString FieldChecks::link(const QString &address)
{
    if (address.isEmpty())
        return {};
    if (address.contains(u' ') || address.contains(u'\n'))
        return tr("An address holds no spaces; scanners may cut it off there.");
    if (!address.contains(':'_L1))
        return tr("Without \"https://\" in front many scanners show a text instead of opening a page.");
    return {};
}

QString FieldChecks::phone(int diallingCode, const QString &number)
{
    if (number.isEmpty())
        return {};
    if (number.startsWith(u'+') || number.startsWith("00"_L1))
        return tr("The country code +%1 is put in front already.").arg(diallingCode);
    if (!std::ranges::all_of(number, isDigit))
        return tr("Other characters than digits are copied as they are; some scanners do not dial them.");
    if (number.startsWith(u'0') && diallingCode != 39) // Italian numbers keep the leading zero
        return tr("Behind a country code the leading 0 is left out in most countries.");
    return {};
}

QString FieldChecks::mailText(const QString &text)
{
    return text.contains(u';') ? tr("\";\" ends a field in this format; scanners may cut the text off there.")
                               : QString();
}

QString FieldChecks::mailAddress(const QString &address)
{
    if (!address.isEmpty() && !looksLikeMail(address))
        return tr("This does not look like an e-mail address.");
    return mailText(address);
}

QString FieldChecks::chatMessage(const QString &message)
{
    if (message.contains(u'\n'))
        return tr("A link holds no line breaks; the message may end at the first.");
    if (const QChar found = firstOf(message, u"&#%+"); !found.isNull())
        return tr("\"%1\" has a meaning of its own in a link; the message may arrive changed.").arg(found);
    if (!isAscii(message))
        return tr("Some scanners misread characters like these in a link; test the code with your phone.");
    return {};
}

QString FieldChecks::wifiName(const QString &network)
{
    if (const QChar found = firstOf(network, u";:,\\\""); !found.isNull())
        return tr("\"%1\" has a meaning of its own in this format; phones may look for another network.")
            .arg(found);
    return {};
}

QString FieldChecks::wifiPassword(WifiType type, const QString &password)
{
    if (const QChar found = firstOf(password, u";:,\\\""); !found.isNull())
        return tr("\"%1\" has a meaning of its own in this format; phones may take another password.")
            .arg(found);
    if (password.isEmpty())
        return {};
    const qsizetype length = password.toUtf8().size();
    if (type == WifiType::Wpa && (length < 8 || length > 64))
        return tr("A WPA password has 8 to 63 characters.");
    if (type == WifiType::Wep && length != 5 && length != 10 && length != 13 && length != 26)
        return tr("A WEP key has 5 or 13 characters, or 10 or 26 hexadecimal digits.");
    return {};
}

QString FieldChecks::contactText(const QString &text)
{
    if (text.contains(u'\n'))
        return tr("A line break ends the field in this format; phones may drop what follows.");
    if (text.contains(u';'))
        return tr("\";\" separates fields in this format; phones may sort the parts wrongly.");
    return {};
}

QString FieldChecks::contactPhone(const QString &number)
{
    const auto dials = [](QChar c) { return isDigit(c) || QStringView(u"+ -/().*#").contains(c); };
    return std::ranges::all_of(number, dials) ? contactText(number)
                                              : tr("This does not look like a phone number.");
}

QString FieldChecks::contactMail(const QString &address)
{
    return !address.isEmpty() && !looksLikeMail(address) ? tr("This does not look like an e-mail address.")
                                                         : contactText(address);
}

QString FieldChecks::paymentUser(const QString &user)
{
    const auto belongs = [](QChar c) { return c.unicode() < 0x80 && c.isLetterOrNumber(); };
    return std::ranges::all_of(user, belongs)
               ? QString()
               : tr("Names of payment links hold letters A to Z and digits alone.");
}

QString FieldChecks::paymentAmount(const QString &amount)
{
    if (amount.isEmpty())
        return {};
    bool isNumber = false;
    const double value = amount.toDouble(&isNumber);
    const qsizetype point = amount.indexOf(u'.');
    const bool plain = std::ranges::all_of(amount, [](QChar c) { return isDigit(c) || c == u'.'; });
    if (!isNumber || !plain || value <= 0 || (point >= 0 && amount.size() - point > 3))
        return tr("Write the amount like 25 or 19.95.");
    return {};
}

} // namespace qr
