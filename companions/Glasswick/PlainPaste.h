// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>
#include <windows.h>

namespace agent
{

// Pastes the clipboard's text without its formatting into the window in front: puts the text alone on the
// clipboard, sends Ctrl+V, and puts back what was there. What was there and is no block of memory (a
// metafile) or is larger than maxKept is not put back.
class PlainPaste
{
public:
    static constexpr std::size_t maxKept = 64 << 20; // bytes, of all formats together

    explicit PlainPaste(HWND window) : m_window(window) {}
    ~PlainPaste();

    // A sentence for the log.
    QString paste();
    // True when the timer was its own.
    bool handleTimer(WPARAM timer);

private:
    struct Format {
        UINT format;
        QByteArray bytes;
    };

    std::vector<Format> contents() const;
    void restore();

    HWND m_window;
    std::vector<Format> m_kept; // not empty from paste() until restore()
    DWORD m_sequence = 0;       // of the clipboard, when the text was put there
};

} // namespace agent
