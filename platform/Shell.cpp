// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Shell.h"

#include "platform/Handle.h"
#include "platform/Paths.h"
#include "platform/Text.h"

#include <QProcess>
#include <QStringBuilder>

#include <objbase.h>
#include <shellapi.h>
#include <shobjidl.h>

namespace platform
{

namespace
{

// ShellExecuteW returns at most 32 on failure.
bool shellExecute(const QString &file, int show, const wchar_t *parameters = nullptr)
{
    const HINSTANCE answer = ShellExecuteW(nullptr, L"open", wide(file), parameters, nullptr, show);
    return reinterpret_cast<INT_PTR>(answer) > 32;
}

// Accepts "C:" too, although Win32 takes it for the current folder of that drive.
bool namesOneItem(const QString &path)
{
    return isDriveRoot(path) || survivesWin32(shownPath(path));
}

struct InterfaceTraits {
    using Raw = ITaskbarList3 *;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { raw->Release(); }
};

// Null without a taskbar. Created for each call, since a static object would outlive COM.
UniqueHandle<InterfaceTraits> taskbar()
{
    UniqueHandle<InterfaceTraits> list;
    if (FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3,
                                reinterpret_cast<void **>(list.put()))) ||
        FAILED(list.get()->HrInit()))
        return {};
    return list;
}

class WindowsShell : public Shell
{
public:
    bool openFile(const QString &path) override
    {
        return namesOneItem(path) && shellExecute(shownPath(path), SW_SHOWNORMAL);
    }

    bool revealInExplorer(const QString &path) override
    {
        if (!namesOneItem(path))
            return false;
        QProcess explorer;
        explorer.setProgram(QStringLiteral("explorer.exe"));
        // Explorer expects quotes around the path only. QProcess would quote the whole argument, and Explorer
        // would then open another folder for a path with a comma.
        explorer.setNativeArguments(u"/select,\"" % shownPath(path) % u'"');
        return explorer.startDetached();
    }

    bool openRecycleBin() override
    {
        return shellExecute(QStringLiteral("explorer.exe"), SW_SHOWNORMAL, L"shell:RecycleBinFolder");
    }

    bool openWebPage(const QUrl &address) override
    {
        if (!address.isValid() || (address.scheme() != u"https" && address.scheme() != u"http"))
            return false;
        return shellExecute(QString::fromLatin1(address.toEncoded()), SW_SHOWNORMAL);
    }

    bool openSettingsPage(const QString &page) override
    {
        return shellExecute(u"ms-settings:" % page, SW_SHOWNORMAL);
    }

    void runElevated(WId owner, const QString &file, const QString &folder) override
    {
        if (!fileExists(file))
            return;
        SHELLEXECUTEINFOW launch = {};
        launch.cbSize = sizeof launch;
        launch.hwnd = reinterpret_cast<HWND>(owner);
        launch.lpVerb = L"runas";
        launch.lpFile = wide(file);
        launch.lpParameters = L"";
        launch.lpDirectory = wide(folder);
        launch.nShow = SW_SHOWNORMAL;
        ShellExecuteExW(&launch);
    }

    bool startAgent(const QString &file, bool hidden) override
    {
        return shellExecute(file, hidden ? SW_HIDE : SW_SHOWDEFAULT);
    }

    void showTaskbarProgress(WId window, int done, int total) override
    {
        const auto list = taskbar();
        if (!list)
            return;
        const auto handle = reinterpret_cast<HWND>(window);
        if (total > 0)
            list.get()->SetProgressValue(handle, static_cast<ULONGLONG>(done), static_cast<ULONGLONG>(total));
        else
            list.get()->SetProgressState(handle, TBPF_INDETERMINATE);
    }

    void clearTaskbarProgress(WId window) override
    {
        if (const auto list = taskbar())
            list.get()->SetProgressState(reinterpret_cast<HWND>(window), TBPF_NOPROGRESS);
    }
};

Shell *replaced = nullptr;

} // namespace

Shell &shell()
{
    static WindowsShell real;
    return replaced ? *replaced : real;
}

void setShell(Shell *replacement)
{
    replaced = replacement;
}

} // namespace platform
