// SPDX-License-Identifier: GPL-3.0-or-later

// The stall of the interface while a finder scans, shows 50,000 groups of two, is used, and lets go of them.
// "duplicates": 100,000 files listed from memory. "pictures": a report of as many pictures, whose files do
// not exist. usage: finder_stall duplicates|pictures

#include "FindDuplicate/FindDuplicateForm.h"
#include "FindDuplicateImage/FindDuplicateImageResultForm.h"
#include "FindDuplicateImage/ImageReport.h"
#include "bench/Heartbeat.h"
#include "imaging/DecoderPool.h"
#include "tests/support/MemoryEnumerator.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QRandomGenerator>

using bench::Heartbeat, bench::measured, bench::settle, bench::spin, bench::Stall;

namespace
{

constexpr int groupCount = 50'000;
constexpr int groupsPerFolder = 50;
const QString root = QStringLiteral("C:\\bench");

QString fileName(int group)
{
    // Names without an order of their own, so that a search meets rows here and there.
    return QStringLiteral("document %1.txt").arg(QRandomGenerator(static_cast<quint32>(group)).generate());
}

QString folderOf(int group, int copy)
{
    return root + QStringLiteral("\\folder %1\\copy %2").arg(group / groupsPerFolder).arg(copy);
}

quint64 sizeOf(int group)
{
    return 1000 + QRandomGenerator(static_cast<quint32>(group) + 1).bounded(50'000'000U);
}

class Used
{
public:
    explicit Used(std::string what) : m_what(std::move(what)) {}

    template <class Action>
    void step(const std::string &what, const Action &action)
    {
        m_heart.take();
        action();
        spin(settle);
        note(what);
    }
    void note(const std::string &what)
    {
        longest = std::max(longest, measured(m_what + ", " + what, m_heart));
    }

    Stall longest;

private:
    const std::string m_what;
    Heartbeat m_heart;
};

// What a person does with the groups.
void use(QWidget &form, Used &used)
{
    auto *groups = form.findChild<QAbstractItemView *>(QStringLiteral("sideTreeView"));
    auto *search = form.findChild<QLineEdit *>();
    auto *order = form.findChild<QComboBox *>();
    used.step("search for a common letter", [=] { search->setText(QStringLiteral("7")); });
    used.step("search for a rare text", [=] { search->setText(QStringLiteral("777")); });
    used.step("end the search", [=] { search->clear(); });
    for (int i = 1; order && i < order->count(); ++i)
        used.step("order " + order->itemText(i).toStdString(), [=] { order->setCurrentIndex(i); });
    used.step("select the last group",
              [=] { groups->setCurrentIndex(groups->model()->index(groups->model()->rowCount() - 1, 0)); });
}

Stall duplicatesPage()
{
    tests::MemoryEnumerator disk;
    disk.setRecording(false);
    for (int group = 0; group < groupCount; ++group)
        for (const int copy : {1, 2})
            disk.addFile(folderOf(group, copy) + u'\\' + fileName(group), sizeOf(group),
                         static_cast<quint64>(group) + 1);
    FindDuplicateForm form([&disk] { return std::make_unique<tests::BorrowedEnumerator>(disk); });
    form.resize(1200, 800);
    form.show();
    spin(settle);

    Used used("duplicates");
    form.scan(root);
    while (form.isBusy())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    spin(settle);
    used.note("scan and report");
    bench::report("groups", static_cast<double>(form.groups().size()));
    use(form, used);
    used.step("back", [&form] { form.findChild<QAbstractButton *>(QStringLiteral("backButton"))->click(); });
    return used.longest;
}

Stall picturesPage()
{
    ImageReport report;
    report.root = root;
    for (int group = 0; group < groupCount; ++group) {
        lookalikes::ImageGroup made;
        for (const int copy : {1, 2}) {
            lookalikes::ImageRecord image;
            image.name = fileName(group);
            image.walkedFolder = folderOf(group, copy);
            image.size = sizeOf(group);
            made.members.push_back(image);
        }
        report.groups.push_back(std::move(made));
    }
    report.imagesCompared = groupCount * 2;
    report.decoders = std::make_shared<imaging::DecoderPool>(
        imaging::DecoderPool::Options{imaging::DecoderPool::decoderProgram()});
    FindDuplicateImageResultForm form;
    form.resize(1200, 800);
    form.show();
    spin(settle);

    Used used("pictures");
    bool ready = false;
    QObject::connect(&form, &FindDuplicateImageResultForm::resultReady, &form, [&ready] { ready = true; });
    form.prepare(std::move(report));
    while (!ready)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    spin(settle);
    used.note("report");
    use(form, used);
    used.step("let go", [&form] { form.clear(); });
    return used.longest;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    const bool pictures = application.arguments().value(1) == QLatin1String("pictures");
    bench::reportStall("interface longest stall (aim: under 50 ms of work)",
                       pictures ? picturesPage() : duplicatesPage());
    return 0;
}
