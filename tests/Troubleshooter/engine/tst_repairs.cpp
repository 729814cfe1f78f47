// SPDX-License-Identifier: GPL-3.0-or-later
#include "Troubleshooter/engine/CacheRepair.h"
#include "Troubleshooter/engine/InternetRepair.h"
#include "Troubleshooter/engine/StoreRepair.h"
#include "tests/Troubleshooter/engine/FakeWorld.h"

#include <QTest>

using namespace repair;
using namespace Qt::StringLiterals;
using State = ToolRun::State;

namespace
{

const core::CancelFlag never;

Report doSteps(Repair &repair, const QStringList &steps, const core::CancelFlag &cancel = never)
{
    return applySteps(repair, repair.check(never), steps, cancel, [](const QString &) {});
}

// "Connection!" for a problem, "Proxy?" for a note.
QStringList summary(const Examination &found)
{
    QStringList lines;
    for (const Finding &finding : found.findings) {
        if (finding.health != Health::Good)
            lines.append(finding.subject.section(u' ', 0, 0) +
                         (finding.health == Health::Problem ? u'!' : u'?'));
    }
    for (const Step &step : found.steps) {
        if (step.advised)
            lines.append(u"advise "_s + step.id);
        if (!step.obstacle.isEmpty())
            lines.append(u"no "_s + step.id);
    }
    return lines;
}

} // namespace

class RepairsTest : public QObject
{
    Q_OBJECT

private slots:
    void findsNetworkFaults_data();
    void findsNetworkFaults();
    void savesBeforeItResets_data();
    void savesBeforeItResets();
    void onlyWhatWasShownAndChosen();
    void explorerComesBack_data();
    void explorerComesBack();
    void interruptedRepair_data();
    void interruptedRepair();
    void store();
};

void RepairsTest::findsNetworkFaults_data()
{
    QTest::addColumn<std::function<void(tests::FakeNetwork &)>>("change");
    QTest::addColumn<QStringList>("found");
    const auto row = [](const char *name, std::function<void(tests::FakeNetwork &)> change,
                        const QStringList &found) { QTest::newRow(name) << change << found; };
    row("in order", [](auto &) {}, {});
    row("no adapter", [](auto &net) { net.found->clear(); }, {u"Connection!"_s, u"no renew"_s});
    row("cable out", [](auto &net) { net.found->first().up = false; }, {u"Connection!"_s, u"no renew"_s});
    row("not told", [](auto &net) { net.found.reset(); }, {u"Connection?"_s});
    row("no lease",
        [](auto &net) {
            net.found->first().addresses = {u"169.254.3.4"_s, u"fe80::1"_s};
            net.lookup.answered = net.answers = false;
        },
        {u"Address!"_s, u"Names!"_s, u"Internet!"_s, u"advise flush"_s, u"advise renew"_s});
    row("no gateway, address set by hand",
        [](auto &net) {
            net.found->first().gateways.clear();
            net.found->first().automatic = false;
        },
        {u"Address!"_s, u"advise renew"_s, u"no renew"_s});
    row("no names",
        [](auto &net) {
            net.lookup = {false, 8000, u"Timeout."_s};
        },
        {u"Names!"_s, u"Internet!"_s, u"advise flush"_s});
    row("slow names", [](auto &net) { net.lookup.milliseconds = 4000; }, {u"Names?"_s});
    row("behind a proxy",
        [](auto &net) {
            net.proxyInUse.server = u"p:8080"_s;
            net.answers = false;
        },
        {u"Proxy?"_s, u"Internet?"_s});
    row("sign in first", [](auto &net) { net.state = Connectivity::SignIn; }, {u"Internet!"_s});
}

void RepairsTest::findsNetworkFaults()
{
    QFETCH(const std::function<void(tests::FakeNetwork &)>, change);
    tests::FakeNetwork network;
    tests::FakeTools tools;
    change(network);
    const Examination found = InternetRepair(network, tools).check(never);
    QTEST(summary(found), "found");
    QCOMPARE(found.problems(), summary(found).filter(u"!"_s).size());
    QVERIFY(tools.ran.isEmpty());
}

void RepairsTest::savesBeforeItResets_data()
{
    QTest::addColumn<QString>("step");
    QTest::addColumn<ToolRun>("saving");
    QTest::addColumn<ToolRun>("resetting");
    QTest::addColumn<bool>("done");
    QTest::addColumn<bool>("restart");
    const ToolRun good{State::Ended, 0, "x"}, empty{State::Ended, 0, {}}, bad{State::Ended, 1, "x"},
        refused{State::Refused, 0, {}};
    QTest::newRow("sockets") << u"sockets"_s << good << good << true << true;
    QTest::newRow("addresses") << u"addresses"_s << good << good << true << true;
    QTest::newRow("in part") << u"addresses"_s << good << bad << false << true;
    QTest::newRow("refused") << u"sockets"_s << good << refused << false << false;
    QTest::newRow("sockets not saved") << u"sockets"_s << bad << good << false << false;
    QTest::newRow("addresses saved empty") << u"addresses"_s << empty << good << false << false;
}

void RepairsTest::savesBeforeItResets()
{
    QFETCH(const QString, step);
    QFETCH(const ToolRun, saving);
    QFETCH(const ToolRun, resetting);
    QFETCH(const bool, restart);
    tests::FakeNetwork network;
    tests::FakeTools tools;
    tools.answers = {{Tool::SaveSockets, saving},
                     {Tool::SaveAddresses, saving},
                     {Tool::ResetSockets, resetting},
                     {Tool::ResetAddresses, resetting}};
    InternetRepair repair(network, tools);
    const Report report = doSteps(repair, {step});
    QCOMPARE(report.outcomes.size(), 1);
    const Outcome &outcome = report.outcomes.first();
    QTEST(outcome.done, "done");
    QCOMPARE(report.restart(), restart);
    const bool saved = saving.succeeded() && !saving.output.isEmpty();
    QCOMPARE(tools.ran.size(), saved ? 2 : 1);
    QCOMPARE(outcome.text.contains(u"way back: C:\\Restore\\2026-11-22 09-05-00"_s), saved);
}

void RepairsTest::onlyWhatWasShownAndChosen()
{
    tests::FakeNetwork network;
    tests::FakeTools tools;
    InternetRepair repair(network, tools);
    const Examination shown = repair.check(never);
    QVERIFY(applySteps(repair, shown, {u"other"_s}, never, [](const QString &) {}).outcomes.isEmpty());
    network.found->first().up = false; // since it was shown
    const Report late = applySteps(repair, shown, {u"renew"_s}, never, [](const QString &) {});
    QVERIFY(!late.allDone() && !late.outcomes.first().text.isEmpty());
    QCOMPARE(late.after.problems(), 1);
    core::CancelFlag cancel;
    cancel.set();
    QVERIFY(!applySteps(repair, shown, {u"flush"_s}, cancel, [](const QString &) {}).allDone());
    QVERIFY(tools.ran.isEmpty());
    QVERIFY(applySteps(repair, shown, {u"flush"_s}, never, [](const QString &) {}).allDone());
    QCOMPARE(tools.ran, QList<Tool>{Tool::FlushDns});
}

void RepairsTest::explorerComesBack_data()
{
    QTest::addColumn<std::function<void(tests::FakeCaches &, tests::FakeExplorer &)>>("change");
    QTest::addColumn<bool>("done");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<int>("erased");
    const auto row = [](const char *name,
                        std::function<void(tests::FakeCaches &, tests::FakeExplorer &)> change, bool done,
                        const QStringList &calls,
                        int erased) { QTest::newRow(name) << change << done << calls << erased; };
    const QStringList endStart{u"end"_s, u"start"_s};
    row(
        "as planned", [](auto &, auto &) {}, true, endStart, 2);
    row(
        "one file is locked", [](auto &caches, auto &) { caches.locked = {u"C:\\a.db"_s}; }, false, endStart,
        2);
    row(
        "does not end", [](auto &, auto &explorer) { explorer.ends = false; }, false, endStart, 0);
    row(
        "does not start", [](auto &, auto &explorer) { explorer.starts = false; }, false,
        {u"end"_s, u"start"_s, u"start"_s, u"start"_s, u"start"_s}, 2);
    row(
        "another desktop", [](auto &, auto &explorer) { explorer.running = false; }, true, {}, 2);
    row(
        "copying", [](auto &, auto &explorer) { explorer.copying = true; }, false, {}, 0);
    row(
        "nothing there", [](auto &caches, auto &) { caches.files->clear(); }, false, {}, 0);
    row(
        "unreadable", [](auto &caches, auto &) { caches.files.reset(); }, false, {}, 0);
}

void RepairsTest::explorerComesBack()
{
    QFETCH(const std::function<void(tests::FakeCaches &, tests::FakeExplorer &)>, change);
    QFETCH(const int, erased);
    tests::FakeCaches caches;
    tests::FakeExplorer explorer;
    change(caches, explorer);
    CacheRepair repair(CacheKind::Icons, caches, explorer);
    const Report report = doSteps(repair, {u"rebuild"_s});
    QTEST(report.allDone(), "done");
    QTEST(explorer.calls, "calls");
    QCOMPARE(caches.erased.size(), erased);
    QCOMPARE(explorer.awaited, !explorer.starts);
}

void RepairsTest::interruptedRepair_data()
{
    QTest::addColumn<std::function<void(tests::FakeExplorer &)>>("change");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<bool>("stillAwaited");
    const auto row = [](const char *name, std::function<void(tests::FakeExplorer &)> change,
                        const QStringList &calls,
                        bool stillAwaited) { QTest::newRow(name) << change << calls << stillAwaited; };
    row(
        "no desktop", [](auto &) {}, {u"start"_s}, false);
    row(
        "does not start", [](auto &explorer) { explorer.starts = false; }, {u"start"_s}, true);
    row(
        "Windows was quicker", [](auto &explorer) { explorer.running = true; }, {}, false);
    row(
        "another shell by now", [](auto &explorer) { explorer.otherShell = true; }, {}, false);
    row(
        "no repair", [](auto &explorer) { explorer.awaited = false; }, {}, false);
}

void RepairsTest::interruptedRepair()
{
    QFETCH(const std::function<void(tests::FakeExplorer &)>, change);
    tests::FakeExplorer explorer;
    explorer.running = false;
    explorer.awaited = true;
    change(explorer);
    finishInterruptedRepair(explorer);
    QTEST(explorer.calls, "calls");
    QTEST(explorer.awaited, "stillAwaited");
}

void RepairsTest::store()
{
    tests::FakeStore windows;
    tests::FakeTools tools;
    StoreRepair repair(windows, tools);
    QVERIFY(summary(repair.check(never)).isEmpty());
    QVERIFY(doSteps(repair, {u"reset"_s}).allDone());
    windows.answer.services.append({u"InstallService"_s, true});
    QCOMPARE(summary(repair.check(never)), QStringList{u"Service!"_s});
    windows.answer.installed = false;
    QCOMPARE(summary(repair.check(never)), QStringList({u"Microsoft!"_s, u"Service!"_s, u"no reset"_s}));
    QVERIFY(!doSteps(repair, {u"reset"_s}).allDone());
    QCOMPARE(tools.ran, QList<Tool>{Tool::ResetStore});
}

QTEST_APPLESS_MAIN(RepairsTest)
#include "tst_repairs.moc"
