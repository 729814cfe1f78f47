// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace tests
{

// The fuzzer's bytes as a text of the registry: by the first byte as single-byte characters, among which the
// fuzzer soon finds the separators, or as UTF-16 with whatever surrogates there are.
inline QString fuzzText(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return {};
    const bool wide = (*data & 1) != 0;
    const auto length = static_cast<qsizetype>(size - 1);
    if (!wide)
        return QString::fromLatin1(reinterpret_cast<const char *>(data + 1), length);
    QString text(length / 2, Qt::Uninitialized);
    std::memcpy(text.data(), data + 1, static_cast<std::size_t>(text.size()) * sizeof(char16_t));
    return text;
}

inline void require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

} // namespace tests
