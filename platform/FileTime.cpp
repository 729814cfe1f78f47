// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FileTime.h"

#include <QDebug>
#include <QTimeZone>

#include <windows.h>

namespace platform
{

QDateTime localFileTime(quint64 fileTime)
{
    const FILETIME raw = {static_cast<DWORD>(fileTime), static_cast<DWORD>(fileTime >> 32)};
    SYSTEMTIME utc = {};
    if (!FileTimeToSystemTime(&raw, &utc)) {
        qDebug() << "Error\n";
        return {};
    }
    return QDateTime(QDate(utc.wYear, utc.wMonth, utc.wDay),
                     QTime(utc.wHour, utc.wMinute, utc.wSecond, utc.wMilliseconds), QTimeZone::utc())
        .toLocalTime();
}

QString fileTimeText(quint64 fileTime)
{
    return fileTime == 0 ? QString() : // unknown, not a date in 1601
               localFileTime(fileTime).toString();
}

} // namespace platform
