// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/RecycleBin.h"

#include <QStringList>
#include <QTemporaryDir>

#include <functional>

namespace tests
{

// Takes the recycle bin's place while it lives. The checks before a move are the real ones. What it takes
// goes into a folder of its own, so that a test sees the file gone from its place, and nothing is lost by
// mistake; it ends the test program when something outside `root`, the test's own temporary folder, is to be
// moved.
class FakeRecycleBin : public platform::RecycleBin
{
public:
    explicit FakeRecycleBin(const QString &root);
    ~FakeRecycleBin() override;

    bool tellsNoPlace = false; // moves, and does not tell where to
    bool fails = false;        // as on a drive without a recycle bin: nothing is moved

    // Called before a move, when all checks have been passed.
    std::function<void(const QString &path)> beforeMove;

    QStringList asked; // what came through the checks, in order
    QStringList taken;

protected:
    bool move(const QString &path) override;

private:
    QString m_root;
    QTemporaryDir m_bin;
};

} // namespace tests
