// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/TopLevelWindows.h"

#include "platform/Text.h"

#include <QStringBuilder>

#include <windows.h>

namespace platform
{

static_assert(messageReloadSettings == WM_USER + 600 && messageRefreshIconExtractor == WM_USER + 107 &&
              messageLoggedOnly == WM_USER + 108 && messageStayAwakeState == WM_USER + 704);

WId findTopLevelWindow(const QString &className, const QString &title)
{
    return reinterpret_cast<WId>(FindWindowW(wide(className), wide(title)));
}

QString toolkitWindowClass()
{
    return u"Qt" % QString::fromLatin1(qVersion()).remove(u'.') % u"QWindowIcon";
}

WId companionWindow(const QString &title)
{
    const WId first = findTopLevelWindow(QStringLiteral("Qt653QWindowIcon"), title);
    return first ? first : findTopLevelWindow(toolkitWindowClass(), title);
}

bool postToWindow(WId window, unsigned message, quintptr wParam, qintptr lParam)
{
    return PostMessageW(reinterpret_cast<HWND>(window), message, wParam, lParam);
}

ScreenMetrics fullScreenClientArea()
{
    return {static_cast<quint32>(GetSystemMetrics(SM_CXFULLSCREEN)),
            static_cast<quint32>(GetSystemMetrics(SM_CYFULLSCREEN))};
}

} // namespace platform
