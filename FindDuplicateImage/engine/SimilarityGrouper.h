// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/Fingerprint.h"
#include "FindDuplicateImage/engine/ImageRecord.h"

#include <cstddef>
#include <deque>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace lookalikes
{

// Fingerprints to compare with, in the order in which they came. A comparison mostly ends within a
// fingerprint's first block; those blocks lie side by side, so that a search reads memory in one direction.
class FingerprintList
{
public:
    void add(const Fingerprint &fingerprint);
    // The first that is alike.
    std::optional<std::size_t> firstAlike(const Fingerprint &later) const;
    std::size_t size() const { return m_all.size(); }

private:
    std::vector<Fingerprint::Means> m_means;
    std::vector<Fingerprint::Block> m_firstBlocks;
    std::deque<Fingerprint> m_all; // 4.8 KB each, never moved
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
