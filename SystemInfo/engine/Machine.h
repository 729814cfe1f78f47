// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RegistryView.h"
#include "core/Wmi.h"

#include <QDateTime>
#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace systeminfo
{

// The answers of Windows as plain data, before formatting. Sizes are in bytes; values that could not be read
// are empty, 0 or absent.

struct MemoryStatus {
    quint64 totalPhysical = 0;
    quint64 availablePhysical = 0;
    quint64 totalPageFile = 0; // the commit limit
    quint64 availablePageFile = 0;
};

struct SystemFacts {
    quint32 major = 0, minor = 0, build = 0; // from the kernel, independent of the program's manifest
    bool is64Bit = false;
    QString computerName;
    QString userName;
    QString country;  // in the user's language
    QString language; // likewise
    QString locale;   // "en-GB"
    QString timeZone; // "W. Europe Standard Time (UTC+01:00)"
    quint64 uptimeSeconds = 0;
    QString windowsFolder;
    QString systemFolder;
    QString profileFolder;
    QDateTime now;
};

// SYSTEM_POWER_STATUS and three fields of SYSTEM_POWER_CAPABILITIES.
struct PowerStatus {
    bool read = false;
    quint8 acLine = 255;
    quint8 batteryFlag = 255;
    quint8 lifePercent = 255;
    qint32 lifeSeconds = -1;
    qint32 fullLifeSeconds = -1;
    bool capabilitiesRead = false;
    bool throttling = false;
    quint8 minimumThrottle = 0; // percent
    quint8 maximumThrottle = 0;
};

struct Volume {
    QString root; // "C:\"
    QString label;
    quint64 totalBytes = 0;
    quint64 freeBytes = 0;
};

struct Adapter {
    QString description;
    quint32 type = 0;     // IANA interface type
    QString firstAddress; // "0.0.0.0" if it has none
};

// The same adapters as reported by GetAdaptersAddresses().
struct Connection {
    QString name;
    bool connected = false;
    quint64 bitsPerSecond = 0; // 0 if unknown
    QStringList addresses;     // IPv4 and IPv6
    QString hardwareAddress;
};

struct GraphicsAdapter {
    QString name;
    quint64 dedicatedBytes = 0;
    quint64 sharedBytes = 0; // upper limit of main memory it may use
};

struct SpecialFolder {
    QString name; // as Windows names it, "Local AppData"
    QString path;
    bool common = false; // of all users
};

enum class PathState {
    Exists,
    Missing,
    NotChecked
}; // NotChecked for a network path, which may take a minute

struct StartupFile {
    QString name;   // "Chat.lnk"
    QString target; // of a link, otherwise the file itself
    QString arguments;
    bool common = false;
};

// A trigger of the task scheduler.
struct TaskTrigger {
    enum class Kind {
        Other,
        Event,
        Once,
        Daily,
        Weekly,
        Monthly,
        MonthlyByWeekday,
        Idle,
        Registration,
        Boot,
        Logon,
        SessionChange
    };

    Kind kind = Kind::Other;
    bool enabled = true;
    QString start;      // ISO 8601
    int interval = 1;   // every n days or weeks
    int weekdays = 0;   // bit mask, Sunday first
    quint32 days = 0;   // days of the month, bit 0 is the 1st
    int months = 0;     // bit mask, January first
    int weeks = 0;      // bit mask, first to fourth week of the month
    bool last = false;  // also on the last day or week of the month
    QString repetition; // ISO 8601 duration, "PT15M"
    QString user;

    bool operator==(const TaskTrigger &) const = default;
};

struct ScheduledTask {
    QString name;
    QString folder; // "\Microsoft\Windows"
    int state = 0;  // TASK_STATE
    bool hidden = false;
    std::vector<TaskTrigger> triggers;
    QStringList actions; // what the task runs
    QDateTime lastRun;   // invalid: never
    QDateTime nextRun;
    quint32 lastResult = 0;
    QString author;
};

struct TaskList {
    bool read = false;
    bool cutOff = false; // the list was too long and is incomplete
    std::vector<ScheduledTask> tasks;
};

// The raw answers of a drive's driver, in the device's own structures; empty if there was none.
struct DriveAnswers {
    QByteArray descriptor;  // STORAGE_DEVICE_DESCRIPTOR
    QByteArray seekPenalty; // DEVICE_SEEK_PENALTY_DESCRIPTOR
    QByteArray temperature; // STORAGE_TEMPERATURE_DATA_DESCRIPTOR
    QByteArray nvmeHealth;  // the health log page after a STORAGE_PROTOCOL_DATA_DESCRIPTOR
};

// Everything that the pages read. Used on one thread; any call may block.
class Machine
{
public:
    virtual ~Machine() = default;

    virtual core::WmiSource &wmi() = 0;
    virtual core::RegistryView &registry() = 0;
    virtual bool stopRequested() const = 0;

    virtual SystemFacts system() = 0;
    virtual MemoryStatus memory() = 0;
    virtual PowerStatus power() = 0;
    virtual QSize primaryScreen() = 0;
    virtual std::vector<Volume> fixedVolumes() = 0;
    virtual std::vector<Adapter> adapters() = 0;
    virtual std::vector<Connection> connections() = 0;
    virtual QStringList printers() = 0;
    virtual std::vector<GraphicsAdapter> graphics() = 0; // software adapters are left out
    // True for a device that is connected now; the registry also keeps former ones. "DISPLAY\GSM5AB8\5&2a..."
    virtual bool isPresent(const QString &deviceInstance) = 0;
    virtual DriveAnswers drive(quint32 number) = 0;
    // A volume's BitLocker state as the shell reports it, see OperatingSystem.cpp.
    virtual std::optional<int> encryptionState(const QString &root) = 0;

    virtual QString expanded(const QString &text) = 0; // with %NAME% expanded
    virtual QImage smallIcon(const QString &path) = 0; // as the shell shows it; null if there is none
    virtual PathState pathState(const QString &path) = 0;
    virtual QString companyName(const QString &file) = 0;
    // Resolves a file name without a folder through the search path; empty if not found.
    virtual QString findProgram(const QString &name) = 0;
    virtual std::vector<SpecialFolder> specialFolders() = 0;
    virtual std::vector<StartupFile> startupFiles() = 0;
    virtual TaskList tasks() = 0;
};

} // namespace systeminfo
