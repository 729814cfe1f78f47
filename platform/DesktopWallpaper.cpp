// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/DesktopWallpaper.h"

#include "platform/Com.h"
#include "platform/Text.h"

#include <array>

#include <initguid.h>
#include <netlistmgr.h>
#include <shlobj.h>
#include <shobjidl.h>

namespace platform
{

namespace
{

QString taken(LPWSTR text)
{
    const CoTaskMem memory(text);
    return text ? fromWide(text) : QString();
}

// The legacy call: a single image, with its position in two registry values.
class OneWallpaper : public DesktopWallpaper
{
public:
    QStringList monitors() override { return {}; }
    QString picture(const QString &) override
    {
        std::array<wchar_t, MAX_PATH> path{};
        return SystemParametersInfoW(SPI_GETDESKWALLPAPER, MAX_PATH, path.data(), 0) ? fromWide(path.data())
                                                                                     : QString();
    }
    bool setPicture(const QString &, const QString &path) override
    {
        std::wstring text = path.toStdWString();
        return SystemParametersInfoW(SPI_SETDESKWALLPAPER, 0, text.data(),
                                     SPIF_UPDATEINIFILE | SPIF_SENDCHANGE) != FALSE;
    }
    int position() override
    {
        const int style = value(L"WallpaperStyle").toInt();
        if (value(L"TileWallpaper") == QLatin1StringView("1"))
            return DWPOS_TILE;
        for (std::size_t i = 0; i < styles.size(); ++i) {
            if (styles[i] == style && i != DWPOS_TILE)
                return static_cast<int>(i);
        }
        return -1;
    }
    void setPosition(int position) override
    {
        if (position < 0 || static_cast<std::size_t>(position) >= styles.size())
            return;
        setValue(L"WallpaperStyle", QString::number(styles[static_cast<std::size_t>(position)]));
        setValue(L"TileWallpaper", position == DWPOS_TILE ? QStringLiteral("1") : QStringLiteral("0"));
    }
    QString slideshowFolder() override { return {}; }
    bool setSlideshowFolder(const QString &) override { return false; }

private:
    // "WallpaperStyle" of each DESKTOP_WALLPAPER_POSITION.
    static constexpr std::array styles{0, 0, 2, 6, 10, 22};
    static constexpr wchar_t key[] = L"Control Panel\\Desktop";

    static QString value(const wchar_t *name)
    {
        std::array<wchar_t, 32> text{};
        DWORD bytes = sizeof text;
        return RegGetValueW(HKEY_CURRENT_USER, key, name, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) ==
                       ERROR_SUCCESS
                   ? fromWide(text.data())
                   : QString();
    }
    static void setValue(const wchar_t *name, const QString &text)
    {
        RegSetKeyValueW(HKEY_CURRENT_USER, key, name, REG_SZ, wide(text),
                        static_cast<DWORD>((text.size() + 1) * qsizetype{sizeof(wchar_t)}));
    }
};

class ShellWallpaper : public DesktopWallpaper
{
public:
    explicit ShellWallpaper(ComPointer<IDesktopWallpaper> desktop) : m_desktop(std::move(desktop)) {}

    QStringList monitors() override
    {
        QStringList found;
        UINT count = 0;
        m_desktop->GetMonitorDevicePathCount(&count);
        for (UINT index = 0; index < count; ++index) {
            LPWSTR text = nullptr;
            if (FAILED(m_desktop->GetMonitorDevicePathAt(index, &text)))
                continue;
            const QString monitor = taken(text);
            RECT area; // S_FALSE for a monitor that is no longer connected
            if (!monitor.isEmpty() && m_desktop->GetMonitorRECT(wide(monitor), &area) == S_OK)
                found.append(monitor);
        }
        return found;
    }
    QString picture(const QString &monitor) override
    {
        LPWSTR text = nullptr;
        return SUCCEEDED(m_desktop->GetWallpaper(name(monitor), &text)) ? taken(text) : QString();
    }
    bool setPicture(const QString &monitor, const QString &path) override
    {
        if (path.isEmpty()) // the interface cannot remove an image
            return m_one.setPicture({}, {});
        return SUCCEEDED(m_desktop->SetWallpaper(name(monitor), wide(path)));
    }
    int position() override
    {
        DESKTOP_WALLPAPER_POSITION position;
        return SUCCEEDED(m_desktop->GetPosition(&position)) ? static_cast<int>(position) : -1;
    }
    void setPosition(int position) override
    {
        if (position >= DWPOS_CENTER && position <= DWPOS_SPAN)
            m_desktop->SetPosition(static_cast<DESKTOP_WALLPAPER_POSITION>(position));
    }
    QString slideshowFolder() override
    {
        DESKTOP_SLIDESHOW_STATE state{};
        ComPointer<IShellItemArray> items;
        ComPointer<IShellItem> first;
        LPWSTR text = nullptr;
        if (FAILED(m_desktop->GetStatus(&state)) || !(state & DSS_SLIDESHOW) ||
            FAILED(m_desktop->GetSlideshow(items.put())) || !items ||
            FAILED(items->GetItemAt(0, first.put())) ||
            FAILED(first->GetDisplayName(SIGDN_FILESYSPATH, &text)))
            return {};
        return taken(text);
    }
    bool setSlideshowFolder(const QString &folder) override
    {
        ComPointer<IShellItem> item;
        ComPointer<IShellItemArray> items;
        return SUCCEEDED(
                   SHCreateItemFromParsingName(wide(folder), nullptr, IID_IShellItem, item.putVoid())) &&
               SUCCEEDED(
                   SHCreateShellItemArrayFromShellItem(item.get(), IID_IShellItemArray, items.putVoid())) &&
               SUCCEEDED(m_desktop->SetSlideshow(items.get()));
    }

private:
    static const wchar_t *name(const QString &monitor) { return monitor.isEmpty() ? nullptr : wide(monitor); }

    ComPointer<IDesktopWallpaper> m_desktop;
    OneWallpaper m_one;
};

} // namespace

std::unique_ptr<DesktopWallpaper> systemWallpaper()
{
    static const CLSID desktopWallpaper = {
        0xc2cf3110, 0x460e, 0x4fc1, {0xb9, 0xd0, 0x8a, 0x1c, 0x0c, 0x9c, 0xc4, 0xbd}};
    ComPointer<IDesktopWallpaper> desktop;
    if (SUCCEEDED(CoCreateInstance(desktopWallpaper, nullptr, CLSCTX_ALL, IID_IDesktopWallpaper,
                                   desktop.putVoid())))
        return std::make_unique<ShellWallpaper>(std::move(desktop));
    return std::make_unique<OneWallpaper>();
}

bool isConnectionMetered()
{
    ComPointer<INetworkCostManager> manager;
    DWORD cost = NLM_CONNECTION_COST_UNKNOWN;
    if (FAILED(CoCreateInstance(CLSID_NetworkListManager, nullptr, CLSCTX_ALL, IID_INetworkCostManager,
                                manager.putVoid())) ||
        FAILED(manager->GetCost(&cost, nullptr)))
        return false;
    return (cost &
            (NLM_CONNECTION_COST_FIXED | NLM_CONNECTION_COST_VARIABLE | NLM_CONNECTION_COST_OVERDATALIMIT |
             NLM_CONNECTION_COST_ROAMING | NLM_CONNECTION_COST_APPROACHINGDATALIMIT)) != 0;
}

} // namespace platform
