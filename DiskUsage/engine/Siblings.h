// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"
#include "core/DirectoryEnumerator.h"

#include <QStringList>

#include <functional>

namespace diskusage
{

// Folders beside `folder` whose path starts with its text: excluding it excludes them too. Full paths; lists
// the parent folder.
QStringList siblingsLeftOut(const QString &folder, core::DirectoryEnumerator &disk,
                            const core::CancelFlag &cancel);

using SiblingFinder = std::function<decltype(siblingsLeftOut)>;

// The siblings of all these folders without the folders themselves, each once.
QStringList siblingsOfAll(const QStringList &folders, const SiblingFinder &find,
                          core::DirectoryEnumerator &disk, const core::CancelFlag &cancel);

} // namespace diskusage
