// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QImage>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

// Marks a label for translation. Its English text also determines the row's stable name.
#define SYSTEMINFO_LABEL(text) QT_TRANSLATE_NOOP("systeminfo", text)

namespace systeminfo
{

class Words
{
    Q_DECLARE_TR_FUNCTIONS(systeminfo)
};

// A row's value. `text` is for display, and empty if the machine did not report it; quantities also keep
// number and unit, for programs that process a report.
struct Value {
    QString text;
    QVariant number;
    QString unit;

    Value() = default;
    Value(const QString &shown) : text(shown) {}
    // "16 GB"
    static Value of(qint64 number, const QString &unit);
    // "2.92969 GHz"; digits as in QString::number(number, 'g', digits).
    static Value of(double number, const QString &unit, int digits = 6);
    static Value yesNo(bool yes);

    bool operator==(const Value &) const = default;
};

// Why a value is excluded from a report by default.
enum class Privacy { Open, Serial, Secret, Person, Address };

struct Row {
    QString name;  // stable, for programs: "totalAmountOfRam"
    QString label; // for display
    Value value;
    Privacy privacy = Privacy::Open;
    QString icon;     // resource name, "SysInfoCPU16.png"
    QImage image;     // used instead of `icon`: the icon of a drive
    QString openPath; // opened by a double click
    QString hint;     // tool tip
    QString problem;  // shown after the value and highlighted: "does not exist"
    std::vector<Row> children = {};

    Row &add(Row child);

    bool operator==(const Row &) const = default;
};

// `label` and `title` must be marked with SYSTEMINFO_LABEL.
Row fact(const char *label, const Value &value = {}, Privacy privacy = Privacy::Open);
Row section(const char *title, const QString &icon);
// A row whose label is data; `name` is the English name of its kind ("Hot Fix").
Row item(const char *name, const QString &label, const Value &value = {});
// A row "Disk #0"; all numbers share one name.
Row numbered(const char *label, qsizetype number, const Value &value = {});

// Sets "None" as the value of a list that was read and is empty.
Row withNone(Row list);
// "Total Amount of RAM" -> "totalAmountOfRam"
QString stableName(const QString &english);

struct Page {
    QString name; // "memory"
    QString title;
    std::vector<Row> sections = {};
    QStringList notices = {};                  // what could not be read, as sentences for the user
    QString summary = {};                      // one sentence about the machine; first page only
    std::optional<quint64> uptimeSeconds = {}; // the uptime that the page shows, see updateUptime()

    bool operator==(const Page &) const = default;
};

// Receives the state of a page while it is gathered, so that it can be shown if a later call hangs.
using Publish = std::function<void(const Page &)>;

} // namespace systeminfo
