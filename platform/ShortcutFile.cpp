// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ShortcutFile.h"

#include "platform/Com.h"
#include "platform/Text.h"

#include <QtEndian>

#include <array>
#include <shlobj.h>

namespace platform
{

namespace
{

// Longer texts are truncated; our own shortcuts never have them.
constexpr std::size_t maxText = 4096;
constexpr int showCommandOffset = 60; // offset in the header of a shortcut file, see [MS-SHLLINK]
constexpr qsizetype headerSize = 76;
using Buffer = std::array<wchar_t, maxText>;

ComPointer<IShellLinkW> newLink()
{
    ComPointer<IShellLinkW> link;
    CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, link.putVoid());
    return link;
}

bool load(const ComPointer<IShellLinkW> &link, const QByteArray &bytes)
{
    ComPointer<IPersistStream> content;
    ComPointer<IStream> stream;
    ULONG written = 0;
    return link && SUCCEEDED(link->QueryInterface(IID_IPersistStream, content.putVoid())) &&
           SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put())) &&
           SUCCEEDED(stream->Write(bytes.constData(), static_cast<ULONG>(bytes.size()), &written)) &&
           SUCCEEDED(stream->Seek({}, STREAM_SEEK_SET, nullptr)) && content->Load(stream.get()) == S_OK;
}

QByteArray save(const ComPointer<IShellLinkW> &link)
{
    ComPointer<IPersistStream> content;
    ComPointer<IStream> stream;
    STATSTG facts = {};
    if (FAILED(link->QueryInterface(IID_IPersistStream, content.putVoid())) ||
        FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put())) ||
        FAILED(content->Save(stream.get(), TRUE)) || FAILED(stream->Stat(&facts, STATFLAG_NONAME)) ||
        FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr)))
        return {};
    QByteArray bytes(static_cast<qsizetype>(facts.cbSize.QuadPart), Qt::Uninitialized);
    ULONG read = 0;
    const HRESULT result = stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read);
    return SUCCEEDED(result) && read == facts.cbSize.QuadPart ? bytes : QByteArray();
}

template <class Get>
QString textOf(Get get)
{
    Buffer buffer{};
    return SUCCEEDED(get(buffer.data(), static_cast<int>(buffer.size()))) ? fromWide(buffer.data())
                                                                          : QString();
}

} // namespace

std::optional<ShortcutFile> readShortcut(const QByteArray &bytes)
{
    const ComScope com;
    const ComPointer<IShellLinkW> link = newLink();
    if (bytes.size() < headerSize || !load(link, bytes))
        return std::nullopt;
    ShortcutFile file;
    file.target =
        textOf([&](wchar_t *to, int size) { return link->GetPath(to, size, nullptr, SLGP_RAWPATH); });
    file.arguments = textOf([&](wchar_t *to, int size) { return link->GetArguments(to, size); });
    file.workingFolder = textOf([&](wchar_t *to, int size) { return link->GetWorkingDirectory(to, size); });
    file.description = textOf([&](wchar_t *to, int size) { return link->GetDescription(to, size); });
    file.iconPath =
        textOf([&](wchar_t *to, int size) { return link->GetIconLocation(to, size, &file.iconIndex); });
    // Read from the bytes: Wine 8's link object writes this field but does not read it.
    const auto show = qFromLittleEndian<quint32>(bytes.constData() + showCommandOffset);
    file.window = show == SW_SHOWMAXIMIZED     ? ShortcutFile::Window::Maximized
                  : show == SW_SHOWMINNOACTIVE ? ShortcutFile::Window::Minimized
                                               : ShortcutFile::Window::Normal;
    return file;
}

QByteArray shortcutBytes(const ShortcutFile &file, const QByteArray &earlier)
{
    const ComScope com;
    const ComPointer<IShellLinkW> link = newLink();
    if (!link || (!earlier.isEmpty() && !load(link, earlier)))
        return {};
    // Minimised windows are not activated, which is what Explorer stores too.
    const int show = file.window == ShortcutFile::Window::Maximized   ? SW_SHOWMAXIMIZED
                     : file.window == ShortcutFile::Window::Minimized ? SW_SHOWMINNOACTIVE
                                                                      : SW_SHOWNORMAL;
    const bool made = SUCCEEDED(link->SetPath(wide(file.target))) &&
                      SUCCEEDED(link->SetArguments(wide(file.arguments))) &&
                      SUCCEEDED(link->SetWorkingDirectory(wide(file.workingFolder))) &&
                      SUCCEEDED(link->SetDescription(wide(file.description))) &&
                      SUCCEEDED(link->SetIconLocation(wide(file.iconPath), file.iconIndex)) &&
                      SUCCEEDED(link->SetShowCmd(show));
    return made ? save(link) : QByteArray();
}

} // namespace platform
