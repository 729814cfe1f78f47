// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <span>

namespace qr
{

struct Country {
    const char *name; // English
    int diallingCode;

    QString displayName() const; // translated: "United Kingdom (+44)"
};

// Settings store the row of a country, so rows must never be reordered or removed; append new ones. Codes:
// ITU-T E.164, with the area code where countries share "1".
std::span<const Country> countries();

// The dialling code of a row; that of the first row if out of range.
int diallingCode(int row);

} // namespace qr
