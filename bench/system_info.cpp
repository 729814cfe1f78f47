// SPDX-License-Identifier: GPL-3.0-or-later
// From the click to the filled page, beside the calls and WMI questions of that page alone.
#include "SystemInfo/LoadPageThread.h"
#include "SystemInfo/engine/Pages.h"
#include "SystemInfo/machine/WindowsMachine.h"
#include "bench/Bench.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QStandardItemModel>

#include <windows.h>

#include <psapi.h>

#include <thread>
#include <type_traits>

using namespace systeminfo;

namespace
{

constexpr int rounds = 5;

// Counts the time that is spent in the calls and questions of a page, and does them.
class TimedMachine : public WindowsMachine, private core::WmiSource, private core::RegistryView
{
public:
    using WindowsMachine::WindowsMachine;

    double inCalls = 0; // s

    core::WmiSource &wmi() override { return *this; }
    core::RegistryView &registry() override { return *this; }
    SystemFacts system() override
    {
        return timed([this] { return WindowsMachine::system(); });
    }
    MemoryStatus memory() override
    {
        return timed([this] { return WindowsMachine::memory(); });
    }
    PowerStatus power() override
    {
        return timed([this] { return WindowsMachine::power(); });
    }
    std::vector<Volume> fixedVolumes() override
    {
        return timed([this] { return WindowsMachine::fixedVolumes(); });
    }
    std::vector<Adapter> adapters() override
    {
        return timed([this] { return WindowsMachine::adapters(); });
    }
    std::vector<Connection> connections() override
    {
        return timed([this] { return WindowsMachine::connections(); });
    }
    QStringList printers() override
    {
        return timed([this] { return WindowsMachine::printers(); });
    }
    std::vector<GraphicsAdapter> graphics() override
    {
        return timed([this] { return WindowsMachine::graphics(); });
    }
    bool isPresent(const QString &id) override
    {
        return timed([&] { return WindowsMachine::isPresent(id); });
    }
    DriveAnswers drive(quint32 number) override
    {
        return timed([&] { return WindowsMachine::drive(number); });
    }
    std::optional<int> encryptionState(const QString &root) override
    {
        return timed([&] { return WindowsMachine::encryptionState(root); });
    }
    QImage smallIcon(const QString &path) override
    {
        return timed([&] { return WindowsMachine::smallIcon(path); });
    }
    PathState pathState(const QString &path) override
    {
        return timed([&] { return WindowsMachine::pathState(path); });
    }
    QString companyName(const QString &file) override
    {
        return timed([&] { return WindowsMachine::companyName(file); });
    }
    QString findProgram(const QString &name) override
    {
        return timed([&] { return WindowsMachine::findProgram(name); });
    }
    std::vector<SpecialFolder> specialFolders() override
    {
        return timed([this] { return WindowsMachine::specialFolders(); });
    }
    std::vector<StartupFile> startupFiles() override
    {
        return timed([this] { return WindowsMachine::startupFiles(); });
    }
    TaskList tasks() override
    {
        return timed([this] { return WindowsMachine::tasks(); });
    }

private:
    template <class Call>
    std::invoke_result_t<Call> timed(Call call)
    {
        std::invoke_result_t<Call> result{};
        inCalls += bench::seconds([&] { result = call(); });
        return result;
    }
    core::WmiAnswer query(const core::WmiQuery &query,
                          const std::function<void(const core::WmiRow &)> &take) override
    {
        return timed([&] { return WindowsMachine::wmi().query(query, take); });
    }
    void noteFailure(const core::WmiQuery &, quint32) override {}
    core::RegistryValue value(Hive hive, const QString &path, const QString &name, Bits bits) override
    {
        return timed([&] { return WindowsMachine::registry().value(hive, path, name, bits); });
    }
    QStringList subkeys(Hive hive, const QString &path, Bits bits) override
    {
        return timed([&] { return WindowsMachine::registry().subkeys(hive, path, bits); });
    }
    QStringList valueNames(Hive hive, const QString &path, Bits bits) override
    {
        return timed([&] { return WindowsMachine::registry().valueNames(hive, path, bits); });
    }
};

// The calls and questions of a page, with the start and the end of their session, on a new thread as the page
// has one: the first call of a thread into COM starts an apartment.
double callsOf(const PageSource &source)
{
    double spent = 0;
    std::thread([&] {
        double calls = 0;
        double gathering = 0;
        const double all = bench::seconds([&] {
            const core::CancelFlag cancel;
            TimedMachine machine(cancel);
            gathering = bench::seconds([&] { source.gather(machine, [](const Page &) {}); });
            calls = machine.inCalls;
        });
        spent = all - gathering + calls;
    }).join();
    return spent;
}

void fillPage(PageId id)
{
    QStandardItemModel model;
    const core::WorkerPointer<LoadPageThread> loader(new LoadPageThread(id, &model));
    QEventLoop loop;
    QObject::connect(loader.get(), &LoadPageThread::processFinish, &loop, &QEventLoop::quit);
    loader->start();
    loop.exec();
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    double whole = 0;
    double allCalls = 0;
    for (const PageSource &source : pageSources()) {
        std::vector<double> page, calls;
        for (int i = 0; i < rounds; ++i) {
            page.push_back(bench::seconds([&source] { fillPage(source.id); }));
            calls.push_back(callsOf(source));
        }
        whole += bench::median(page);
        allCalls += bench::median(calls);
        const std::string title(source.title);
        bench::report(title + ", filled", bench::median(page) * 1000, "ms");
        bench::report(title + ", its calls alone", bench::median(calls) * 1000, "ms");
        bench::report(title + ", ratio", bench::median(page) / bench::median(calls));
    }
    bench::report("all pages, one after the other", whole * 1000, "ms");
    bench::report("all pages, ratio", whole / allCalls);
    PROCESS_MEMORY_COUNTERS memory = {};
    if (GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory))
        bench::report("working set afterwards", static_cast<double>(memory.WorkingSetSize) / 1048576, "MB");
    return 0;
}
