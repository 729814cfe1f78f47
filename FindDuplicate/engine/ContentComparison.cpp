// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/ContentComparison.h"

#include "core/DirectoryEnumerator.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace duplicates
{

namespace
{

constexpr qint64 chunkSize = qint64(1) << 20;
constexpr std::size_t filesAtOnce = 16; // in addition to the reference

using Buffer = std::vector<char>;

// Fills the buffer unless the file ends first; -1 on an error.
qint64 readChunk(ContentReader::File &file, Buffer &buffer)
{
    qint64 filled = 0;
    while (filled < chunkSize) {
        const qint64 got = file.read(buffer.data() + filled, chunkSize - filled);
        if (got < 0)
            return -1;
        if (got == 0)
            break;
        filled += got;
    }
    return filled;
}

class Comparison
{
public:
    Comparison(const QStringList &paths, quint64 fileSize, ContentReader &reader,
               const ContentProgress &progress, const core::CancelFlag &cancel)
        : m_paths(paths),
          m_fileSize(fileSize),
          m_reader(reader),
          m_progress(progress),
          m_cancel(cancel),
          m_states(static_cast<std::size_t>(paths.size()), ContentState::NotCompared)
    {
    }

    std::vector<ContentState> run();

private:
    struct Opened {
        std::size_t member;
        std::unique_ptr<ContentReader::File> file;
        quint64 compared = 0;
    };

    void sortOutUnopenable();
    std::vector<std::size_t> undecided() const;
    bool compareWith(std::size_t reference);
    bool compareBatch(std::size_t reference, const std::vector<std::size_t> &members);
    std::vector<Opened> openAll(const std::vector<std::size_t> &members);
    bool compareNext(Opened &candidate, const Buffer &expected, qint64 length, Buffer &buffer);
    void decide(const Opened &opened, ContentState state);
    void advance(quint64 bytes);

    QString path(std::size_t member) const { return m_paths[static_cast<qsizetype>(member)]; }

    const QStringList &m_paths;
    const quint64 m_fileSize;
    ContentReader &m_reader;
    const ContentProgress &m_progress;
    const core::CancelFlag &m_cancel;
    std::vector<ContentState> m_states;
    quint64 m_done = 0;
    quint64 m_total = 0;
};

std::vector<ContentState> Comparison::run()
{
    sortOutUnopenable();
    for (auto left = undecided(); !left.empty() && !m_cancel.isSet(); left = undecided()) {
        const std::size_t reference = left.front();
        if (compareWith(reference)) {
            m_states[reference] = ContentState::Reference;
            break;
        }
        // Comparisons with an unreadable file do not count.
        for (ContentState &state : m_states)
            if (state == ContentState::Identical || state == ContentState::Different)
                state = ContentState::NotCompared;
        m_states[reference] = ContentState::Unreadable;
    }
    return std::move(m_states);
}

void Comparison::sortOutUnopenable()
{
    for (std::size_t i = 0; i < m_states.size() && !m_cancel.isSet(); ++i) {
        const std::optional<quint32> attributes = m_reader.attributes(path(i));
        if (!attributes)
            m_states[i] = ContentState::Unreadable;
        else if (core::isPlaceholder(*attributes))
            m_states[i] = ContentState::Placeholder;
    }
}

std::vector<std::size_t> Comparison::undecided() const
{
    std::vector<std::size_t> members;
    for (std::size_t i = 0; i < m_states.size(); ++i)
        if (m_states[i] == ContentState::NotCompared)
            members.push_back(i);
    return members;
}

// False if the reference cannot be read.
bool Comparison::compareWith(std::size_t reference)
{
    std::vector<std::size_t> members = undecided();
    members.erase(members.begin()); // the reference itself
    m_done = 0;
    m_total = m_fileSize * members.size();
    for (std::size_t first = 0; first < members.size() && !m_cancel.isSet(); first += filesAtOnce) {
        const std::size_t count = std::min(filesAtOnce, members.size() - first);
        const auto begin = members.cbegin() + static_cast<std::ptrdiff_t>(first);
        if (!compareBatch(reference, {begin, begin + static_cast<std::ptrdiff_t>(count)}))
            return false;
    }
    return true;
}

bool Comparison::compareBatch(std::size_t reference, const std::vector<std::size_t> &members)
{
    const std::unique_ptr<ContentReader::File> first = m_reader.open(path(reference));
    if (!first)
        return false;
    std::vector<Opened> opened = openAll(members);
    Buffer expected(chunkSize);
    Buffer buffer(chunkSize);
    while (!opened.empty()) {
        const qint64 length = readChunk(*first, expected);
        if (length < 0)
            return false;
        std::vector<Opened> goingOn;
        for (Opened &candidate : opened) {
            if (m_cancel.isSet())
                return true;
            if (compareNext(candidate, expected, length, buffer))
                goingOn.push_back(std::move(candidate));
        }
        opened = std::move(goingOn);
        if (length == chunkSize)
            continue;
        for (const Opened &complete : opened)
            decide(complete, ContentState::Identical);
        opened.clear();
    }
    return true;
}

std::vector<Comparison::Opened> Comparison::openAll(const std::vector<std::size_t> &members)
{
    std::vector<Opened> opened;
    for (const std::size_t member : members) {
        Opened next{member, m_reader.open(path(member))};
        if (next.file)
            opened.push_back(std::move(next));
        else
            decide(next, ContentState::Unreadable);
    }
    return opened;
}

// True if no difference was found so far and the comparison continues.
bool Comparison::compareNext(Opened &candidate, const Buffer &expected, qint64 length, Buffer &buffer)
{
    const qint64 got = readChunk(*candidate.file, buffer);
    if (got < 0) {
        decide(candidate, ContentState::Unreadable);
        return false;
    }
    if (got != length || std::memcmp(buffer.data(), expected.data(), static_cast<std::size_t>(got)) != 0) {
        decide(candidate, ContentState::Different);
        return false;
    }
    const quint64 counted = std::min(static_cast<quint64>(got), m_fileSize - candidate.compared);
    candidate.compared += counted;
    advance(counted);
    return true;
}

// For progress, a member whose state is decided counts as completely compared.
void Comparison::decide(const Opened &opened, ContentState state)
{
    m_states[opened.member] = state;
    advance(m_fileSize - opened.compared);
}

void Comparison::advance(quint64 bytes)
{
    m_done += bytes;
    if (m_progress)
        m_progress(m_done, m_total);
}

} // namespace

std::vector<ContentState> compareContents(const QStringList &paths, quint64 fileSize, ContentReader &reader,
                                          const ContentProgress &progress, const core::CancelFlag &cancel)
{
    return Comparison(paths, fileSize, reader, progress, cancel).run();
}

} // namespace duplicates
