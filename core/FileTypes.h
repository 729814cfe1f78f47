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

// The label of the files that no category takes; it has no extension list and is never stored.
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

// The resource path of a category's 16-pixel icon; OtherFiles16.png, a plain file, for a name that is not
// built in.
QString fileTypeIcon(const QString &categoryName);

// Reads a stored form; empty when it is malformed (no ";", or nothing before the first). Any input is safe.
std::optional<FileTypeCategory> parseStoredFileType(const QString &stored);

// A typed extension in its stored form (one leading dot, lower case): "pdf" and "*.PDF" give ".pdf". Empty
// when it holds what a stored list or a file name cannot hold.
QString normalisedExtension(const QString &typed);

// "." and what follows the first dot of a file name: ".tar.gz" of "backup.tar.gz", "." of "name".
QString completeExtension(QStringView fileName);

// Looks a file name's categories up by one hash access, with the answers that going through the enabled
// categories in table order would give: the category indexes, ascending, each at most once. A copy of the
// table is taken, so the matcher can be used on a worker thread while the table is edited.
class FileTypeMatcher
{
public:
    explicit FileTypeMatcher(const FileTypeTable &table);

    // Indexes into the table; an empty list for a file of no category. Valid as long as the matcher.
    const std::vector<int> &match(QStringView fileName) const;

private:
    // Looked up by a view, so that no text is built for a file.
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

// A folder that scans leave out: with all folders whose path begins with the same text.
struct ExcludedFolder {
    bool enabled = true;
    QString path;

    QString storedText() const;
    bool operator==(const ExcludedFolder &) const = default;
};

// "1;C:\x"; split at the first ";" only. Empty for a text without ";" and for an empty path.
std::optional<ExcludedFolder> parseStoredExcludedFolder(const QString &stored);

} // namespace core
