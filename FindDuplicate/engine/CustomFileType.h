// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace duplicates
{

// A category that the user made: a name and its extensions, each with a leading dot.
struct CustomFileType {
    QString name;
    QStringList extensions;

    // What can be stored: a name, at least one extension, and in each extension a leading dot and something
    // after it.
    bool isValid() const;
    // Name and extensions separated by ";". A ";", a backslash and a NUL within them stand as "\;", "\\" and
    // "\0", so that every valid type reads back exactly: "My notes;.note;.n\;1".
    QString storedText() const;

    bool operator==(const CustomFileType &) const = default;
};

// Reads a stored form back. Empty for everything that storedText() of a valid type does not write; any input
// is safe.
std::optional<CustomFileType> parseStoredCustomFileType(const QString &stored);

} // namespace duplicates
