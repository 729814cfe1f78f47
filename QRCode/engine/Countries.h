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

// The row of a country is what the settings keep, so rows are never sorted again nor taken out; new ones go
// to the end. Codes: ITU-T E.164, with the area code where countries share "1".
std::span<const Country> countries();

// The dialling code of a row; of the first for a row that is not there.
int diallingCode(int row);

} // namespace qr
