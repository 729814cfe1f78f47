// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/engine/Scan.h"

#include <QVarLengthArray>

#include <algorithm>
#include <charconv>
#include <limits>

namespace diskusage
{

namespace
{

constexpr std::size_t maxChildren = 10;

using Text = QVarLengthArray<char16_t, 1024>;

void append(Text &text, QStringView part)
{
    text.append(part.utf16(), part.size());
}

void append(Text &text, qint64 number)
{
    char digits[std::numeric_limits<qint64>::digits10 + 2];
    const std::to_chars_result written = std::to_chars(std::begin(digits), std::end(digits), number);
    std::for_each(digits, written.ptr, [&text](char digit) { text.append(static_cast<char16_t>(digit)); });
}

// Removes the text up to `separator` from the front and returns it; nullopt if there is no separator.
std::optional<QStringView> takeUntil(QStringView &rest, QChar separator)
{
    const qsizetype end = rest.indexOf(separator);
    if (end < 0)
        return std::nullopt;
    const QStringView taken = rest.first(end);
    rest = rest.sliced(end + 1);
    return taken;
}

std::optional<qint64> decimal(QStringView text)
{
    const auto isDigit = [](QChar character) { return character >= u'0' && character <= u'9'; };
    if (!std::all_of(text.begin(), text.end(), isDigit)) // toLongLong() would also accept signs and blanks
        return std::nullopt;
    bool ok = false;
    const qint64 number = text.toLongLong(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

} // namespace

void LargestChildren::offer(const QString &name, qint64 size, Kind kind)
{
    if (m_children.size() == maxChildren && size <= m_children.back().size)
        return;
    const auto smaller = std::find_if(m_children.begin(), m_children.end(),
                                      [size](const Child &child) { return child.size < size; });
    m_children.insert(smaller, {name, size, kind});
    if (m_children.size() > maxChildren)
        m_children.pop_back();
}

QString LargestChildren::serialised() const
{
    Text text;
    for (const Child &child : m_children) {
        append(text, child.name);
        text.append(u':');
        append(text, child.size);
        append(text, child.kind == File ? u":0;" : u":1;");
    }
    return QStringView(text.constData(), text.size()).toString();
}

std::vector<LargestChildren::Child> LargestChildren::parse(QStringView serialised)
{
    std::vector<Child> children;
    while (!serialised.isEmpty()) {
        const auto name = takeUntil(serialised, u':');
        const auto size = takeUntil(serialised, u':');
        const auto kind = takeUntil(serialised, u';');
        if (!name || !size || !kind || (*kind != u"0" && *kind != u"1"))
            break;
        const std::optional<qint64> bytes = decimal(*size);
        if (!bytes)
            break;
        children.push_back({name->toString(), *bytes, *kind == u"0" ? File : SubFolder});
    }
    return children;
}

} // namespace diskusage
