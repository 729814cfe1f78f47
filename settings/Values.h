// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Settings.h"

#include <QStringList>
#include <QStringView>

#include <algorithm>
#include <limits>

// A setting is declared once, with type, limits and default, as a constant in its module's header:
//
//     inline constexpr Number quality{keys::convertImage, u"targeFileQuality", 90, 1, 100};
//
// It is used as quality.read() and quality.write(75). An invalid value (absent, of another type, out of
// range) reads as the default.
namespace settings
{

// A DWORD as a signed 32-bit number: -50 is stored as 0xFFFFFFCE.
struct Number {
    QStringView key;
    QStringView name;
    qint32 fallback = 0;
    qint32 minimum = std::numeric_limits<qint32>::min();
    qint32 maximum = std::numeric_limits<qint32>::max();
    enum class Outside { Fallback, Nearest }; // what replaces a stored number outside the limits
    Outside outside = Outside::Fallback;

    qint32 usable(qint32 stored) const
    {
        const qint32 nearest = std::clamp(stored, minimum, maximum);
        return nearest == stored || outside == Outside::Nearest ? nearest : fallback;
    }
    qint32 read() const
    {
        auto value = static_cast<quint32>(fallback);
        readDword(key, name, value);
        return usable(static_cast<qint32>(value));
    }
    bool write(qint32 value) const { return writeDword(key, name, static_cast<quint32>(value)); }
};

// A DWORD; any value but 0 is on. Written as 1 or 0.
struct Flag {
    QStringView key;
    QStringView name;
    bool fallback = false;
    bool onlyOne = false; // only 1 is on

    bool read() const
    {
        quint32 value = fallback ? 1 : 0;
        readDword(key, name, value);
        return onlyOne ? value == 1 : value != 0;
    }
    bool write(bool on) const { return writeDword(key, name, on ? 1 : 0); }
};

// Texts in numbered values ("command0", "command1", ...), with their count in a separate value or, without a
// name for that, as many of the first `maxItems` as exist.
struct TextList {
    QStringView key;
    QStringView name;
    QStringView countName = {};
    int maxItems = 1000; // limits the reads for a damaged count

    // In numeric order; missing values and values that are not texts are skipped.
    QStringList read() const;
    // Items beyond maxItems are dropped. Leftovers of an earlier, longer list are deleted last, so that a
    // reader in another process sees either the old or the new items. False if any value could not be
    // written or deleted.
    bool write(const QStringList &items) const;
};

struct Text {
    QStringView key;
    QStringView name;
    QStringView fallback = {};

    // A stored empty text is returned as such, not replaced by the default.
    QString read() const
    {
        QString text;
        return readString(key, name, text) ? text : fallback.toString();
    }
    bool write(QStringView text) const { return writeString(key, name, text); }
};

} // namespace settings
