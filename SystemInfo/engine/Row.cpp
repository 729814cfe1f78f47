// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

Value Value::of(qint64 number, const QString &unit)
{
    Value value(QString::number(number) + QLatin1Char(' ') + unit);
    value.number = number;
    value.unit = unit;
    return value;
}

Value Value::of(double number, const QString &unit, int digits)
{
    Value value(QString::number(number, 'g', digits) + QLatin1Char(' ') + unit);
    value.number = number;
    value.unit = unit;
    return value;
}

Value Value::yesNo(bool yes)
{
    Value value(yes ? Words::tr("Yes") : Words::tr("No"));
    value.number = yes;
    return value;
}

Row &Row::add(Row child)
{
    children.push_back(std::move(child));
    return children.back();
}

QString stableName(const QString &english)
{
    QString name;
    bool wordBegins = false;
    for (const QChar letter : english) {
        if (!letter.isLetterOrNumber()) {
            wordBegins = !name.isEmpty();
            continue;
        }
        name += wordBegins ? letter.toUpper() : letter.toLower();
        wordBegins = false;
    }
    return name;
}

Row fact(const char *label, const Value &value, Privacy privacy)
{
    Row row = item(label, Words::tr(label), value);
    row.privacy = privacy;
    return row;
}

Row section(const char *title, const QString &icon)
{
    Row row = item(title, Words::tr(title));
    row.icon = icon;
    return row;
}

Row item(const char *name, const QString &label, const Value &value)
{
    return {.name = stableName(QString::fromLatin1(name)), .label = label, .value = value};
}

Row withNone(Row list)
{
    if (list.children.empty() && list.value.text.isEmpty())
        list.value = Words::tr("None");
    return list;
}

Row numbered(const char *label, qsizetype number, const Value &value)
{
    return item(label, Words::tr(label) + QString::number(number), value);
}

} // namespace systeminfo
