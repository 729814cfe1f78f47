// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/FindDuplicateImageForm.h"
#include "platform/Win32Enumerator.h"
#include "tests/imaging/Pictures.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeRecycleBin.h"
#include "tests/support/FakeShell.h"
#include "tests/support/TestPrefix.h"

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
        QObject::connect(form.get(), &FLWidget::showToolbarSignal, form.get(),
                         [this](bool show) { toolbar.append(show); });
        form->resize(986, 560);
        form->show();
        form->activateWindow(); // keys reach an active window only
        if (!QTest::qWaitForWindowActive(form.get()))
            qFatal("the window does not become active");
    }

    QString save(const QString &name, const QImage &image) const { return savePicture(folder, name, image); }

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
    QAbstractItemView *side() const { return find<QAbstractItemView>("sideTreeView"); }
    QAbstractItemView *main() const { return find<QAbstractItemView>("mainTreeView"); }
    static QStringList rows(const QAbstractItemView *view, int role = Qt::DisplayRole)
    {
        QStringList texts;
        for (int row = 0; row < view->model()->rowCount(); ++row)
            texts.append(view->model()->index(row, 0).data(role).toString());
        return texts;
    }
    // That one alone: the view itself would mind the modifiers of the last key that a test has pressed.
    void select(int row) const
    {
        main()->selectionModel()->setCurrentIndex(main()->model()->index(row, 0),
                                                  QItemSelectionModel::ClearAndSelect);
    }

    // Taken away as often as given back, and given back last.
    bool toolbarIsBack() const
    {
        return !toolbar.isEmpty() && toolbar.last() && toolbar.count(true) == toolbar.count(false);
    }

    TestFolder folder;
    TestFolder temporary;
    FakeRecycleBin bin{folder.path()};
    FakeDialogs dialogs;
    FakeShell shell;
    QList<bool> toolbar;
    std::unique_ptr<FindDuplicateImageForm> form;
};

} // namespace tests
