// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Paths.h"
#include "tests/FindDuplicate/Pages.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeRecycleBin.h"
#include "widgets/NoticeBar.h"

#include <optional>

namespace tests
{

inline constexpr char content[] = "the content of the duplicates, more than twenty bytes";

// Duplicates in a folder of the test's own, scanned and on show. The recycle bin is a fake that ends the
// program when anything outside that folder is to be moved.
struct RemovalScene : FinderScene {
    explicit RemovalScene(const QStringList &names) : bin(folder.path())
    {
        makeDuplicates(folder, names, content);
        makeDuplicates(folder, {QStringLiteral("z\\other.mp3"), QStringLiteral("z\\other2.mp3")},
                       QByteArray(30, 'o'));
    }

    ~RemovalScene() { end(); }

    bool scan() { return FinderScene::scan(folder.path()); }
    // Asks for the removal of the member and lets it come to its end; with the answer to the question, if
    // there is to be one.
    bool remove(int row, std::optional<int> answer = {})
    {
        if (answer)
            dialogs.nextMessageBox.enqueue(*answer);
        selectMember(row);
        click("RecycleBinButton");
        return waitForEnd();
    }
    bool waitForEnd() const
    {
        return QTest::qWaitFor([&] { return !form->isBusy(); });
    }
    bool toolsAre(bool enabled) const
    {
        return isEnabled("openButton") == enabled && isEnabled("explorerButton") == enabled &&
               isEnabled("RecycleBinButton") == enabled;
    }
    bool isMarked(int row) const { return memberState(row) == u'1'; }
    bool isThere(int row) const { return platform::fileExists(memberPath(row)); }
    QString notice() const { return find<NoticeBar>("noticeBar")->text(); }

    TestFolder folder;
    FakeDialogs dialogs;
    FakeRecycleBin bin;
};

inline const QStringList three{QStringLiteral("a.txt"), QStringLiteral("b.txt"),
                               QStringLiteral("sub\\c.txt")};

// With the results on show.
struct ThreeCopies : RemovalScene {
    ThreeCopies() : RemovalScene(three)
    {
        if (!scan())
            qFatal("no results");
    }
};

} // namespace tests
