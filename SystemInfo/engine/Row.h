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

// Marks a label for translation; its English text is also where the row's stable name comes from.
#define SYSTEMINFO_LABEL(text) QT_TRANSLATE_NOOP("systeminfo", text)

namespace systeminfo
{

class Words
{
    Q_DECLARE_TR_FUNCTIONS(systeminfo)
};

// What a row says. The text is what is shown, and empty when the machine did not report it; a quantity keeps
// its number and unit apart for those who compute with a report.
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

// Why a value is left out of a report unless the user asks for it.
enum class Privacy { Open, Serial, Secret, Person, Address };

struct Row {
    QString name;  // stable, for machines: "totalAmountOfRam"
    QString label; // for people
    Value value;
    Privacy privacy = Privacy::Open;
    QString icon;     // of the resources, "SysInfoCPU16.png"
    QImage image;     // instead of the icon: a drive's own
    QString openPath; // opened by a double click
    QString hint;     // tool tip
    QString problem;  // marked, and said behind the value: "does not exist"
    std::vector<Row> children = {};

    Row &add(Row child);

    bool operator==(const Row &) const = default;
};

// `label` and `title` are marked with SYSTEMINFO_LABEL.
Row fact(const char *label, const Value &value = {}, Privacy privacy = Privacy::Open);
Row section(const char *title, const QString &icon);
// A row whose label is data; `name` is the English name of its kind ("Hot Fix").
Row item(const char *name, const QString &label, const Value &value = {});
// "Disk #0", with the same name for all.
Row numbered(const char *label, qsizetype number, const Value &value = {});

// Says "None" behind a list that was read and is empty.
Row withNone(Row list);
// "Total Amount of RAM" -> "totalAmountOfRam"
QString stableName(const QString &english);

struct Page {
    QString name; // "memory"
    QString title;
    std::vector<Row> sections = {};
    QStringList notices = {};                  // what is missing, in sentences for the user
    QString summary = {};                      // the machine in one sentence; of the first page only
    std::optional<quint64> uptimeSeconds = {}; // what the page says about it, see updateUptime()

    bool operator==(const Page &) const = default;
};

// Takes the state of a page that is still being gathered, so that what was read is there when the rest hangs.
using Publish = std::function<void(const Page &)>;

} // namespace systeminfo
