// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/engine/SimilarityGrouper.h"

#include <algorithm>

namespace lookalikes
{

void FingerprintList::add(const Fingerprint &fingerprint)
{
    const std::size_t place = m_size++ % chunkSize;
    if (place == 0)
        m_chunks.push_back(std::make_unique_for_overwrite<Chunk>());
    Chunk &chunk = *m_chunks.back();
    chunk.means[place] = fingerprint.means();
    for (std::size_t b = 0; b < Fingerprint::blockCount; ++b)
        chunk.blocks[b][place] = fingerprint.blocks()[b];
}

std::optional<std::size_t> FingerprintList::firstAlike(const Fingerprint &later) const
{
    for (std::size_t c = 0; c < m_chunks.size(); ++c) {
        const std::size_t first = c * chunkSize;
        const std::size_t count = std::min(chunkSize, m_size - first);
        if (const auto found = firstAlikeIn(*m_chunks[c], count, later))
            return first + *found;
    }
    return std::nullopt;
}

// Block by block: only candidates that may still be similar are compared in the next block.
std::optional<std::size_t> FingerprintList::firstAlikeIn(const Chunk &chunk, std::size_t count,
                                                         const Fingerprint &later)
{
    struct Survivor {
        quint16 place;
        quint16 differing;
    };
    std::array<Survivor, chunkSize> survivors;
    for (std::size_t i = 0; i < count; ++i)
        survivors[i] = {static_cast<quint16>(i), 0};
    for (std::size_t b = 0; b < Fingerprint::blockCount && count > 0; ++b) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t place = survivors[i].place;
            const int differing =
                survivors[i].differing + differingPositions(chunk.blocks[b][place], later.blocks()[b],
                                                            chunk.means[place] - later.means());
            if (differing < differingLimit)
                survivors[kept++] = {survivors[i].place, static_cast<quint16>(differing)};
        }
        count = kept;
    }
    if (count == 0)
        return std::nullopt;
    return survivors.front().place;
}

void SimilarityGrouper::add(ImageRecord image, const Fingerprint &fingerprint)
{
    const std::optional<std::size_t> alike = m_fingerprints.firstAlike(fingerprint);
    if (!alike) {
        m_fingerprints.add(fingerprint);
        image.groupId = static_cast<quint32>(m_candidates.size() + 1);
        m_candidates.push_back({std::move(image)});
        return;
    }
    Candidate &first = m_candidates[*alike];
    image.groupId = first.image.groupId;
    if (first.group == noGroup) {
        first.group = m_groups.size();
        m_groups.push_back({{first.image}});
    }
    m_groups[first.group].members.push_back(std::move(image));
}

} // namespace lookalikes
