// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/ListedGroups.h"

#include <memory>
#include <utility>
#include <vector>

namespace duplicates
{

// Parameters of a list of groups.
struct ListWish {
    QString root; // the scanned folder
    QString search;
    GroupOrder order = GroupOrder::Report;
    std::vector<quint64> freeable = {}; // bytes per group; only for GroupOrder::Freeable
};

// The groups of a scan result as needed by the results page, whatever their record type adds to FileRecord.
// Groups and members keep their number and order. Only the page changes the `checked` and `moved` flags of
// the records, on the interface thread; everything else may be read on any thread.
class FileGroups
{
public:
    virtual ~FileGroups() = default;

    virtual int count() const = 0;
    virtual const FileRecord &file(int group, int member) const = 0;
    virtual FileRecord &file(int group, int member) = 0;
    // Copies of all records of the group.
    virtual std::vector<FileRecord> files(int group) const = 0;
    // The indexes of the requested groups, in the requested order.
    virtual std::vector<int> listed(const ListWish &wish) const = 0;
    // See duplicates::firstPaths().
    virtual QStringList firstPaths(const std::vector<int> &groups) const = 0;
};

// For any group type with `members` that are FileRecords.
template <class Group>
class GroupsOf final : public FileGroups
{
public:
    explicit GroupsOf(std::shared_ptr<std::vector<Group>> groups) : m_groups(std::move(groups)) {}

    int count() const override { return static_cast<int>(m_groups->size()); }
    const FileRecord &file(int group, int member) const override
    {
        return at(group).members[static_cast<std::size_t>(member)];
    }
    FileRecord &file(int group, int member) override
    {
        return at(group).members[static_cast<std::size_t>(member)];
    }
    std::vector<FileRecord> files(int group) const override
    {
        return {at(group).members.cbegin(), at(group).members.cend()};
    }
    std::vector<int> listed(const ListWish &wish) const override
    {
        return listedGroups(*m_groups, wish.root, wish.search, wish.order, wish.freeable);
    }
    QStringList firstPaths(const std::vector<int> &groups) const override
    {
        return duplicates::firstPaths(*m_groups, groups);
    }

private:
    Group &at(int group) const { return (*m_groups)[static_cast<std::size_t>(group)]; }

    std::shared_ptr<std::vector<Group>> m_groups;
};

} // namespace duplicates
