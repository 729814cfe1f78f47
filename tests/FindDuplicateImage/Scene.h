// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/FindDuplicateImageForm.h"
#include "FindDuplicateImage/FindDuplicateImageResultForm.h"
#include "FindDuplicateImage/ImageMemberModel.h"
#include "platform/Win32Enumerator.h"
#include "tests/imaging/Pictures.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeRecycleBin.h"
#include "tests/support/FakeShell.h"
#include "tests/support/TestPrefix.h"
#include "widgets/NoticeBar.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QSignalSpy>
#include <QTest>

namespace tests
{

// The finder over a folder of real pictures, with everything that could reach beyond it replaced.
struct Scene {
    explicit Scene(const QString &decoder = realDecoder())
    {
        form = std::make_unique<FindDuplicateImageForm>(FindDuplicateImageForm::Tools{
            [] { return std::make_unique<platform::Win32Enumerator>(); },
            [decoder] {
                return std::make_shared<imaging::DecoderPool>(imaging::DecoderPool::Options{decoder});
            },
            temporary.path()});
        form->resize(986, 560);
        form->show();
        form->activateWindow(); // keys reach an active window only
        if (!QTest::qWaitForWindowActive(form.get()))
            qFatal("the window does not become active");
    }

    QString save(const QString &name, const QImage &image) const { return savePicture(folder, name, image); }
    void saveTwins() const
    {
        save(QStringLiteral("one.png"), blocks(1));
        save(QStringLiteral("two.png"), blocks(1));
    }

    // False when the scan ends on another page.
    bool scan() const
    {
        QSignalSpy shown(form.get(), &FindDuplicateImageForm::resultsShown);
        form->scan(folder.path());
        return shown.wait(30'000);
    }

    template <class Widget>
    Widget *find(const char *name) const
    {
        return form->findChild<Widget *>(QLatin1String(name));
    }
    void click(const char *button) const { find<QAbstractButton>(button)->click(); }
    bool isEnabled(const char *button) const { return find<QAbstractButton>(button)->isEnabled(); }
    FindDuplicateImageResultForm *results() const
    {
        return form->findChild<FindDuplicateImageResultForm *>();
    }
    QString notice() const { return results()->findChild<NoticeBar *>()->text(); }
    QAbstractItemView *side() const { return find<QAbstractItemView>("sideTreeView"); }
    QAbstractItemView *main() const { return find<QAbstractItemView>("mainTreeView"); }
    static QStringList rows(const QAbstractItemView *view, int role = Qt::DisplayRole)
    {
        QStringList texts;
        for (int row = 0; row < view->model()->rowCount(); ++row)
            texts.append(view->model()->index(row, 0).data(role).toString());
        return texts;
    }
    QString note(int row) const
    {
        return main()->model()->index(row, 0).data(ImageMemberModel::NoteRole).toString();
    }
    // By default that one alone: the view itself would mind the modifiers of the last key that a test has
    // pressed.
    void select(int row, QItemSelectionModel::SelectionFlags how = QItemSelectionModel::ClearAndSelect) const
    {
        main()->selectionModel()->setCurrentIndex(main()->model()->index(row, 0), how);
    }

    TestFolder folder;
    TestFolder temporary;
    FakeRecycleBin bin{folder.path()};
    FakeDialogs dialogs;
    FakeShell shell;
    std::unique_ptr<FindDuplicateImageForm> form;
};

// Three pictures that are alike, on show; the second one is the largest.
struct Trio : Scene {
    Trio()
    {
        const QImage picture = blocks(1, {600, 400});
        first = save(QStringLiteral("a\\first.png"), picture);
        second = save(QStringLiteral("b\\second.png"), picture.scaled(1200, 800));
        third = save(QStringLiteral("c\\third.jpg"), picture);
        save(QStringLiteral("d\\lonely.png"), blocks(2));
        const auto isRead = [this] {
            return qobject_cast<const ImageMemberModel *>(main()->model())->facts(0).has_value();
        };
        if (!scan() || !QTest::qWaitFor(isRead))
            qFatal("no results");
    }

    QString first;
    QString second;
    QString third;
};

} // namespace tests
