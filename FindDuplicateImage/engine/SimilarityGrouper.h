// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/Fingerprint.h"
#include "FindDuplicateImage/engine/ImageRecord.h"

#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace lookalikes
{

// Fingerprints to compare with, in order of arrival: 4.8 KB each, never moved. Most comparisons end within
// the first blocks, so the same block of many fingerprints is stored together: a search then reads memory
// sequentially.
class FingerprintList
{
public:
    void add(const Fingerprint &fingerprint);
    // The first similar one.
    std::optional<std::size_t> firstAlike(const Fingerprint &later) const;
    std::size_t size() const { return m_size; }

private:
    static constexpr std::size_t chunkSize = 256;
    struct Chunk {
        std::array<Fingerprint::Means, chunkSize> means;
        std::array<std::array<Fingerprint::Block, chunkSize>, Fingerprint::blockCount> blocks;
    };

    static std::optional<std::size_t> firstAlikeIn(const Chunk &chunk, std::size_t count,
                                                   const Fingerprint &later);

    std::vector<std::unique_ptr<Chunk>> m_chunks;
    std::size_t m_size = 0;
};

// Groups images as they arrive. An image is compared with the earlier ones that were similar to nothing
// before them, and joins the first that it is similar to; it is never compared with the other members.
class SimilarityGrouper
{
public:
    void add(ImageRecord image, const Fingerprint &fingerprint);

    // In the order in which their second members arrived.
    const std::vector<ImageGroup> &groups() const { return m_groups; }
    std::vector<ImageGroup> takeGroups() { return std::move(m_groups); }

private:
    static constexpr std::size_t noGroup = std::numeric_limits<std::size_t>::max();
    struct Candidate {
        ImageRecord image;
        std::size_t group = noGroup;
    };

    FingerprintList m_fingerprints;
    std::vector<Candidate> m_candidates; // one per fingerprint; the group id is the index plus one
    std::vector<ImageGroup> m_groups;
};

} // namespace lookalikes
