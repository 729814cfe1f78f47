// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/CandidateWalk.h"

#include "core/FolderWalk.h"

namespace duplicates
{

namespace
{

class CandidateVisitor final : public core::WalkVisitor
{
public:
    CandidateVisitor(const WalkRules &rules, ScanListener &listener, const CandidateHandler &handle)
        : m_rules(rules),
          m_matcher(rules.categories),
          m_listener(listener),
          m_handle(handle)
    {
    }

    const WalkOutcome &outcome() const { return m_outcome; }

    void rootCounted(int directSubfolders) override { m_listener.totalSubFolders(directSubfolders + 1); }
    void entryMet() override { m_listener.itemSeen(++m_outcome.itemsSeen); }
    bool acceptFolder(const QString &, const core::DirectoryEntry &) override { return true; }

    void enterFolder(const QString &, QStringView, int depth, FolderState state) override
    {
        if (state == FolderState::Unreadable || state == FolderState::ListedInPart)
            ++m_outcome.foldersUnread;
        if (depth == 1)
            m_listener.folderEntered();
    }

    void leaveFolder() override {}

    void file(const QString &folder, const core::DirectoryEntry &entry) override
    {
        m_listener.pathChanged(folder);
        if (m_rules.skipDotFiles && entry.name.startsWith(u'.'))
            return;
        if (m_rules.minSize > 0 && entry.size < static_cast<quint64>(m_rules.minSize))
            return;
        const int category = m_matcher.match(entry.name);
        if (category < 0)
            return;
        m_handle(category, {.name = entry.name.toString(),
                            .walkedFolder = folder,
                            .size = entry.size,
                            .lastAccessTime = entry.lastAccessTime,
                            .creationTime = entry.creationTime,
                            .lastWriteTime = entry.lastWriteTime,
                            .placeholder = core::isPlaceholder(entry.attributes)});
    }

private:
    const WalkRules &m_rules;
    const SuffixMatcher m_matcher;
    ScanListener &m_listener;
    const CandidateHandler &m_handle;
    WalkOutcome m_outcome;
};

} // namespace

WalkOutcome walkCandidates(const QString &root, const WalkRules &rules, core::DirectoryEnumerator &enumerator,
                           ScanListener &listener, const CandidateHandler &handle,
                           const core::CancelFlag &cancel)
{
    CandidateVisitor visitor(rules, listener, handle);
    core::WalkOptions options;
    options.readAheadThreads = rules.readAheadThreads;
    core::walkFolders(root, enumerator, visitor, cancel, options);
    return visitor.outcome();
}

} // namespace duplicates
