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

// Fingerprints to compare with, in the order in which they came: 4.8 KB each, never moved. A comparison
// mostly ends within the first blocks, so that the same block of many fingerprints lies together: a search
// reads memory in one direction.
class FingerprintList
{
public:
    void add(const Fingerprint &fingerprint);
    // The first that is alike.
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

// Groups pictures as they come. A picture is compared with the earlier ones that were alike to nothing before
// them, and joins the first that it is alike to; with the other members it is never compared.
class SimilarityGrouper
{
public:
    void add(ImageRecord image, const Fingerprint &fingerprint);

    // In the order in which their second members came.
    const std::vector<ImageGroup> &groups() const { return m_groups; }
    std::vector<ImageGroup> takeGroups() { return std::move(m_groups); }

private:
    static constexpr std::size_t noGroup = std::numeric_limits<std::size_t>::max();
    struct Candidate {
        ImageRecord image;
        std::size_t group = noGroup;
    };

    FingerprintList m_fingerprints;
    std::vector<Candidate> m_candidates; // one for each fingerprint; the group id is the index plus one
    std::vector<ImageGroup> m_groups;
};

} // namespace lookalikes
