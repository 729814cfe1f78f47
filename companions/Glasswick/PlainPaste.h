// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>
#include <windows.h>

namespace agent
{

// Pastes the clipboard's text without formatting into the foreground window: replaces the clipboard by plain
// text, sends Ctrl+V, and restores the previous content. Formats that are not global memory (metafiles) are
// not restored, nor is anything larger than maxKept.
class PlainPaste
{
public:
    static constexpr std::size_t maxKept = 64 << 20; // bytes, all formats together

    explicit PlainPaste(HWND window) : m_window(window) {}
    ~PlainPaste();

    // Returns a sentence for the log.
    QString paste();
    // Returns true if the timer belongs to this object.
    bool handleTimer(WPARAM timer);

private:
    struct Format {
        UINT format;
        QByteArray bytes;
    };

    std::vector<Format> contents() const;
    void restore();

    HWND m_window;
    std::vector<Format> m_kept; // filled from paste() until restore()
    DWORD m_sequence = 0;       // clipboard sequence number after the text was set
};

} // namespace agent
