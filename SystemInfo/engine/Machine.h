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

// The answers of Windows as plain data, before any of it is put into words. Sizes are in bytes; what could
// not be read is empty, 0 or absent.

struct MemoryStatus {
    quint64 totalPhysical = 0;
    quint64 availablePhysical = 0;
    quint64 totalPageFile = 0; // the commit limit
    quint64 availablePageFile = 0;
};

struct SystemFacts {
    quint32 major = 0, minor = 0, build = 0; // as the kernel says, whatever the manifest of the program
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

// SYSTEM_POWER_STATUS, and three fields of SYSTEM_POWER_CAPABILITIES.
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
    quint32 type = 0;     // interface type of IANA's list
    QString firstAddress; // "0.0.0.0" when it has none
};

// The same adapters as the newer call tells them.
struct Connection {
    QString name;
    bool connected = false;
    quint64 bitsPerSecond = 0; // 0: unknown
    QStringList addresses;     // IPv4 and IPv6
    QString hardwareAddress;
};

struct GraphicsAdapter {
    QString name;
    quint64 dedicatedBytes = 0;
    quint64 sharedBytes = 0; // of the main memory, at most
};

struct SpecialFolder {
    QString name; // as Windows names it, "Local AppData"
    QString path;
    bool common = false; // of all users
};

enum class PathState { Exists, Missing, NotLookedAt }; // the last for a server, which may take a minute

struct StartupFile {
    QString name;   // "Chat.lnk"
    QString target; // of a link; else the file itself
    QString arguments;
    bool common = false;
};

// What a trigger of the task scheduler says.
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
    int interval = 1;   // every so many days or weeks
    int weekdays = 0;   // bits from Sunday
    quint32 days = 0;   // of the month: bits from the 1st
    int months = 0;     // bits from January
    int weeks = 0;      // bits: first to fourth week of the month
    bool last = false;  // the last day, or week, of the month as well
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
    QStringList actions; // what is run
    QDateTime lastRun;   // invalid: never
    QDateTime nextRun;
    quint32 lastResult = 0;
    QString author;
};

struct TaskList {
    bool read = false;
    bool cutOff = false; // more than anybody reads
    std::vector<ScheduledTask> tasks;
};

// What a drive's driver answered, as it stands in the device's own structures; empty where it answered
// nothing.
struct DriveAnswers {
    QByteArray descriptor;  // STORAGE_DEVICE_DESCRIPTOR
    QByteArray seekPenalty; // DEVICE_SEEK_PENALTY_DESCRIPTOR
    QByteArray temperature; // STORAGE_TEMPERATURE_DATA_DESCRIPTOR
    QByteArray nvmeHealth;  // the health page behind a STORAGE_PROTOCOL_DATA_DESCRIPTOR
};

// Everything that the pages read. Used on one thread; every call may take as long as Windows likes.
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
    virtual std::vector<GraphicsAdapter> graphics() = 0; // without those made of software
    // True for a device that is there now: the registry keeps all that ever were. "DISPLAY\GSM5AB8\5&2a..."
    virtual bool isPresent(const QString &deviceInstance) = 0;
    virtual DriveAnswers drive(quint32 number) = 0;
    // BitLocker's state of a volume as the shell knows it, see OperatingSystem.cpp.
    virtual std::optional<int> encryptionState(const QString &root) = 0;

    virtual QString expanded(const QString &text) = 0; // %NAME% replaced
    virtual QImage smallIcon(const QString &path) = 0; // as the shell shows it; null for none
    virtual PathState pathState(const QString &path) = 0;
    virtual QString companyName(const QString &file) = 0;
    // What a file that is named without its folder stands for on the search path; empty when there is none.
    virtual QString findProgram(const QString &name) = 0;
    virtual std::vector<SpecialFolder> specialFolders() = 0;
    virtual std::vector<StartupFile> startupFiles() = 0;
    virtual TaskList tasks() = 0;
};

} // namespace systeminfo
