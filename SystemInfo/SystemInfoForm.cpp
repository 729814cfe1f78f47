// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/SystemInfoForm.h"

#include "SystemInfo/InfoPageForm.h"
#include "SystemInfo/PageBar.h"
#include "SystemInfo/PageForms.h"
#include "SystemInfo/engine/Row.h"
#include "widgets/Controls.h"
#include "widgets/JobHost.h"
#include "widgets/SearchLine.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedLayout>
#include <QToolButton>

using namespace systeminfo;

namespace
{

// Object names, used by style sheets and UI automation, in PageId order.
constexpr std::array<const char *, pageCount> buttonNames = {
    "toolButtonGeneral",      "toolButtonCPU",
    "toolButtonMotherboard",  "toolButtonMemory",
    "toolButtonStorage",      "toolButtonOperatingSystem",
    "toolButtonEnvVars",      "toolButtonSpecialFolders",
    "toolButtonStartupItems", "toolButtonTaskScheduler",
    "toolButtonAVCodec"};

constexpr QSize buttonSize(151, 41);

// Eleven buttons do not fit a small screen at 200 %. Only there a scroll bar appears.
QScrollArea *scrolled(QWidget *buttons)
{
    QScrollArea *area = controls::scrollArea(buttons);
    area->setFixedWidth(buttonSize.width());
    const QScrollBar *bar = area->verticalScrollBar();
    QObject::connect(bar, &QScrollBar::rangeChanged, area, [area, bar](int, int maximum) {
        area->setFixedWidth(buttonSize.width() + (maximum > 0 ? bar->sizeHint().width() : 0));
    });
    return area;
}

} // namespace

SystemInfoForm::SystemInfoForm(QWidget *parent)
    : FLWidget(parent),
      m_stack(new QStackedLayout),
      m_jobs(new JobHost(this))
{
    auto *row = new QHBoxLayout(this);
    auto *buttons = new QWidget;
    auto *column = new QVBoxLayout(buttons);
    column->setContentsMargins({});
    column->setSpacing(4);
    column->setAlignment(Qt::AlignTop);
    for (std::size_t i = 0; i < m_slots.size(); ++i) {
        auto *button = new QToolButton(this);
        button->setObjectName(QLatin1String(buttonNames[i]));
        // Escapes "&", which would mark a mnemonic.
        button->setText(
            emptyPage(static_cast<PageId>(i)).title.replace(QLatin1Char('&'), QStringLiteral("&&")));
        button->setCheckable(true);
        button->setFixedSize(buttonSize);
        button->setFocusPolicy(Qt::StrongFocus); // so that a click also moves the focus frame
        m_slots[i].button = button;
        column->addWidget(button);
    }
    m_stack->setContentsMargins(0, 0, 0, 0);
    row->addWidget(scrolled(buttons));
    row->addLayout(m_stack, 1);
    slot(PageId::General).index = 0;
    slot(PageId::General).button->setChecked(true);
    addForm(PageId::General);
    // Also works while the page buttons have the focus.
    controls::shortcut(this, QKeySequence::Find,
                       [this] { current()->bar()->searchLine()->setFocus(Qt::ShortcutFocusReason); });
    QMetaObject::connectSlotsByName(this);
}

SystemInfoForm::~SystemInfoForm() = default;

void SystemInfoForm::on_toolButtonGeneral_clicked()
{
    showPage(PageId::General);
}

void SystemInfoForm::on_toolButtonCPU_clicked()
{
    showPage(PageId::Cpu);
}

void SystemInfoForm::on_toolButtonMotherboard_clicked()
{
    showPage(PageId::Motherboard);
}

void SystemInfoForm::on_toolButtonMemory_clicked()
{
    showPage(PageId::Memory);
}

void SystemInfoForm::on_toolButtonStorage_clicked()
{
    showPage(PageId::Storage);
}

void SystemInfoForm::on_toolButtonOperatingSystem_clicked()
{
    showPage(PageId::OperatingSystem);
}

void SystemInfoForm::on_toolButtonEnvVars_clicked()
{
    showPage(PageId::EnvironmentVariables);
}

void SystemInfoForm::on_toolButtonSpecialFolders_clicked()
{
    showPage(PageId::SpecialFolders);
}

void SystemInfoForm::on_toolButtonStartupItems_clicked()
{
    showPage(PageId::StartupItems);
}

void SystemInfoForm::on_toolButtonTaskScheduler_clicked()
{
    showPage(PageId::TaskScheduler);
}

void SystemInfoForm::on_toolButtonAVCodec_clicked()
{
    showPage(PageId::Codecs);
}

// Compares the indices before the page gets one: pages that were never opened all have -1, so they do not
// uncheck each other.
void SystemInfoForm::showPage(PageId id)
{
    Slot &wanted = slot(id);
    for (const Slot &other : m_slots) {
        if (other.index != wanted.index)
            other.button->setChecked(false);
    }
    wanted.button->setChecked(true); // a second click would uncheck it
    if (wanted.index < 0)
        wanted.index = ++m_createdPages;
    if (!wanted.form)
        addForm(id);
    m_stack->setCurrentIndex(wanted.index);
}

void SystemInfoForm::addForm(PageId id)
{
    InfoPageForm *form = makePageForm(id, this);
    slot(id).form = form;
    form->show();
    m_stack->addWidget(form);
    connect(form->bar(), &PageBar::searched, this, &SystemInfoForm::search);
    connect(form->bar(), &PageBar::hitChosen, this, &SystemInfoForm::openHit);
    connect(form->bar(), &PageBar::saveRequested, this, &SystemInfoForm::saveReport);
    connect(form->bar(), &PageBar::compareRequested, this, &SystemInfoForm::compareReports);
}

InfoPageForm *SystemInfoForm::current() const
{
    return static_cast<InfoPageForm *>(m_stack->currentWidget());
}

const Page *SystemInfoForm::pageOf(const Slot &slot) const
{
    if (slot.form && slot.form->page())
        return slot.form->page();
    return slot.gathered ? &*slot.gathered : nullptr;
}

std::vector<Page> SystemInfoForm::pages() const
{
    std::vector<Page> pages;
    for (const Slot &slot : m_slots) {
        if (const Page *page = pageOf(slot))
            pages.push_back(*page);
    }
    return pages;
}

bool SystemInfoForm::knowsAllPages() const
{
    return std::ranges::all_of(m_slots, [this](const Slot &slot) { return pageOf(slot) != nullptr; });
}
