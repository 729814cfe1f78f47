// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileTypes.h"

#include <QChar>

#include <algorithm>

namespace core
{

namespace
{

struct BuiltInFileType {
    const char *name;
    const char *extensions; // separated by one space
    const char *icon;       // below the image folder
};

// Deliberate: .ogv and .ogx in audio, .srt and .swf in video, .cer and .csr in web files, .psd in raster
// images.
constexpr BuiltInFileType builtInFileTypes[] = {
    {"3D Image Files", ".3dm .blend .max", "3dImages16.png"},
    {"Audio Files", ".aac .aif .iff .m3u .m4a .m4p .mid .mp3 .mpa .oga .ogg .ogv .ogx .ra .spx .wav .wma",
     "Audio16.png"},
    {"Backup Files", ".bak .old .tmp", "Backup16.png"},
    {"Compressed Files", ".7z .gz .rar .tar.gz .zip .zipx", "CompressedFiles16.png"},
    {"Disk Image Files", ".cue .dmg .iso .toast .vcd", "DiskImage16.png"},
    {"Document Files", ".doc .docx .odt .pages .pdf .rtf .tex .txt .wpd .wps .xlr .xls .xlsx .xps",
     "Document16.png"},
    {"Font Files", ".fnt .fon .otf .ttf", "Font16.png"},
    {"Installer and Executable Files", ".exe .msi .msix .appx", "Install16.png"},
    {"Raster Image Files",
     ".avif .bmp .gif .heif .heic .jpg .jpeg .jpe .jif .jfif .jfi .jxl .png .psd .pspimage .tif .tiff .webp",
     "RasterImage16.png"},
    {"Vector Image Files", ".ai .eps .ps .svg", "VectorImage16.png"},
    {"Video Files", ".3g2 .3gp .asf .asx .avi .flv .mkv .mov .mp4 .mpg .rm .srt .swf .vob .wmv",
     "Video16.png"},
    {"Web Files", ".asp .aspx .cer .cfm .csr .css .htm .html .js .jsp .php .rss .xhtml", "WebFile16.png"},
};

QString flagText(bool enabled)
{
    return enabled ? QStringLiteral("1;") : QStringLiteral("0;");
}

QStringList parseExtensions(QStringView list)
{
    QStringList extensions;
    const QList<QStringView> pieces = list.split(u',');
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        QStringView piece = pieces[i].trimmed();
        if (i == pieces.size() - 1)
            piece.chop(qMin<qsizetype>(1, piece.size())); // removes the closing parenthesis, whatever it is
        if (!piece.isEmpty())
            extensions.append(piece.toString());
    }
    return extensions;
}

bool isAllowedInExtension(QChar character)
{
    constexpr QStringView separators = u",();";      // used by the stored form
    constexpr QStringView reserved = u"\\/:*?\"<>|"; // never in a file name
    return !character.isSpace() && character.unicode() >= 0x20 && !separators.contains(character) &&
           !reserved.contains(character);
}

} // namespace

QString FileTypeCategory::displayText() const
{
    return name + QStringLiteral(" (") + extensions.join(QStringLiteral(", ")) + QLatin1Char(')');
}

QString FileTypeCategory::storedText() const
{
    return flagText(enabled) + displayText();
}

const FileTypeTable &defaultFileTypes()
{
    static const FileTypeTable table = [] {
        FileTypeTable built;
        for (const BuiltInFileType &type : builtInFileTypes)
            built.push_back(
                {QLatin1String(type.name), QString::fromLatin1(type.extensions).split(u' '), true});
        return built;
    }();
    return table;
}

QString fileTypeIcon(const QString &categoryName)
{
    const auto found =
        std::find_if(std::begin(builtInFileTypes), std::end(builtInFileTypes),
                     [&](const auto &type) { return categoryName == QLatin1String(type.name); });
    const char *icon = found == std::end(builtInFileTypes) ? "OtherFiles16.png" : found->icon;
    return QStringLiteral(":/resources/images/") + QLatin1String(icon);
}

std::optional<FileTypeCategory> parseStoredFileType(const QString &stored)
{
    const QStringView text = stored;
    const qsizetype separator = text.indexOf(u';');
    if (separator < 1)
        return std::nullopt;

    FileTypeCategory category;
    category.enabled = text.first(separator) != u"0";
    const QStringView rest = text.sliced(separator + 1);
    const qsizetype parenthesis = rest.indexOf(u'(');
    if (parenthesis < 0) {
        category.name = rest.trimmed().toString();
        return category;
    }
    category.name = rest.first(parenthesis).trimmed().toString();
    category.extensions = parseExtensions(rest.sliced(parenthesis + 1));
    return category;
}

QString normalisedExtension(const QString &typed)
{
    QStringView text = QStringView(typed).trimmed();
    if (text.startsWith(u'*'))
        text = text.sliced(1);
    while (text.startsWith(u'.'))
        text = text.sliced(1);
    // Windows removes a trailing dot from file names.
    if (text.isEmpty() || text.endsWith(u'.') || !std::all_of(text.begin(), text.end(), isAllowedInExtension))
        return {};
    return QLatin1Char('.') + text.toString().toLower();
}

QString completeExtension(QStringView fileName)
{
    const qsizetype dot = fileName.indexOf(u'.');
    return dot < 0 ? QStringLiteral(".") : fileName.sliced(dot).toString();
}

QString ExcludedFolder::storedText() const
{
    return flagText(enabled) + path;
}

std::optional<ExcludedFolder> parseStoredExcludedFolder(const QString &stored)
{
    const qsizetype separator = stored.indexOf(u';');
    if (separator < 0)
        return std::nullopt;
    ExcludedFolder folder;
    folder.enabled = QStringView(stored).first(separator).toInt() == 1;
    folder.path = stored.sliced(separator + 1);
    if (folder.path.isEmpty())
        return std::nullopt;
    return folder;
}

} // namespace core
