// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHashFunctions>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

namespace core
{

// Label for files of no category; it has no extension list and is never stored.
inline constexpr char otherFileTypes[] = "Other file types";

// A named group of file extensions. Extensions have their leading dot.
struct FileTypeCategory {
    QString name;
    QStringList extensions;
    bool enabled = true;

    // "Font Files (.fnt, .fon, .otf, .ttf)"
    QString displayText() const;
    // "1;" or "0;" and the display text: the stored form.
    QString storedText() const;

    bool operator==(const FileTypeCategory &) const = default;
};

using FileTypeTable = std::vector<FileTypeCategory>;

// The twelve built-in categories in their order, all enabled.
const FileTypeTable &defaultFileTypes();

// Resource path of a category's 16-pixel icon; OtherFiles16.png, a plain file, for categories that are not
// built in.
QString fileTypeIcon(const QString &categoryName);

// Parses a stored form; nullopt if it is malformed (no ";", or nothing before the first). Safe for any input.
std::optional<FileTypeCategory> parseStoredFileType(const QString &stored);

// Normalises a typed extension for storage (one leading dot, lower case): "pdf" and "*.PDF" give ".pdf".
// Empty if it contains characters that a stored list or a file name cannot contain.
QString normalisedExtension(const QString &typed);

// "." and what follows the first dot of a file name: ".tar.gz" of "backup.tar.gz", "." of "name".
QString completeExtension(QStringView fileName);

// Finds the categories of a file name by a single hash lookup, with the same result as searching the enabled
// categories in table order: ascending category indexes, each at most once. Copies the table, so it can be
// used on a worker thread while the table is edited.
class FileTypeMatcher
{
public:
    explicit FileTypeMatcher(const FileTypeTable &table);

    // Indexes into the table; empty for a file of no category. Valid as long as the matcher.
    const std::vector<int> &match(QStringView fileName) const;

private:
    // Heterogeneous lookup by QStringView, so that no string is built per file.
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(QStringView text) const { return qHash(text); }
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(QStringView a, QStringView b) const { return a == b; }
    };
    std::unordered_map<QString, std::vector<int>, Hash, Equal> m_byExtension;
    qsizetype m_longest = 0;
    std::vector<int> m_none;
};

// An excluded folder: scans skip all folders whose path starts with this text.
struct ExcludedFolder {
    bool enabled = true;
    QString path;

    QString storedText() const;
    bool operator==(const ExcludedFolder &) const = default;
};

// "1;C:\x"; split at the first ";" only. Empty for a text without ";" and for an empty path.
std::optional<ExcludedFolder> parseStoredExcludedFolder(const QString &stored);

} // namespace core
