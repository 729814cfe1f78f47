// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/FindDuplicateImageResultForm.h"
#include "FindDuplicateImage/ImageMemberModel.h"
#include "tests/FindDuplicateImage/Scene.h"
#include "widgets/NoticeBar.h"

#include <QFile>
#include <QToolButton>

#include <optional>

namespace tests
{

// Three pictures that are alike; the second one is the largest.
struct Trio : Scene {
    Trio()
    {
        const QImage picture = blocks(1, {600, 400});
        first = save(QStringLiteral("a\\first.png"), picture);
        second = save(QStringLiteral("b\\second.png"), picture.scaled(1200, 800));
        third = save(QStringLiteral("c\\third.jpg"), picture);
        save(QStringLiteral("d\\lonely.png"), blocks(2));
        if (!scan() || !QTest::qWaitFor([this] { return inspected(); }))
            qFatal("no results");
    }
    bool inspected() const { return facts(0).has_value(); }
    std::optional<duplicates::MemberFacts> facts(int row) const
    {
        return qobject_cast<const ImageMemberModel *>(main()->model())->facts(row);
    }
    QString note(int row) const
    {
        return main()->model()->index(row, 0).data(ImageMemberModel::NoteRole).toString();
    }
    QToolButton *recycle() const { return find<QToolButton>("RecycleBinButton"); }
    QString notice() const
    {
        return form->findChild<FindDuplicateImageResultForm *>()->findChild<NoticeBar *>()->text();
    }
    bool exist(bool one, bool two, bool three) const
    {
        return QFile::exists(first) == one && QFile::exists(second) == two && QFile::exists(third) == three;
    }
    // Clicks and waits for the end; with the answer to the question, if there is to be one.
    void clickRecycle(int row, std::optional<int> answer = {})
    {
        if (answer)
            dialogs.nextMessageBox.enqueue(*answer);
        select(row);
        QTest::mouseClick(recycle(), Qt::LeftButton);
        QTRY_VERIFY(!form->isBusy());
    }

    QString first;
    QString second;
    QString third;
};

} // namespace tests
