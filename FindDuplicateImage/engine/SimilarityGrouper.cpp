// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/engine/SimilarityGrouper.h"

namespace lookalikes
{

void FingerprintList::add(const Fingerprint &fingerprint)
{
    m_means.push_back(fingerprint.means());
    m_firstBlocks.push_back(fingerprint.blocks().front());
    m_all.push_back(fingerprint);
}

std::optional<std::size_t> FingerprintList::firstAlike(const Fingerprint &later) const
{
    const Fingerprint::Block &laterBlock = later.blocks().front();
    for (std::size_t i = 0; i < m_all.size(); ++i) {
        const MeanDifference difference = m_means[i] - later.means();
        if (differingPositions(m_firstBlocks[i], laterBlock, difference) < differingLimit &&
            areAlike(m_all[i], later))
            return i;
    }
    return std::nullopt;
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
