// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/DriveDetails.h"
#include "SystemInfo/engine/Edid.h"
#include "SystemInfo/engine/Report.h"
#include "SystemInfo/engine/Startup.h"
#include "SystemInfo/engine/TaskXml.h"
#include "SystemInfo/engine/Tasks.h"
#include "tests/fuzz/FuzzText.h"

using namespace systeminfo;

// What devices, other programs and files from elsewhere hand to the pages.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    // With a sound sum, or no input would get past it.
    QByteArray edid = QByteArray::fromHex("00ffffffffffff00") + bytes.left(119);
    edid.resize(127, '\0');
    int sum = 0;
    for (const char byte : edid)
        sum += static_cast<quint8>(byte);
    edid += static_cast<char>((256 - sum % 256) % 256);
    const auto monitor = readEdid(edid);
    tests::require(monitor.has_value(), "a sound block is read");
    tests::require(monitor->refreshRate >= 0, "a rate has no sign");
    readDrive({bytes, bytes, bytes, bytes});
    startupState(bytes);

    ScheduledTask task;
    readTaskDefinition(tests::fuzzText(data, size), task);
    for (const TaskTrigger &trigger : task.triggers)
        tests::require(!triggerText(trigger).isEmpty(), "a trigger has words");
    if (const auto report = readReport(bytes))
        writeReport(*report, ReportFormat::Html);
    return 0;
}
