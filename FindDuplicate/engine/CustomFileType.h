// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace duplicates
{

// A user-defined category: a name and its extensions, each with a leading dot.
struct CustomFileType {
    QString name;
    QStringList extensions;

    // True if it can be stored: it has a name and at least one extension, and each extension has a leading
    // dot and something after it.
    bool isValid() const;
    // Name and extensions separated by ";". Within them ";", a backslash and NUL are escaped as "\;", "\\"
    // and "\0", so that every valid type round-trips: "My notes;.note;.n\;1".
    QString storedText() const;

    bool operator==(const CustomFileType &) const = default;
};

// Parses a stored form. nullopt for anything that storedText() of a valid type does not produce; safe for any
// input.
std::optional<CustomFileType> parseStoredCustomFileType(const QString &stored);

} // namespace duplicates
