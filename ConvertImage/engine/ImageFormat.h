// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <thread>
#include <vector>

// Helpers for image formats, and the parallel loop over rows.
namespace conversion
{

// More than eight bits per channel.
bool isDeep(const QImage &image);

// Whether any pixel is not opaque; scans all pixels if the format has alpha.
bool isTransparentAnywhere(const QImage &image);

// Converted to sRGB. An image without a profile is assumed to be sRGB.
QImage inSrgb(const QImage &image);

// Copies the resolution and the colour profile of `from`.
void keepFacts(const QImage &from, QImage &to);

// Calls `work(y)` for each row, on several threads if the image is large enough. `work` must not detach an
// image that others write to. An exception of any thread is thrown again on the caller's.
template <class Work>
void forEachRowInParallel(int rows, int width, const Work &work)
{
    constexpr qint64 pixelsWorthAThread = 1 << 18;
    constexpr int maxThreads = 8;
    const int cores = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    const auto worthwhile =
        static_cast<int>(std::min<qint64>(qint64(rows) * width / pixelsWorthAThread, maxThreads));
    const int threads = std::clamp(worthwhile, 1, cores);
    std::vector<std::exception_ptr> errors(static_cast<std::size_t>(threads));
    const auto part = [rows, threads, &work, &errors](int index) noexcept {
        try {
            const int end = static_cast<int>(qint64(rows) * (index + 1) / threads);
            for (int y = static_cast<int>(qint64(rows) * index / threads); y < end; ++y)
                work(y);
        } catch (...) {
            errors[static_cast<std::size_t>(index)] = std::current_exception();
        }
    };
    std::vector<std::thread> others;
    others.reserve(static_cast<std::size_t>(threads));
    int index = 1;
    try {
        for (; index < threads; ++index)
            others.emplace_back(part, index);
    } catch (const std::exception &) {
        // Fewer threads than requested: this one does the parts that are left.
    }
    part(0);
    for (; index < threads; ++index)
        part(index);
    for (std::thread &other : others)
        other.join();
    for (const std::exception_ptr &error : errors)
        if (error)
            std::rethrow_exception(error);
}

} // namespace conversion
