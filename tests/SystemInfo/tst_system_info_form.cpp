// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/InfoPageForm.h"
#include "SystemInfo/MachineFactory.h"
#include "SystemInfo/PageBar.h"
#include "SystemInfo/SystemInfoForm.h"
#include "tests/SystemInfo/engine/Recordings.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeShell.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"

#include <QCheckBox>
#include <QClipboard>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSemaphore>
#include <QStackedLayout>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>

using namespace systeminfo;

namespace
{

// A laptop whose WMI hangs at a question until it is let go.
class HangingMachine : public tests::FakeMachine, private core::WmiSource
{
public:
    HangingMachine(const core::CancelFlag &, std::shared_ptr<QSemaphore> gate, QString hangsAt)
        : m_gate(std::move(gate)),
          m_hangsAt(std::move(hangsAt))
    {
        recordings::laptop(*this);
        facts.computerName = QStringLiteral("PC-OF-ANN");
    }
    core::WmiSource &wmi() override { return *this; }

private:
    core::WmiAnswer query(const core::WmiQuery &query,
                          const std::function<void(const core::WmiRow &)> &take) override
    {
        if (!m_hangsAt.isEmpty() && query.text.contains(m_hangsAt))
            m_gate->acquire();
        return fakeWmi.query(query, take);
    }
    void noteFailure(const core::WmiQuery &, quint32) override {}

    std::shared_ptr<QSemaphore> m_gate;
    QString m_hangsAt;
};

// The names by which style sheets and automation know the parts.
struct PageNames {
    const char *button;
    const char *text;
    const char *form;
    const char *tree;
};
constexpr PageNames pages[] = {
    {"toolButtonGeneral", "General", "GeneralInfoForm", "windowsTreeView"},
    {"toolButtonCPU", "CPU", "CPUInfoForm", "cpuTreeView"},
    {"toolButtonMotherboard", "Motherboard", "MotherboardInfoForm", "motherboardTreeView"},
    {"toolButtonMemory", "Memory", "MemoryInfoForm", "memoryTreeView"},
    {"toolButtonStorage", "Storage", "StorageInfoForm", "storageTreeView"},
    {"toolButtonOperatingSystem", "Operating System", "OperatingSystemInfoForm", "operatingSystemTreeView"},
    {"toolButtonEnvVars", "Environment Variables", "EnvironmentVarsInfoForm", "environmentVarsTreeView"},
    {"toolButtonSpecialFolders", "Special Folders", "SpecialFoldersForm", "specialFoldersTreeView"},
    {"toolButtonStartupItems", "Startup Items", "StartupItemsInfoForm", "startupItemsTreeView"},
    {"toolButtonTaskScheduler", "Task Scheduler", "TaskSchedulerInfoForm", "taskSchedulerTreeView"},
    {"toolButtonAVCodec", "Audio && Video Codec", "AVCodecInfoForm", "codecTreeView"},
};

} // namespace

class SystemInfoFormTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void names();
    void orderOfOpening();
    void hangingPage();
    void searchAndReport();
    void cleanupTestCase();

private:
    void useMachine(const QString &hangsAt = {})
    {
        m_gate->release(100); // those of the test before
        m_gate = std::make_shared<QSemaphore>();
        setMachineFactory([gate = m_gate, hangsAt](const core::CancelFlag &cancel) {
            return std::make_unique<HangingMachine>(cancel, gate, hangsAt);
        });
    }
    static void click(const SystemInfoForm &form, const char *button)
    {
        auto *found = form.findChild<QToolButton *>(QLatin1String(button));
        QVERIFY(found);
        found->click();
    }
    static InfoPageForm *shown(const SystemInfoForm &form)
    {
        return static_cast<InfoPageForm *>(form.findChild<QStackedLayout *>()->currentWidget());
    }

    std::shared_ptr<QSemaphore> m_gate = std::make_shared<QSemaphore>();
};

void SystemInfoFormTest::cleanupTestCase()
{
    setMachineFactory({});
    m_gate->release(100); // what still hangs
}

void SystemInfoFormTest::names()
{
    useMachine();
    SystemInfoForm form;
    for (const PageNames &page : pages) {
        auto *button = form.findChild<QToolButton *>(QLatin1String(page.button));
        QVERIFY2(button, page.button);
        QCOMPARE(button->text(), QLatin1String(page.text));
        QCOMPARE(button->size(), QSize(151, 41));
        button->click();
        QVERIFY(button->isChecked());
        InfoPageForm *opened = shown(form);
        QCOMPARE(opened->metaObject()->className(), page.form);
        auto *tree = opened->findChild<QTreeView *>(QLatin1String(page.tree));
        QVERIFY2(tree, page.tree);
        QTRY_VERIFY(opened->page());
        QCOMPARE(tree->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Field"));
        QCOMPARE(tree->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Value"));
        QCOMPARE(tree->columnWidth(0), 300);
        QCOMPARE(tree->editTriggers(), QAbstractItemView::NoEditTriggers);
        QVERIFY(tree->isExpanded(tree->model()->index(0, 0)) ||
                !tree->model()->rowCount(tree->model()->index(0, 0)));
    }
    QCOMPARE(form.findChildren<InfoPageForm *>().size(), 11);
}

void SystemInfoFormTest::orderOfOpening()
{
    useMachine();
    SystemInfoForm form;
    auto *stack = form.findChild<QStackedLayout *>();
    for (const auto &[button, index, count] : {std::tuple("toolButtonStorage", 1, 2),
                                               {"toolButtonCPU", 2, 3},
                                               {"toolButtonStorage", 1, 3},
                                               {"toolButtonGeneral", 0, 3}}) {
        click(form, button);
        QCOMPARE(stack->currentIndex(), index);
        QCOMPARE(stack->count(), count);
        int checked = 0;
        for (const QToolButton *each : form.findChildren<QToolButton *>())
            checked += each->isCheckable() && each->isChecked();
        QCOMPARE(checked, 1);
    }
}

void SystemInfoFormTest::hangingPage()
{
    useMachine(QStringLiteral("Win32_Processor"));
    auto form = std::make_unique<SystemInfoForm>();
    click(*form, "toolButtonCPU");
    InfoPageForm *cpu = shown(*form);
    click(*form, "toolButtonMemory");
    QTRY_VERIFY(shown(*form)->page()); // another page goes on
    QVERIFY(!cpu->page());
    QVERIFY(!form->isBusy()); // nothing keeps the window
    QElapsedTimer timer;
    timer.start();
    form.reset();
    QVERIFY2(timer.elapsed() < 2000, "the window closes while a call hangs");
}

void SystemInfoFormTest::searchAndReport()
{
    useMachine();
    tests::TestFolder folder;
    tests::FakeDialogs dialogs;
    SystemInfoForm form;
    form.resize(900, 500);
    form.show();
    QTRY_VERIFY(shown(form)->page());

    // A search reads pages that were never opened, without opening them.
    emit shown(form)->bar()->searched(QStringLiteral("2.92969"));
    auto *list = shown(form)->bar()->findChild<QCompleter *>();
    QTRY_COMPARE(list->model()->index(0, 0).data().toString(),
                 QStringLiteral("CPU \u203a CPU \u203a Speed: 2.92969 GHz"));
    QCOMPARE(form.findChild<QStackedLayout *>()->count(), 1);
    emit list->activated(list->completionModel()->index(0, 0));
    QTRY_VERIFY(shown(form)->page());
    QCOMPARE(shown(form)->id(), PageId::Cpu);

    // The menu is there as often as it is wanted.
    auto *reportButton = shown(form)->findChild<QToolButton *>(QStringLiteral("reportButton"));
    for (int i = 0; i < 2; ++i) {
        QVERIFY(reportButton->menu());
        reportButton->menu()->popup({});
        reportButton->menu()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    const QString file = folder.path() + QStringLiteral("/report.json");
    dialogs.nextFileToSave << file;
    QTimer::singleShot(0, &form, [] {
        auto *dialog = QApplication::activeModalWidget();
        dialog->findChild<QComboBox *>(QStringLiteral("formatComboBox"))->setCurrentIndex(2);
        dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Save)->click();
    });
    emit shown(form)->bar()->saveRequested();
    QTRY_VERIFY(QFile::exists(file));
    QFile saved(file);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    const QByteArray bytes = saved.readAll();
    const auto report = readReport(bytes);
    QVERIFY(report);
    QCOMPARE(report->pages.size(), 11u);
    QVERIFY(!bytes.contains("PC-OF-ANN") && bytes.contains("(left out)"));
}

QTEST_MAIN(SystemInfoFormTest)
#include "tst_system_info_form.moc"
