// SPDX-License-Identifier: GPL-3.0-or-later

// The stall of the interface while Secure Delete takes a list, destroys it and shows its report ("files"),
// and while the track cleaner looks for temporary files, shows them and clears them ("traces"). All files are
// made by this program, below a folder of its own. usage: cleaning_stall files|traces [NUMBER]

#include "SecureDelete/SecureDeleteForm.h"
#include "SecureDelete/Settings.h"
#include "TrackCleaner/Settings.h"
#include "TrackCleaner/TracesModel.h"
#include "TrackCleaner/TrackCleanerDetailDialog.h"
#include "TrackCleaner/TrackCleanerForm.h"
#include "bench/FileTree.h"
#include "bench/Heartbeat.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/TestPrefix.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLineEdit>
#include <QTableView>

#include <algorithm>
#include <functional>
#include <vector>

using bench::Heartbeat, bench::measured, bench::settle, bench::spin, bench::Stall;

namespace
{

// Steps of one form, with the stall of the one that stalls the thread's work longest.
class Steps
{
public:
    explicit Steps(QWidget &form) : m_form(form)
    {
        form.resize(1200, 800);
        form.show();
        spin(settle);
    }

    template <class Action>
    void step(const std::string &what, const Action &action, const std::function<bool()> &ended = {})
    {
        m_heart.take();
        const double time = bench::seconds([&] {
            action();
            while (ended && !ended())
                QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        });
        if (ended)
            bench::report(what, time, "s");
        spin(settle);
        const Stall stall = measured(what, m_heart);
        if (stall.work > m_longest.work)
            m_longest = stall;
    }
    void click(const char *name) { button(name)->click(); }
    bool isEnabled(const char *name) { return button(name)->isEnabled(); }
    template <class Widget>
    Widget *find(const char *name)
    {
        return m_form.findChild<Widget *>(QLatin1String(name));
    }
    void report() const { bench::reportStall("most work in a stall (aim: under 50 ms)", m_longest); }

private:
    QAbstractButton *button(const char *name) { return find<QAbstractButton>(name); }

    QWidget &m_form;
    Heartbeat m_heart;
    Stall m_longest{0, -1};
};

QStringList filesBelow(const QString &root)
{
    QStringList files;
    WIN32_FIND_DATAW folder;
    const platform::FindHandle folders(
        FindFirstFileW((root + QStringLiteral("\\*")).toStdWString().c_str(), &folder));
    do {
        if (folder.cFileName[0] == L'.')
            continue;
        const QString path = root + u'\\' + QString::fromWCharArray(folder.cFileName);
        WIN32_FIND_DATAW file;
        const platform::FindHandle found(
            FindFirstFileW((path + QStringLiteral("\\*")).toStdWString().c_str(), &file));
        do {
            if ((file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
                files.append(path + u'\\' + QString::fromWCharArray(file.cFileName));
        } while (FindNextFileW(found.get(), &file));
    } while (FindNextFileW(folders.get(), &folder));
    return files;
}

void sortByEveryColumn(Steps &steps, QTableView &table, const std::string &list)
{
    for (int column = 0; column < table.model()->columnCount(); ++column) {
        if (!table.isColumnHidden(column))
            steps.step(list + " by column " + std::to_string(column),
                       [&] { table.sortByColumn(column, Qt::DescendingOrder); });
    }
}

void destroyFiles(int files)
{
    bench::FreshFolder folder;
    folder.make();
    constexpr int filesInAFolder = 50; // Wine reads a whole folder for each of 26 renames
    bench::makeTree(folder.text(), files, filesInAFolder);
    const QStringList paths = filesBelow(folder.path());
    securedelete::Settings{securedelete::Method::Random, 1}.save();
    tests::FakeDialogs dialogs;
    SecureDeleteForm form({[](const QString &) { return platform::Medium::Seeks; },
                           [] { return QStringList(); }, [](const QString &drive) { return drive; }});
    Steps steps(form);
    auto *list = steps.find<QTableView>("itemsTableView");
    steps.step(
        "adding files", [&] { form.addPaths(paths); }, [&] { return steps.isEnabled("deleteButton"); });
    bench::report("files on the list", list->model()->rowCount());
    sortByEveryColumn(steps, *list, "the list");
    steps.step(
        "adding them once more", [&] { form.addPaths(paths); },
        [&] { return steps.isEnabled("deleteButton"); });
    steps.step("selecting all", [&] { list->selectAll(); });
    bool shown = false;
    QObject::connect(&form, &SecureDeleteForm::reportShown, &form, [&shown] { shown = true; });
    dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    steps.step(
        "destroying them", [&] { steps.click("deleteButton"); }, [&shown] { return shown; });
    sortByEveryColumn(steps, *steps.find<QTableView>("reportTableView"), "the report");
    steps.step("back", [&] { steps.click("backButton"); });
    bench::report("files left", static_cast<double>(filesBelow(folder.path()).size()));
    steps.report();
}

void useDetails(Steps &steps, TrackCleanerForm &form)
{
    steps.step("the details", [&] { form.showDetails(tracks::Item::TempFiles); });
    auto *dialog = form.findChild<TrackCleanerDetailDialog *>();
    auto *table = dialog->findChild<QTableView *>(QStringLiteral("trackCleanerDetailTableView"));
    sortByEveryColumn(steps, *table, "the details");
    auto *search = dialog->findChild<QLineEdit *>();
    for (const QString &words : {QStringLiteral("7"), QStringLiteral("777"), QString()})
        steps.step("search for \"" + words.toStdString() + "\"", [&] { search->setText(words); });
    steps.step("selecting all", [&] { table->selectAll(); });
    for (const char *name : {"selectNoneButton", "selectAllButton"})
        steps.step(name, [&] { dialog->findChild<QAbstractButton *>(QLatin1String(name))->click(); });
    // One is left out, so that the next look has something to carry over.
    steps.step("leaving one out", [&] {
        table->model()->setData(table->model()->index(0, TracesModel::Entry), Qt::Unchecked,
                                Qt::CheckStateRole);
    });
    steps.step("closing the details", [&] { dialog->accept(); });
}

void clearTraces(int files)
{
    bench::FreshFolder folder;
    folder.make();
    const QString root = folder.path() + QStringLiteral("\\temp");
    CreateDirectoryW(root.toStdWString().c_str(), nullptr);
    bench::makeTree(root.toStdWString(), files);
    for (const settings::Flag &item : tracks::checkedItems)
        item.write(false);
    tracks::checkedItems[tracks::indexOf(tracks::Item::TempFiles)].write(true);
    tracks::keepUsedToday.write(false);
    tests::FakeDialogs dialogs;
    TrackCleanerForm form(
        [root] {
            tracks::Locations locations;
            locations.temporary = locations.temporaryTarget = root;
            return locations;
        },
        nullptr);
    Steps steps(form);
    int looks = 0;
    QObject::connect(&form, &TrackCleanerForm::analyzed, &form, [&looks] { ++looks; });
    const auto look = [&] { steps.click("TrackCleanerAnalyzeButton"); };
    steps.step("the look", look, [&looks] { return looks == 1; });
    bench::report("traces found", static_cast<double>((*form.found())[tracks::Item::TempFiles].count()));
    useDetails(steps, form);
    steps.step("a look with one left out", look, [&looks] { return looks == 2; });
    dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    steps.step(
        "clearing", [&] { steps.click("TrackCleanerClearButton"); }, [&looks] { return looks == 3; });
    bench::report("files left", static_cast<double>(filesBelow(root).size()));
    steps.report();
}

} // namespace

// Texts are drawn by the toolkit's own FreeType: Wine's DirectWrite works out every glyph anew, 100 ms for a
// page full of them, which would hide all else.
int main(int argc, char *argv[])
{
    char option[] = "-platform";
    char platform[] = "windows:fontengine=freetype";
    std::vector<char *> arguments(argv, argv + argc);
    arguments.insert(arguments.end(), {option, platform, nullptr});
    int count = argc + 2;
    QApplication application(count, arguments.data());
    QApplication::setStyle(QStringLiteral("Fusion"));
    tests::requireTestPrefix(); // it writes settings and removes files
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const QStringList words = application.arguments();
    const int number = words.value(2).toInt();
    if (words.value(1) == QLatin1String("traces"))
        clearTraces(number > 0 ? number : 100'000);
    else
        destroyFiles(number > 0 ? number : 20'000);
    return 0;
}
