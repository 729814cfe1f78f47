// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/FakeRecycleBin.h"

#include "tests/support/TestPrefix.h"

#include <QDir>

namespace tests
{

FakeRecycleBin::FakeRecycleBin(const QString &root) : m_root(root)
{
    platform::setRecycleBin(this);
}

FakeRecycleBin::~FakeRecycleBin()
{
    platform::setRecycleBin(nullptr);
}

bool FakeRecycleBin::move(const QString &path)
{
    requireBelow(m_root, path);
    asked.append(path);
    if (beforeMove)
        beforeMove(path);
    if (fails || !QDir().rename(path, m_bin.filePath(QString::number(taken.size()))))
        return false;
    taken.append(path);
    return !tellsNoPlace;
}

} // namespace tests
