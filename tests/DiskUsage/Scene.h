// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/DiskUsageForm.h"
#include "tests/DiskUsage/Find.h"
#include "tests/DiskUsage/Scans.h"
#include "widgets/NoticeBar.h"

#include <QSignalSpy>
#include <QTest>
#include <QTreeView>

#include <memory>

namespace tests
{

inline constexpr quint64 megabyte = 1 << 20;

// Some folders and files in C:\r, one that cannot be read, and a link to the root.
inline void fill(MemoryEnumerator &disk)
{
    disk.addFile(QStringLiteral("C:\\r\\a\\one.txt"), 4 * megabyte);
    disk.addFile(QStringLiteral("C:\\r\\a\\b\\two.mp4"), 15 * megabyte);
    disk.addFile(QStringLiteral("C:\\r\\c\\three.zip"), 10 * megabyte);
    disk.addFile(QStringLiteral("C:\\r\\four.bin"), megabyte);
    disk.addFolder(QStringLiteral("C:\\r\\locked"));
    disk.setUnreadable(QStringLiteral("C:\\r\\locked"));
    disk.addLink(QStringLiteral("C:\\r\\loop"), QStringLiteral("C:\\r"));
}

// The form in a window of its own, over fill()'s file system unless it is given another.
struct Scene {
    explicit Scene(DiskUsageForm *made) : form(made) { open(); }
    Scene() : form(new DiskUsageForm(lending(disk), noDrive))
    {
        fill(disk);
        open();
    }

    bool scan(const QString &folder)
    {
        QSignalSpy results(form.get(), &DiskUsageForm::resultsShown);
        form->scan(folder);
        return results.count() > 0 || results.wait(20'000);
    }
    bool goBack()
    {
        QSignalSpy start(form.get(), &DiskUsageForm::startPageShown);
        tree()->setFocus();
        QTest::keyClick(tree(), Qt::Key_Left, Qt::AltModifier);
        return start.count() > 0 || start.wait();
    }
    template <class Widget>
    Widget *find(const char *name) const
    {
        return tests::find<Widget>(*form, name);
    }
    QTreeView *tree() const { return find<QTreeView>("folderTreeView"); }
    // A row of the tree as it is shown.
    QModelIndex row(const QStringList &names) const
    {
        QModelIndex index = tree()->model()->index(0, 0);
        for (const QString &name : names) {
            const qsizetype position = column(*tree()->model(), 0, index).indexOf(name);
            index = position < 0 ? QModelIndex() : tree()->model()->index(int(position), 0, index);
        }
        return index;
    }
    void select(const QStringList &names) const
    {
        tree()->setFocus();
        tree()->setCurrentIndex(row(names));
    }
    QString notice() const { return find<NoticeBar>("noticeBar")->text(); }

    MemoryEnumerator disk;
    std::unique_ptr<DiskUsageForm> form;

private:
    // Keys reach an active window only.
    void open() const
    {
        form->resize(1000, 600);
        form->show();
        form->activateWindow();
        if (!QTest::qWaitForWindowActive(form.get()))
            qFatal("the window does not become active");
    }
};

} // namespace tests
