// SPDX-License-Identifier: GPL-3.0-or-later

// Comparing fingerprints against the plain loop over lists of integers, on the same pictures with the same
// answers; then what a new picture costs that is alike to none of very many.
// usage: comparisons [CANDIDATES...], in ascending order

#include "FindDuplicateImage/engine/Reduction.h"
#include "FindDuplicateImage/engine/SimilarityGrouper.h"
#include "bench/Bench.h"
#include "tests/FindDuplicateImage/engine/PlainFingerprint.h"

#include <QImage>

#include <cstdlib>
#include <random>
#include <utility>
#include <vector>

namespace
{

using lookalikes::Fingerprint;
using tests::PlainFingerprint;

// Soft shapes, like the light and dark of a photograph out of focus.
QImage softPicture(std::mt19937 &random)
{
    const int across = 3 + static_cast<int>(random() % 8);
    return tests::blockPicture(QSize(across, across), across, random)
        .scaled(160, 120, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

// Paper with some words on it: most positions of any two are equal.
QImage page(std::mt19937 &random)
{
    QImage image(128, 160, QImage::Format_RGB32);
    image.fill(Qt::white);
    for (int line = 0; line < 20; ++line)
        for (int x = 10; x < 118; ++x)
            for (int y = 8 * line; random() % 4 == 0 && y < 8 * line + 3; ++y)
                image.setPixel(x, y, qRgb(0, 0, 0));
    return image;
}

using Draw = QImage (*)(std::mt19937 &);

bool compareWithPlainLoop(Draw draw)
{
    std::mt19937 random(1);
    std::vector<Fingerprint> compact;
    std::vector<PlainFingerprint> plain;
    for (int i = 0; i < 1000; ++i) {
        const QImage image = draw(random);
        compact.push_back(tests::reduceImage(image)->fingerprint);
        plain.push_back(PlainFingerprint::of(image));
    }
    std::vector<double> plainTimes, compactTimes;
    int plainAlike = 0, compactAlike = 0;
    constexpr std::size_t later = 100;
    for (int round = 0; round < 5; ++round) {
        plainTimes.push_back(bench::seconds([&] {
            for (std::size_t n = 0; n < later; ++n)
                for (const PlainFingerprint &e : plain)
                    plainAlike += plain[n].alike(e) ? 1 : 0;
        }));
        compactTimes.push_back(bench::seconds([&] {
            for (std::size_t n = 0; n < later; ++n)
                for (const Fingerprint &e : compact)
                    compactAlike += areAlike(e, compact[n]) ? 1 : 0;
        }));
    }
    const double pairs = static_cast<double>(later) * static_cast<double>(plain.size());
    const double plainTime = bench::median(plainTimes), compactTime = bench::median(compactTimes);
    bench::report("plain loop, comparisons a second", pairs / plainTime);
    bench::report("fingerprints, comparisons a second", pairs / compactTime);
    bench::report("times as many (aim: 8)", plainTime / compactTime);
    return plainAlike == compactAlike;
}

// A new picture that is alike to none pays for all candidates: the time to hold against that of decoding it.
void searchMany(Draw draw, const std::vector<std::size_t> &sizes)
{
    std::mt19937 random(2);
    std::vector<Fingerprint> kinds;
    for (int i = 0; i < 4000; ++i)
        kinds.push_back(tests::reduceImage(draw(random))->fingerprint);
    constexpr std::size_t later = 50;
    lookalikes::FingerprintList list;
    for (const std::size_t size : sizes) {
        while (list.size() < size)
            list.add(kinds[list.size() % (kinds.size() - later)]);
        std::vector<double> times;
        std::size_t found = 0;
        for (std::size_t n = kinds.size() - later; n < kinds.size(); ++n)
            times.push_back(bench::seconds([&] { found += list.firstAlike(kinds[n]).has_value(); }));
        bench::report("candidates", static_cast<double>(list.size()));
        bench::report("found by chance, of 50", static_cast<double>(found));
        bench::report("comparing one new picture with all", bench::median(times) * 1000, "ms");
    }
}

} // namespace

int main(int argc, char **argv)
{
    std::vector<std::size_t> sizes; // a list grows from one to the next
    for (int i = 1; i < argc; ++i)
        sizes.push_back(std::strtoull(argv[i], nullptr, 10));
    if (sizes.empty())
        sizes = {20'000, 100'000};
    const std::pair<const char *, Draw> kinds[] = {{"pictures", softPicture}, {"pages of text", page}};
    for (const auto &[name, draw] : kinds) {
        std::printf("%s\n", name);
        if (!compareWithPlainLoop(draw)) {
            std::fprintf(stderr, "the two ways answer differently\n");
            return 1;
        }
        searchMany(draw, sizes);
    }
    return 0;
}
