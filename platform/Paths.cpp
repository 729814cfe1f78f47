// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Paths.h"

#include "platform/HeldFile.h"
#include "platform/Text.h"

#include <QList>
#include <QStringBuilder>
#include <QStringView>

namespace platform
{

namespace
{

constexpr QStringView verbatim = u"\\\\?\\";
constexpr QStringView verbatimServer = u"\\\\?\\UNC\\";
constexpr QStringView device = u"\\\\.\\";
constexpr QStringView server = u"\\\\";

bool isLetterAndColon(QStringView text)
{
    if (text.size() < 2 || text[1] != u':')
        return false;
    const char16_t letter = text[0].toUpper().unicode();
    return letter >= u'A' && letter <= u'Z';
}

// Position after "C:" or "\\server\share", the part that "." and ".." cannot remove; 0 if the path is not
// absolute.
struct Split {
    QString prefix; // verbatim form, without a trailing separator
    QList<QStringView> components;
};

void resolveDots(QList<QStringView> &components)
{
    QList<QStringView> resolved;
    for (const QStringView component : components) {
        if (component == u"..") {
            if (!resolved.isEmpty())
                resolved.removeLast();
        } else if (component != u".") {
            resolved.append(component);
        }
    }
    components = resolved;
}

// `native` must outlive the result.
std::optional<Split> split(const QString &native)
{
    Split result;
    if (native.startsWith(server)) {
        result.components = QStringView(native).mid(server.size()).split(u'\\', Qt::SkipEmptyParts);
        if (result.components.size() < 2)
            return std::nullopt;
        const QStringView host = result.components.takeFirst();
        const QStringView share = result.components.takeFirst();
        result.prefix = verbatimServer % host % u'\\' % share;
    } else if (isLetterAndColon(native) && (native.size() == 2 || native[2] == u'\\')) {
        result.prefix = verbatim % QStringView(native).left(2);
        result.components = QStringView(native).mid(2).split(u'\\', Qt::SkipEmptyParts);
    } else {
        return std::nullopt;
    }
    resolveDots(result.components);
    return result;
}

QString nativeSeparators(QString path)
{
    return path.replace(u'/', u'\\');
}

// Compares names as the file system does: by upper-cased code units, independent of language.
bool equalNames(QStringView a, QStringView b)
{
    return CompareStringOrdinal(reinterpret_cast<const wchar_t *>(a.utf16()), static_cast<int>(a.size()),
                                reinterpret_cast<const wchar_t *>(b.utf16()), static_cast<int>(b.size()),
                                TRUE) == CSTR_EQUAL;
}

} // namespace

std::wstring apiPath(const QString &path)
{
    QString native = nativeSeparators(path);
    // Verbatim paths are kept, except for a bare drive after the prefix, which would denote the volume
    // device.
    if (native.startsWith(device))
        return native.toStdWString();
    if (native.startsWith(verbatim)) {
        const bool bareDrive = native.size() == verbatim.size() + 2 && native.endsWith(u':');
        return (bareDrive ? native + u'\\' : native).toStdWString();
    }
    const std::optional<Split> parts = split(native);
    if (!parts)
        return native.toStdWString();
    QString result = parts->prefix;
    for (const QStringView component : parts->components)
        result += u'\\' % component;
    if (parts->components.isEmpty())
        result += u'\\';
    return result.toStdWString();
}

QString shownPath(const QString &path)
{
    const QString native = nativeSeparators(path);
    if (native.startsWith(verbatimServer))
        return server % native.mid(verbatimServer.size());
    if (native.startsWith(verbatim) && isLetterAndColon(QStringView(native).mid(verbatim.size())))
        return native.mid(verbatim.size());
    return native;
}

bool survivesWin32(const QString &path)
{
    std::wstring buffer(MAX_PATH, L'\0');
    const DWORD length =
        GetFullPathNameW(wide(path), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr);
    if (length > buffer.size()) {
        buffer.resize(length);
        return GetFullPathNameW(wide(path), length, buffer.data(), nullptr) == length - 1 &&
               fromWide(buffer.data(), length - 1) == path;
    }
    return length > 0 && fromWide(buffer.data(), length) == path;
}

bool isDriveRoot(const QString &path)
{
    const QString native = shownPath(path);
    const std::optional<Split> parts = split(native);
    return parts && parts->components.isEmpty();
}

bool fileExists(const QString &path)
{
    return GetFileAttributesW(apiPath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

QString finalPath(const QString &path)
{
    return HeldFile(path).finalPath();
}

bool isInside(const QString &root, const QString &item)
{
    return isInside(root, item, HeldFile(item));
}

bool isInside(const QString &root, const QString &item, const HeldFile &held)
{
    const QString rootText = QString::fromStdWString(apiPath(root));
    const QString itemText = QString::fromStdWString(apiPath(item));
    const QString folder = rootText.endsWith(u'\\') ? rootText : rootText + u'\\';
    if (itemText.size() <= folder.size() || !equalNames(QStringView(itemText).left(folder.size()), folder))
        return false;

    const HeldFile heldRoot(root);
    using Form = HeldFile::Form;
    for (const Form form : {Form::Drive, Form::Device, Form::DeviceAsOpened}) {
        const QString finalRoot = heldRoot.finalPath(form);
        const QString finalItem = held.finalPath(form);
        if (finalRoot.isEmpty() || finalItem.isEmpty())
            continue;
        const QString finalFolder = finalRoot.endsWith(u'\\') ? finalRoot : finalRoot + u'\\';
        return equalNames(finalItem, QString(finalFolder % QStringView(itemText).mid(folder.size())));
    }
    return false;
}

std::optional<FileFacts> fileFacts(const QString &path)
{
    return HeldFile(path).facts();
}

} // namespace platform
