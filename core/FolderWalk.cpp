// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FolderWalk.h"

#include "core/ReadAhead.h"

#include <optional>
#include <vector>

namespace core
{

namespace
{

class Walk
{
public:
    Walk(DirectoryEnumerator &enumerator, WalkVisitor &visitor, const CancelFlag &cancel,
         const WalkOptions &options)
        : m_enumerator(enumerator),
          m_visitor(visitor),
          m_cancel(cancel),
          m_source(enumerator, cancel, options)
    {
        for (const QString &path : options.ancestors)
            m_above.push_back({walkRoot(path), {}});
    }

    void run(const QString &root);

private:
    // Queried once, and only when a link is met.
    struct LazyIdentity {
        bool known = false;
        std::optional<FileIdentity> identity;
    };

    // A folder on the walk's path. Explicit frames replace recursion, since thousands of levels are legal.
    struct Frame {
        ReadAhead::Folder *folder = nullptr;
        std::size_t next = 0;
        qsizetype pathLength = 0; // m_path up to this folder
        LazyIdentity identity;
        bool belowUnknown = false; // it is, or is reached through, a link of unknown target
    };

    // A folder above the root, as given by the options.
    struct Above {
        QString path;
        LazyIdentity identity;
    };

    enum class Target { Ancestor, Elsewhere, Unknown };

    void enter(ReadAhead::Folder *folder, QStringView name, bool belowUnknown = false);
    void leave();
    void meet(const DirectoryEntry &entry);
    void meetFolder(const DirectoryEntry &entry);
    Target linkTarget();
    bool isCycle(Target target) const;
    bool isAt(const FileIdentity &target, LazyIdentity &folder, const QString &path);
    int depth() const { return static_cast<int>(m_frames.size()); }

    DirectoryEnumerator &m_enumerator;
    WalkVisitor &m_visitor;
    const CancelFlag &m_cancel;
    ReadAhead m_source;
    std::vector<Frame> m_frames;
    std::vector<Above> m_above; // innermost first
    // One buffer for all levels: the innermost folder, or the current entry.
    QString m_path;
};

void Walk::run(const QString &root)
{
    m_path = root;
    ReadAhead::Folder *folder = m_source.openRoot(root);
    int subfolders = 0;
    for (std::size_t i = 0; i < folder->listing().size(); ++i)
        subfolders += folder->listing().at(i).isDirectory() ? 1 : 0;
    m_visitor.rootCounted(subfolders);

    enter(folder, root);
    while (!m_frames.empty()) {
        Frame &frame = m_frames.back();
        const DirectoryListing &listing = frame.folder->listing();
        if (frame.next == listing.size() || m_cancel.isSet())
            leave();
        else
            meet(listing.at(frame.next++));
    }
}

void Walk::enter(ReadAhead::Folder *folder, QStringView name, bool belowUnknown)
{
    const DirectoryListing &listing = folder->listing();
    WalkVisitor::FolderState state = WalkVisitor::FolderState::Listed;
    if (listing.brokenOff)
        state = WalkVisitor::FolderState::ListedInPart;
    else if (!listing.readable &&
             !m_cancel.isSet()) // a listing that was cut short by the flag says nothing about the folder
        state = WalkVisitor::FolderState::Unreadable;
    m_visitor.enterFolder(m_path, name, depth(), state);
    Frame frame;
    frame.folder = folder;
    frame.pathLength = m_path.size();
    frame.belowUnknown = belowUnknown;
    m_frames.push_back(frame);
}

void Walk::leave()
{
    m_visitor.leaveFolder();
    m_source.release(m_frames.back().folder);
    m_frames.pop_back();
    if (!m_frames.empty())
        m_path.truncate(m_frames.back().pathLength);
}

void Walk::meet(const DirectoryEntry &entry)
{
    m_visitor.entryMet();
    if (entry.isDirectory())
        meetFolder(entry);
    else
        m_visitor.file(m_path, entry);
}

void Walk::meetFolder(const DirectoryEntry &entry)
{
    Frame &parent = m_frames.back();
    const std::size_t index = parent.next - 1;
    m_path += QLatin1Char('\\');
    m_path += entry.name;

    if (!m_visitor.acceptFolder(m_path, entry)) {
        m_source.skip(parent.folder, index);
        m_path.truncate(parent.pathLength);
        return;
    }
    const Target target = entry.mayBeLink() ? linkTarget() : Target::Elsewhere;
    if (isCycle(target)) {
        m_visitor.enterFolder(m_path, entry.name, depth(), WalkVisitor::FolderState::Cycle);
        m_visitor.leaveFolder();
        m_source.skip(parent.folder, index);
        m_path.truncate(parent.pathLength);
    } else {
        enter(m_source.open(parent.folder, index, m_path), entry.name,
              parent.belowUnknown || target == Target::Unknown);
    }
}

// On a volume without identities a cycle cannot be recognised. Links of unknown target are therefore followed
// one level only: a folder with several links to itself would take exponential time otherwise.
bool Walk::isCycle(Target target) const
{
    return target == Target::Ancestor || (target == Target::Unknown && m_frames.back().belowUnknown);
}

// Whether the link at m_path leads to a folder that the walk is in, or to one of the options' ancestors.
Walk::Target Walk::linkTarget()
{
    const std::optional<FileIdentity> target = m_enumerator.identity(m_path);
    if (!target)
        return Target::Unknown;
    for (auto frame = m_frames.rbegin(); frame != m_frames.rend(); ++frame) {
        if (isAt(*target, frame->identity, m_path.first(frame->pathLength)))
            return Target::Ancestor;
    }
    for (Above &above : m_above) {
        if (isAt(*target, above.identity, above.path))
            return Target::Ancestor;
    }
    return Target::Elsewhere;
}

bool Walk::isAt(const FileIdentity &target, LazyIdentity &folder, const QString &path)
{
    if (!folder.known) {
        folder.identity = m_enumerator.identity(path);
        folder.known = true;
    }
    return folder.identity == target;
}

} // namespace

QString walkRoot(const QString &chosen)
{
    QString root = chosen;
    root.replace(QLatin1Char('/'), QLatin1Char('\\'));
    if (root.endsWith(QLatin1Char('\\')))
        root.chop(1);
    return root;
}

void walkFolders(const QString &root, DirectoryEnumerator &enumerator, WalkVisitor &visitor,
                 const CancelFlag &cancel, const WalkOptions &options)
{
    if (cancel.isSet()) {
        visitor.rootCounted(0);
        return;
    }
    Walk(enumerator, visitor, cancel, options).run(walkRoot(root));
}

} // namespace core
