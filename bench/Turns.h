// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/Bench.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace bench
{

// One of two ways to do the same. `run` finds what `prepare` has made, and nothing else is made in between:
// what the disk still has to write belongs to one way alone.
struct Way {
    std::string name;
    std::function<void()> prepare;
    std::function<void()> run;
};

// Both ways take turns, and the one that begins changes from round to round. Reports the medians, and how
// much longer the second took.
inline void takeTurns(const std::string &what, const Way &bare, const Way &ours, int rounds)
{
    std::vector<double> times[2];
    for (int turn = 0; turn < 2 * rounds; ++turn) {
        const int which = (turn + turn / 2) % 2; // 0, 1, 1, 0, 0, 1, ...
        const Way &way = which == 0 ? bare : ours;
        way.prepare();
        times[which].push_back(seconds(way.run));
    }
    report(what + ", " + bare.name, median(times[0]), "s");
    report(what + ", " + ours.name, median(times[1]), "s");
    report(what + ", ratio", median(times[1]) / median(times[0]));
}

} // namespace bench
