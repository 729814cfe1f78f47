// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace bench
{

template <class Work>
double seconds(Work &&work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// One line of a report: "name: value".
inline void report(const std::string &name, double value, const char *unit = "")
{
    std::printf("%s: %.3f%s%s\n", name.c_str(), value, *unit ? " " : "", unit);
    std::fflush(stdout);
}

} // namespace bench
