// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/WallpaperFeature.h"

#include "automation/engine/AgentLog.h"
#include "automation/engine/Texts.h"
#include "companions/Glasswick/EventSource.h"
#include "companions/Glasswick/Log.h"
#include "platform/Guard.h"
#include "platform/KnownFolders.h"
#include "platform/NewFile.h"
#include "platform/Text.h"
#include "platform/TopLevelWindows.h"
#include "settings/AgentState.h"
#include "settings/WallpaperSettings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>

using namespace automation;

namespace agent
{

namespace
{

constexpr QStringView handledNote = u"Wallpaper handled";
constexpr QStringView newestNote = u"Wallpaper newest"; // key of the service's newest image
constexpr DWORD restorePatience = 10000;                // ms, when the agent exits

QString marketOf(int region)
{
    const auto regions = imageRegions();
    const auto index = static_cast<std::size_t>(region);
    return index < regions.size() ? QString::fromLatin1(regions[index].market) : QString();
}

WallpaperSettings stored()
{
    WallpaperSettings wanted;
    wanted.enabled = settings::wallpaperEnabled.read();
    wanted.daily = dailyTime(settings::wallpaperTime.read(), settings::wallpaperPeriod.read());
    wanted.source = static_cast<ImageSource>(settings::wallpaperSource.read());
    if (wanted.source == ImageSource::Bing)
        wanted.market = marketOf(settings::wallpaperRegion.read());
    if (wanted.enabled && wanted.source == ImageSource::Own)
        wanted.ownCount = settings::customFiles.read().size();
    wanted.perMonitor = settings::wallpaperPerMonitor.read();
    wanted.keep = settings::wallpaperKeep.read();
    wanted.waitsRemote = settings::wallpaperWaitsRemote.read();
    return wanted;
}

const settings::Number &indexOf(ImageSource source)
{
    return source == ImageSource::Bing   ? settings::bingIndex
           : source == ImageSource::Nasa ? settings::nasaIndex
                                         : settings::customIndex;
}

QString helperProgram()
{
    std::array<wchar_t, 32768> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size() - 1));
    const QString own = platform::fromWide(path.data());
    return own.left(own.lastIndexOf(u'\\')) + QStringLiteral("\\LarkspurWallpaper.exe");
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(maxJobFileBytes) : QByteArray();
}

} // namespace

WallpaperFeature::WallpaperFeature(const Surroundings &surroundings)
    : m_surroundings(surroundings),
      m_folder(wallpaperFolder(platform::knownFolder(platform::KnownFolder::LocalAppData))),
      m_rule(QDateTime::fromString(settings::readAgentNote(handledNote), Qt::ISODate))
{
    readShown();
}

WallpaperFeature::~WallpaperFeature()
{
    // Any other running change finishes on its own; its result is read at the next start.
    if (m_restoring && WaitForSingleObject(m_process.get(), restorePatience) == WAIT_OBJECT_0)
        processEnded();
    settings::writeAgentState(features::wallpaper, {});
}

WallpaperScene WallpaperFeature::scene() const
{
    return {GetSystemMetrics(SM_REMOTESESSION) != 0, m_shown};
}

void WallpaperFeature::reload()
{
    m_settings = stored();
    const WallpaperDecision decision = m_rule.take(eventNow(EventKind::Reload), m_settings, scene());
    carryOut(decision);
    // There is something to restore only if this file exists.
    if (decision.restore && !m_restoring && QFileInfo::exists(m_folder + QStringLiteral("\\former.json")))
        m_restoring = startProcess({.restore = true});
}

void WallpaperFeature::take(const Event &event)
{
    if (m_settings.enabled)
        carryOut(m_rule.take(event, m_settings, scene()));
}

bool WallpaperFeature::handle(UINT message, WPARAM wParam, LPARAM)
{
    if (message == messageWaitEnded && wParam == waitedWallpaper) {
        processEnded();
        return true;
    }
    if (message != platform::messageChangeWallpaper)
        return false;
    Event event = eventNow(EventKind::Asked);
    event.value = wParam == 1 ? 1 : wParam == 2 ? -1 : 0;
    take(event);
    return true;
}

void WallpaperFeature::carryOut(const WallpaperDecision &decision)
{
    if (decision.endProcess)
        endProcess();
    settings::writeAgentNote(
        handledNote, decision.handled.isValid() ? decision.handled.toUTC().toString(Qt::ISODate) : QString());
    settings::writeAgentState(features::wallpaper, {decision.now, decision.next});
    m_surroundings.wakeAfter(decision.wakeAfter);
    if (!decision.why.isEmpty())
        m_surroundings.log.write(features::wallpaper, decision.subject, decision.why);
    if (decision.start)
        startChange(*decision.start);
}

void WallpaperFeature::startChange(const WallpaperDecision::Start &start)
{
    WallpaperRequest request;
    request.source = m_settings.source;
    request.market = m_settings.market;
    request.step = start.step;
    request.automatic = start.automatic;
    request.index = indexOf(m_settings.source).read();
    request.newest = settings::readAgentNote(newestNote);
    if (request.source == ImageSource::Own)
        request.own = settings::customFiles.read();
    request.perMonitor = m_settings.perMonitor;
    request.onMetered = settings::wallpaperOnMetered.read();
    if (!startProcess(request))
        carryOut(m_rule.ended(eventNow(EventKind::ProgramEnded), m_settings, scene(),
                              WallpaperAnswer{.reason = QStringLiteral(
                                                  "The program that changes the wallpaper does not start")}));
}

bool WallpaperFeature::startProcess(const WallpaperRequest &request)
{
    endProcess();
    QDir().mkpath(m_folder);
    platform::eraseOwn(m_folder, m_folder + u'\\' + answerFile.toString());
    const QString program = helperProgram();
    if (!platform::NewFile::save(m_folder + u'\\' + requestFile.toString(), requestText(request)).isEmpty())
        return false;
    std::wstring command = (u'"' + program + QStringLiteral("\" \"") + m_folder + u'"').toStdWString();
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(platform::wide(program), command.data(), nullptr, nullptr, FALSE,
                        CREATE_NO_WINDOW | BELOW_NORMAL_PRIORITY_CLASS, nullptr, nullptr, &startup, &started))
        return false;
    const platform::ObjectHandle thread(started.hThread);
    m_process.reset(started.hProcess);
    // Runs on a thread-pool thread and only posts a message.
    const auto ended = [](void *window, BOOLEAN) {
        PostMessageW(static_cast<HWND>(window), messageWaitEnded, waitedWallpaper, 0);
    };
    return RegisterWaitForSingleObject(m_wait.put(), m_process.get(), ended, m_surroundings.window, INFINITE,
                                       WT_EXECUTEONLYONCE) != FALSE;
}

// Safe at any time: the process replaces its files atomically, and changes the desktop last.
void WallpaperFeature::endProcess()
{
    m_wait.reset();
    if (m_process)
        TerminateProcess(m_process.get(), 1);
    m_process.reset();
    m_restoring = false;
}

void WallpaperFeature::processEnded()
{
    // A message of a process that was terminated may still arrive.
    if (!m_process || WaitForSingleObject(m_process.get(), 0) != WAIT_OBJECT_0)
        return;
    m_wait.reset();
    m_process.reset();
    const auto answer = parseAnswer(contents(m_folder + u'\\' + answerFile.toString()));
    readShown();
    if (std::exchange(m_restoring, false)) {
        m_surroundings.log.write(features::wallpaper, tr("Off"),
                                 answer ? tr("You switched it off; %1").arg(answer->reason)
                                        : tr("The former wallpaper could not be put back"));
        if (m_settings.enabled) // switched on again meanwhile
            carryOut(m_rule.take(eventNow(EventKind::Reload), m_settings, scene()));
        return;
    }
    if (answer && (answer->result == WallpaperAnswer::Result::Changed ||
                   answer->result == WallpaperAnswer::Result::Same)) {
        indexOf(m_settings.source).write(answer->index);
        settings::writeAgentNote(newestNote, answer->newest);
    }
    carryOut(m_rule.ended(eventNow(EventKind::ProgramEnded), m_settings, scene(), answer));
}

void WallpaperFeature::readShown()
{
    const auto shown = parseAnswer(contents(m_folder + u'\\' + shownFile.toString()));
    m_shown = shown && !shown->pictures.isEmpty() ? shown->pictures[0].title : QString();
}

} // namespace agent
