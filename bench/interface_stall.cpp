// SPDX-License-Identifier: GPL-3.0-or-later

// The stall of the interface while the analyzer scans 1,000,000 files in 100,000 folders (listed from memory,
// so that the file system does not slow the scan down), shows the result, is used, and frees it. Two trees:
// one with ten subfolders a folder, and the worst case for every list, all folders in one.

#include "DiskUsage/DiskUsageForm.h"
#include "DiskUsage/FolderModel.h"
#include "bench/Heartbeat.h"
#include "tests/support/MemoryEnumerator.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <QTreeView>

#include <windows.h>

#include <psapi.h>

using bench::Heartbeat, bench::measured, bench::reportStall, bench::settle, bench::spin, bench::Stall;

namespace
{

constexpr int folderCount = 100'000;
constexpr int filesPerFolder = 10;
const QString root = QStringLiteral("C:\\bench");

void buildTree(tests::MemoryEnumerator &disk, int subfoldersPerFolder)
{
    const QStringList extensions{QStringLiteral(".jpg"), QStringLiteral(".dll"), QStringLiteral(".txt"),
                                 QStringLiteral(".h"),   QStringLiteral(".PDF"), QStringLiteral("")};
    QRandomGenerator random(1);
    QStringList folders{root};
    for (int i = 0; i < folderCount; ++i) {
        if (i > 0)
            folders.append(folders[(i - 1) / subfoldersPerFolder] +
                           QStringLiteral("\\Folder %1").arg(random.generate()));
        disk.addFolder(folders[i]);
        for (int k = 0; k < filesPerFolder; ++k)
            disk.addFile(folders[i] + QStringLiteral("\\document %1").arg(random.bounded(1'000'000)) +
                             extensions[random.bounded(int(extensions.size()))],
                         random.bounded(50'000'000U));
    }
}

void spinWhileBusy(const DiskUsageForm &form)
{
    while (form.isBusy())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    spin(settle);
}

// What a person does with a result; returns the longest stall.
Stall use(DiskUsageForm &form, Heartbeat &heart, const std::string &tree)
{
    auto *folders = form.findChild<QTreeView *>(QStringLiteral("folderTreeView"));
    auto *types = form.findChild<QTreeView *>(QStringLiteral("fileTypesTreeView"));
    auto *files = form.findChild<QTableView *>(QStringLiteral("dataFilesTableView"));
    auto *tabs = form.findChild<QTabWidget *>(QStringLiteral("resultTabWidget"));
    Stall longest;
    const auto step = [&](const std::string &what, const auto &action) {
        heart.take();
        action();
        spin(settle);
        longest = std::max(longest, measured(tree + ", " + what, heart));
    };
    step("sort folders by name", [=] { folders->sortByColumn(FolderModel::Name, Qt::AscendingOrder); });
    step("sort folders by size", [=] { folders->sortByColumn(FolderModel::SizeText, Qt::DescendingOrder); });
    step("select a folder",
         [=] { folders->setCurrentIndex(folders->model()->index(0, 0, folders->model()->index(0, 0))); });
    step("show the file types", [=] { tabs->setCurrentIndex(2); });
    step("show the largest type", [=] { types->setCurrentIndex(types->model()->index(0, 0)); });
    step("sort its files by name", [=] { files->sortByColumn(0, Qt::AscendingOrder); });
    step("sort its files by path", [=] { files->sortByColumn(3, Qt::AscendingOrder); });
    return longest;
}

Stall run(const std::string &tree, int subfoldersPerFolder)
{
    tests::MemoryEnumerator disk;
    disk.setRecording(false);
    buildTree(disk, subfoldersPerFolder);
    DiskUsageForm form([&disk] { return std::make_unique<tests::BorrowedEnumerator>(disk); },
                       platform::readDrive);
    form.resize(1200, 800);
    form.show();
    spin(settle);

    Heartbeat heart;
    Stall longest;
    Stall shown;
    QObject::connect(&form, &DiskUsageForm::resultsShown, &form,
                     [&] { shown = measured(tree + ", during the scan", heart); });
    const double time = bench::seconds([&] {
        form.scan(root);
        while (form.isBusy())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    });
    bench::report("scan with progress page, " + tree, time, "s");
    spin(settle);
    longest = std::max(shown, measured(tree + ", showing the result", heart));
    longest = std::max(longest, use(form, heart, tree));
    heart.take();
    form.findChild<QToolButton *>(QStringLiteral("backButton"))->click();
    spinWhileBusy(form);
    return std::max(longest, measured(tree + ", freeing the result", heart));
}

quint64 heapSize()
{
    PROCESS_MEMORY_COUNTERS_EX counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS *>(&counters),
                         sizeof counters);
    return counters.PagefileUsage; // the private bytes; the field of that name stays 0 under Wine
}

class Silent : public diskusage::ScanListener
{
public:
    void totalSubFolders(int) override {}
    void folderEntered(const QString &) override {}
    void itemSeen(int) override {}
};

// A folder's record of the scan and its row of the model.
double bytesPerRow()
{
    tests::MemoryEnumerator disk;
    disk.setRecording(false);
    buildTree(disk, 10);
    diskusage::ScanOptions options;
    options.collectFileTypes = false;
    Silent listener;
    const core::CancelFlag cancel;
    const quint64 before = heapSize();
    FolderModel model;
    model.setResult(std::make_shared<diskusage::ScanResult>(
        diskusage::scanFolder(root, options, disk, listener, cancel)));
    return static_cast<double>(heapSize() - before) / folderCount;
}

} // namespace

// Each in a process of its own, so that none inherits the heap of another.
int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    const QString what = application.arguments().value(1);
    if (what == QLatin1String("memory"))
        bench::report("folder model bytes per row", bytesPerRow(), "(aim: under 2048)");
    else if (what == QLatin1String("nested"))
        reportStall("interface longest stall (aim: under 50 ms of work), nested", run("nested", 10));
    else
        reportStall("interface longest stall (aim: under 50 ms of work), flat", run("flat", folderCount));
    return 0;
}
