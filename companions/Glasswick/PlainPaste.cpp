// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/PlainPaste.h"

#include "automation/engine/Texts.h"

#include <algorithm>
#include <array>
#include <cstring>

using automation::tr;

namespace agent
{

namespace
{

constexpr UINT_PTR restoreTimer = 0x5041; // unique among the window's timers
constexpr UINT restoreAfter = 700;        // ms, by which time the foreground program has read the clipboard

// Opens the clipboard for its lifetime. Retries, since another program may hold it briefly.
class Clipboard
{
public:
    explicit Clipboard(HWND window)
    {
        for (int attempt = 0; attempt < 10 && !m_open; ++attempt) {
            m_open = OpenClipboard(window) != 0;
            if (!m_open)
                Sleep(10);
        }
    }
    ~Clipboard()
    {
        if (m_open)
            CloseClipboard();
    }
    Clipboard(const Clipboard &) = delete;
    Clipboard &operator=(const Clipboard &) = delete;
    explicit operator bool() const { return m_open; }

private:
    bool m_open = false;
};

// False for formats whose handle is not global memory.
bool isMemory(UINT format)
{
    constexpr std::array others{UINT(CF_BITMAP),          UINT(CF_METAFILEPICT),  UINT(CF_PALETTE),
                                UINT(CF_ENHMETAFILE),     UINT(CF_OWNERDISPLAY),  UINT(CF_DSPBITMAP),
                                UINT(CF_DSPMETAFILEPICT), UINT(CF_DSPENHMETAFILE)};
    return std::find(others.begin(), others.end(), format) == others.end() &&
           (format < CF_GDIOBJFIRST || format > CF_GDIOBJLAST);
}

QByteArray bytesOf(HANDLE memory)
{
    const void *data = memory ? GlobalLock(memory) : nullptr;
    if (!data)
        return {};
    const QByteArray bytes(static_cast<const char *>(data), static_cast<qsizetype>(GlobalSize(memory)));
    GlobalUnlock(memory);
    return bytes;
}

void put(UINT format, const QByteArray &bytes)
{
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, static_cast<SIZE_T>(bytes.size()));
    void *data = memory ? GlobalLock(memory) : nullptr;
    if (data) {
        std::memcpy(data, bytes.constData(), static_cast<std::size_t>(bytes.size()));
        GlobalUnlock(memory);
    }
    if (memory && (!data || !SetClipboardData(format, memory)))
        GlobalFree(memory);
}

INPUT keyInput(WORD key, bool up)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
    return input;
}

// Releases the shortcut's keys, which are still pressed, so that the program sees only Ctrl+V.
void sendPaste()
{
    std::vector<INPUT> inputs;
    for (const int held : {VK_CONTROL, VK_SHIFT, VK_LWIN, VK_RWIN, VK_MENU}) {
        if (GetAsyncKeyState(held) & 0x8000)
            inputs.push_back(keyInput(static_cast<WORD>(held), true));
    }
    for (const auto &[key, up] : {std::pair(VK_CONTROL, false), std::pair(int('V'), false),
                                  std::pair(int('V'), true), std::pair(VK_CONTROL, true)})
        inputs.push_back(keyInput(static_cast<WORD>(key), up));
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

} // namespace

PlainPaste::~PlainPaste()
{
    restore();
}

std::vector<PlainPaste::Format> PlainPaste::contents() const
{
    std::vector<Format> formats;
    std::size_t total = 0;
    for (UINT format = EnumClipboardFormats(0); format != 0; format = EnumClipboardFormats(format)) {
        if (!isMemory(format))
            continue;
        QByteArray bytes = bytesOf(GetClipboardData(format));
        total += static_cast<std::size_t>(bytes.size());
        if (!bytes.isEmpty() && total <= maxKept)
            formats.push_back({format, std::move(bytes)});
    }
    return formats;
}

QString PlainPaste::paste()
{
    {
        const Clipboard clipboard(m_window);
        if (!clipboard)
            return tr("Not pasted: another program holds the clipboard");
        const QByteArray text = bytesOf(GetClipboardData(CF_UNICODETEXT));
        if (text.isEmpty())
            return tr("Not pasted: there is no text on the clipboard");
        // If it is pressed again before the clipboard was restored, the clipboard only contains our plain
        // text.
        if (m_kept.empty())
            m_kept = contents();
        EmptyClipboard();
        put(CF_UNICODETEXT, text);
    }
    m_sequence = GetClipboardSequenceNumber();
    sendPaste();
    SetTimer(m_window, restoreTimer, restoreAfter, nullptr);
    return tr("Pasted as plain text");
}

bool PlainPaste::handleTimer(WPARAM timer)
{
    if (timer != restoreTimer)
        return false;
    restore();
    return true;
}

void PlainPaste::restore()
{
    KillTimer(m_window, restoreTimer);
    const std::vector<Format> kept = std::exchange(m_kept, {});
    // If something else was copied meanwhile, it is kept.
    if (kept.empty() || GetClipboardSequenceNumber() != m_sequence)
        return;
    const Clipboard clipboard(m_window);
    if (!clipboard)
        return;
    EmptyClipboard();
    for (const Format &format : kept)
        put(format.format, format.bytes);
}

} // namespace agent
