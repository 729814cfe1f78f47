// SPDX-License-Identifier: GPL-3.0-or-later
// From the click to the filled page, beside the bare WMI questions of that page asked in one session.
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

using namespace systeminfo;

namespace
{

constexpr int rounds = 5;

// Notes what is asked, and asks it.
class NotingMachine : public WindowsMachine, private core::WmiSource
{
public:
    using WindowsMachine::WindowsMachine;
    core::WmiSource &wmi() override { return *this; }
    std::vector<core::WmiQuery> asked;

private:
    core::WmiAnswer query(const core::WmiQuery &query,
                          const std::function<void(const core::WmiRow &)> &take) override
    {
        asked.push_back(query);
        return WindowsMachine::wmi().query(query, take);
    }
    void noteFailure(const core::WmiQuery &, quint32) override {}
};

std::vector<core::WmiQuery> questionsOf(const PageSource &source)
{
    const core::CancelFlag cancel;
    NotingMachine machine(cancel);
    source.gather(machine, [](const Page &) {});
    return machine.asked;
}

void askBare(const std::vector<core::WmiQuery> &questions)
{
    const std::unique_ptr<platform::WmiCalls> calls = platform::windowsWmiCalls();
    calls->initialize();
    QString scope;
    for (const core::WmiQuery &question : questions) {
        if (scope != question.scope) {
            calls->disconnect();
            calls->createLocator();
            scope = calls->connectServer(question.scope) >= 0 ? question.scope : QString();
            if (scope.isEmpty() || calls->setProxyBlanket() < 0)
                continue;
        }
        if (calls->execQuery(question.text) < 0)
            continue;
        core::WmiRow row;
        while (calls->next(question.properties, row) == S_OK) {
        }
        calls->closeQuery();
    }
    calls->disconnect();
    calls->uninitialize();
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
    for (const PageSource &source : pageSources()) {
        const std::vector<core::WmiQuery> questions = questionsOf(source);
        std::vector<double> page, bare;
        for (int i = 0; i < rounds; ++i) {
            page.push_back(bench::seconds([&source] { fillPage(source.id); }));
            if (!questions.empty())
                bare.push_back(bench::seconds([&questions] { askBare(questions); }));
        }
        whole += bench::median(page);
        bench::report(std::string(source.title) + ", filled", bench::median(page) * 1000, "ms");
        if (!bare.empty()) {
            bench::report(std::string(source.title) + ", bare questions", bench::median(bare) * 1000, "ms");
            bench::report(std::string(source.title) + ", ratio", bench::median(page) / bench::median(bare));
        }
    }
    bench::report("all pages, one after the other", whole * 1000, "ms");
    PROCESS_MEMORY_COUNTERS memory = {};
    if (GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory))
        bench::report("working set afterwards", static_cast<double>(memory.WorkingSetSize) / 1048576, "MB");
    return 0;
}
