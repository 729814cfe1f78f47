// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace diskusage
{

// Folders beside `folder` whose path begins with its text: excluding it leaves them out as well. Full paths;
// reads the folder above.
QStringList siblingsLeftOut(const QString &folder, const core::CancelFlag &cancel);

} // namespace diskusage

// Looks for such siblings of several folders on a thread of its own and tells the thread it lives in. It can
// be destroyed at any moment and waits for nothing: a folder on a server that is not there does not answer
// for a minute; the thread is left behind and its late answer dropped.
class SiblingCheck : public QObject
{
    Q_OBJECT

public:
    using Finder = std::function<QStringList(const QString &folder, const core::CancelFlag &cancel)>;

    explicit SiblingCheck(Finder finder, QObject *parent = nullptr);
    ~SiblingCheck() override;

    // Stops a check that runs. The new one begins when that has ended, so that a server that does not answer
    // is not asked by one thread more for every edit.
    void check(const QStringList &folders);

signals:
    // The siblings that are not among the folders themselves; of the newest check. None when memory or a
    // thread to look for them could not be had.
    void found(const QStringList &siblings);

private:
    struct Run;

    void start(const QStringList &folders);
    void take(const QStringList &siblings);

    Finder m_finder;
    std::shared_ptr<Run> m_run; // null when none runs
    std::optional<QStringList> m_next;
};
