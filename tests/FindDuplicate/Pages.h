// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/FindDuplicateForm.h"
#include "FindDuplicate/FindDuplicateResultForm.h"
#include "FindDuplicate/MemberModel.h"
#include "core/WorkerThread.h"
#include "platform/Win32Enumerator.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"
#include "widgets/FileRowDelegate.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>

#include <algorithm>

namespace tests
{

constexpr quint64 someTime = 133'000'000'000'000'000; // a FILETIME of 2022
constexpr quint64 otherTime = someTime + 1;           // 100 ns later

// Files of one content that the finder takes for duplicates.
inline void makeDuplicates(const TestFolder &folder, const QStringList &names, const QByteArray &content,
                           quint64 time = someTime)
{
    for (const QString &name : names) {
        folder.makeFile(name, content);
        folder.setTimes(name, time, someTime);
    }
}

// Groups that exist nowhere on a disk, the largest first.
inline std::shared_ptr<FindDuplicateResultForm::Groups> inventedGroups(int count)
{
    auto groups = std::make_shared<FindDuplicateResultForm::Groups>();
    for (int i = 0; i < count; ++i) {
        const quint64 size = 1000 + static_cast<quint64>(count - i);
        const QString folder = QStringLiteral("C:\\nowhere\\%1").arg(i % 100);
        duplicates::FileRecord first{
            QStringLiteral("file %1.jpg").arg(i), folder, size, someTime, someTime, someTime};
        duplicates::FileRecord second = first;
        second.name = QStringLiteral("copy %1.jpg").arg(i);
        groups->push_back({{first, second}, size});
    }
    return groups;
}

// Lists every folder by name, so that a test knows the order of a group's members.
class SortedEnumerator : public platform::Win32Enumerator
{
public:
    void list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &cancel) override
    {
        core::DirectoryListing unsorted;
        Win32Enumerator::list(folder, unsorted, cancel);
        std::vector<core::DirectoryEntry> entries;
        for (std::size_t i = 0; i < unsorted.size(); ++i)
            entries.push_back(unsorted.at(i));
        std::sort(entries.begin(), entries.end(),
                  [](const auto &a, const auto &b) { return a.name.compare(b.name) < 0; });
        out.clear();
        for (const core::DirectoryEntry &entry : entries)
            out.add(entry);
        out.readable = unsorted.readable;
    }
};

// The finder in a window and with settings of its own, driven as a person does. The members of a group are in
// the order of their names.
class FinderScene
{
public:
    FinderScene() : FinderScene([] { return std::make_unique<SortedEnumerator>(); }) {}
    explicit FinderScene(FindDuplicateForm::EnumeratorFactory enumerators)
        : form(std::make_unique<FindDuplicateForm>(std::move(enumerators)))
    {
        open();
    }
    ~FinderScene() { end(); }

    // Until the results are on show and the first group has been read.
    bool scan(const QString &folder)
    {
        QSignalSpy shown(form.get(), &FindDuplicateForm::resultsShown);
        form->scan(folder);
        return (shown.count() > 0 || shown.wait(20'000)) && waitForMembers(0);
    }
    bool selectGroup(int row)
    {
        side()->setCurrentIndex(side()->model()->index(row, 0));
        return waitForMembers(side()->model()->index(row, 1).data().toInt());
    }
    void selectMember(int row) const
    {
        members()->selectionModel()->setCurrentIndex(members()->model()->index(row, 0),
                                                     QItemSelectionModel::ClearAndSelect |
                                                         QItemSelectionModel::Rows);
    }

    QTreeView *side() const { return find<QTreeView>("sideTreeView"); }
    QTreeView *members() const { return find<QTreeView>("mainTreeView"); }
    QString memberText(int row) const { return members()->model()->index(row, 0).data().toString(); }
    QString memberState(int row) const
    {
        return members()->model()->index(row, duplicates::MemberModel::State).data().toString();
    }
    QString memberPath(int row) const
    {
        return members()->model()->index(row, duplicates::MemberModel::Path).data().toString();
    }
    QStringList badges(int row) const
    {
        QStringList texts;
        const QVariant stored = members()->model()->index(row, 0).data(FileRowDelegate::BadgesRole);
        for (const RowBadge &badge : stored.value<QList<RowBadge>>())
            texts.append(badge.text);
        return texts;
    }
    // As a screen reader says it, with its remarks.
    QString groupText(int row) const
    {
        return side()->model()->index(row, 0).data(Qt::AccessibleTextRole).toString();
    }
    bool isEnabled(const char *button) const { return find<QAbstractButton>(button)->isEnabled(); }
    void click(const char *button) const { find<QAbstractButton>(button)->click(); }

    template <class Widget>
    Widget *find(const char *name) const
    {
        return form->findChild<Widget *>(QLatin1String(name));
    }

    RegistryGuard registry;
    std::unique_ptr<FindDuplicateForm> form;
    QList<bool> toolbar; // what the form told the main window

protected:
    // Afterwards nobody has a file of the test's folder open: the page leaves its readers behind.
    void end()
    {
        form.reset();
        core::waitForRetiredWorkers();
    }

private:
    void open()
    {
        QObject::connect(form.get(), &FLWidget::showToolbarSignal, form.get(),
                         [this](bool show) { toolbar.append(show); });
        form->resize(986, 513);
        form->show();
        form->activateWindow();
        if (!QTest::qWaitForWindowActive(form.get()))
            qFatal("the window does not become active");
    }
    bool waitForMembers(int group) const
    {
        return QTest::qWaitFor([&] {
            const auto *model = qobject_cast<duplicates::MemberModel *>(members()->model());
            return model->groupIndex() == group && model->facts(0);
        });
    }
};

} // namespace tests
