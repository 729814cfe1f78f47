// SPDX-License-Identifier: GPL-3.0-or-later

// Grouping files of which no two are duplicates, which is the longest search for a plain loop over all
// candidates; a tenth of them too, to show how the time grows. usage: duplicate_grouping [FILES]

#include "FindDuplicate/engine/Grouping.h"
#include "bench/Bench.h"

#include <cstdlib>
#include <random>
#include <utility>

namespace
{

std::vector<duplicates::FileRecord> files(std::size_t count)
{
    std::mt19937_64 random(1);
    std::vector<duplicates::FileRecord> result(count);
    for (std::size_t i = 0; i < count; ++i) {
        result[i].name = QStringLiteral("IMG_%1.jpg").arg(i);
        result[i].walkedFolder = QStringLiteral("C:\\photographs");
        result[i].size = random() % 8'000'000;
        result[i].lastWriteTime = 133'000'000'000'000'000 + i * 10'000'000; // one a second
    }
    return result;
}

// The best of a few rounds: the first one pays for the memory.
double groupingTime(std::size_t count)
{
    double best = 0;
    for (int round = 0; round < 3; ++round) {
        std::vector<duplicates::FileRecord> records = files(count);
        const double time = bench::seconds([&] {
            duplicates::DuplicateGrouper grouper;
            for (duplicates::FileRecord &record : records)
                grouper.add(std::move(record));
            if (grouper.candidates().size() != count)
                std::abort();
        });
        best = round == 0 ? time : std::min(best, time);
    }
    return best;
}

} // namespace

int main(int argc, char **argv)
{
    const std::size_t count = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1'000'000;
    const double tenth = groupingTime(count / 10);
    const double all = groupingTime(count);
    bench::report("files without an equal pair", static_cast<double>(count));
    bench::report("grouping a tenth of them", tenth, "s");
    bench::report("grouping them (aim for 1,000,000: under 2 s)", all, "s");
    bench::report("ratio (10 is proportional)", all / tenth);
    return 0;
}
