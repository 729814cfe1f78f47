// SPDX-License-Identifier: GPL-3.0-or-later

// Changes the wallpaper once, on behalf of the background agent: queries a service, decodes the image, sets
// it and exits. This keeps the agent small, and data from the network away from long-lived processes. The
// argument is the folder of the request and the answer.
#include "automation/engine/Texts.h"
#include "companions/LarkspurWallpaper/Changer.h"
#include "platform/Com.h"
#include "platform/DetachedThread.h"

#include <QCoreApplication>
#include <QDir>

using automation::tr;

namespace
{

constexpr DWORD maxRunTime = 150'000; // ms; terminates the process even if something hangs
constexpr DWORD maxWait = 60'000;     // for a process started by a previous agent
constexpr UINT codeTooLong = 2;

automation::WallpaperAnswer answerTo(const QByteArray &text, wallpaper::ImageFolder &folder)
{
    const auto request = automation::parseRequest(text);
    if (!request)
        return {.reason = tr("The request cannot be read")};
    const auto desktop = platform::systemWallpaper();
    const automation::ImageServices services;
    const wallpaper::ImageFetcher web(services.allowed);
    return wallpaper::serve(*request, {services, web, *desktop, folder, platform::isConnectionMetered,
                                       QDateTime::currentDateTimeUtc()});
}

} // namespace

int main(int argc, char *argv[])
{
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    platform::runDetached([] {
        Sleep(maxRunTime);
        TerminateProcess(GetCurrentProcess(), codeTooLong);
    });
    const QCoreApplication application(argc, argv); // loads the image format plug-ins
    if (argc != 2 || !QDir(QCoreApplication::arguments().at(1)).isAbsolute())
        return 1;
    const platform::ObjectHandle turn(CreateMutexW(nullptr, FALSE, L"Local\\Fernlight Larkspur Wallpaper"));
    WaitForSingleObject(turn.get(), maxWait);
    const platform::ComScope com;
    imaging::DecoderPool decoders({imaging::DecoderPool::decoderProgram()});
    wallpaper::ImageFolder folder(QDir::toNativeSeparators(QCoreApplication::arguments().at(1)), decoders);
    const automation::WallpaperAnswer answer = answerTo(folder.read(automation::requestFile), folder);
    const bool written = folder.write(automation::answerFile, automation::answerText(answer));
    return written && answer.result != automation::WallpaperAnswer::Result::Failed ? 0 : 1;
}
