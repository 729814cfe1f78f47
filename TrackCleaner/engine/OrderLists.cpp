// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/OrderLists.h"

#include <QtEndian>

#include <algorithm>

namespace tracks
{

namespace
{

constexpr qsizetype letterBytes = sizeof(char16_t);
constexpr qsizetype numberBytes = sizeof(quint32);

QByteArray withoutLetters(const QByteArray &list, const QStringList &names)
{
    QByteArray kept;
    for (qsizetype at = 0; at + letterBytes <= list.size(); at += letterBytes) {
        const QChar letter(qFromLittleEndian<char16_t>(list.constData() + at));
        if (letter.isNull() || !names.contains(QString(letter), Qt::CaseInsensitive))
            kept += list.sliced(at, letterBytes);
    }
    return kept;
}

QByteArray withoutNumbers(const QByteArray &list, const QStringList &names)
{
    QByteArray kept;
    for (qsizetype at = 0; at + numberBytes <= list.size(); at += numberBytes) {
        const auto number = qFromLittleEndian<qint32>(list.constData() + at);
        if (number < 0 || !names.contains(QString::number(number)))
            kept += list.sliced(at, numberBytes);
    }
    return kept;
}

// 3 for "url3", 0 for any other name.
int urlNumber(const QString &name)
{
    bool isNumber = false;
    const int number =
        name.startsWith(u"url", Qt::CaseInsensitive) ? QStringView(name).mid(3).toInt(&isNumber) : 0;
    return isNumber ? std::max(number, 0) : 0;
}

void renumberUrls(std::vector<RegistryValue> &values)
{
    std::vector<RegistryValue *> urls;
    for (RegistryValue &value : values) {
        if (urlNumber(value.name) > 0)
            urls.push_back(&value);
    }
    std::sort(urls.begin(), urls.end(), [](const RegistryValue *a, const RegistryValue *b) {
        return urlNumber(a->name) < urlNumber(b->name);
    });
    int next = 1;
    for (RegistryValue *url : urls)
        url->name = QStringLiteral("url%1").arg(next++);
}

} // namespace

std::vector<RegistryValue> withoutValues(const std::vector<RegistryValue> &values, const QStringList &names)
{
    std::vector<RegistryValue> kept;
    for (RegistryValue value : values) {
        if (names.contains(value.name, Qt::CaseInsensitive))
            continue;
        if (value.name.compare(u"MRUList", Qt::CaseInsensitive) == 0)
            value.data = withoutLetters(value.data, names);
        else if (value.name.compare(u"MRUListEx", Qt::CaseInsensitive) == 0)
            value.data = withoutNumbers(value.data, names);
        kept.push_back(std::move(value));
    }
    renumberUrls(kept);
    return kept;
}

} // namespace tracks
