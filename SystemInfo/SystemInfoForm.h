// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Pages.h"
#include "SystemInfo/engine/Report.h"
#include "SystemInfo/engine/Search.h"
#include "widgets/FLWidget.h"

#include <array>
#include <optional>

class InfoPageForm;
class JobHost;
class QStackedLayout;
class QToolButton;

// System information: a column of page buttons, and a stack of the pages opened so far.
class SystemInfoForm : public FLWidget
{
    Q_OBJECT

public:
    explicit SystemInfoForm(QWidget *parent = nullptr);
    ~SystemInfoForm() override;

private slots:
    void on_toolButtonGeneral_clicked();
    void on_toolButtonCPU_clicked();
    void on_toolButtonMotherboard_clicked();
    void on_toolButtonMemory_clicked();
    void on_toolButtonStorage_clicked();
    void on_toolButtonOperatingSystem_clicked();
    void on_toolButtonEnvVars_clicked();
    void on_toolButtonSpecialFolders_clicked();
    void on_toolButtonStartupItems_clicked();
    void on_toolButtonTaskScheduler_clicked();
    void on_toolButtonAVCodec_clicked();

private:
    // A page: its index in the stack, in the order of opening; -1 before it is opened.
    struct Slot {
        qint32 index = -1;
        QToolButton *button = nullptr;
        InfoPageForm *form = nullptr;
        std::optional<systeminfo::Page> gathered; // used for search and report before the form exists
    };

    Slot &slot(systeminfo::PageId id) { return m_slots[static_cast<std::size_t>(id)]; }
    void showPage(systeminfo::PageId id);
    void addForm(systeminfo::PageId id);
    InfoPageForm *current() const;

    const systeminfo::Page *pageOf(const Slot &slot) const;
    std::vector<systeminfo::Page> pages() const; // the gathered ones
    bool knowsAllPages() const;
    void gatherRest(const std::function<void()> &then);

    void search(const QString &text);
    void showHits();
    void openHit(const systeminfo::Hit &hit);
    void saveReport();
    void writeReport(bool onlyThisPage, bool complete, const QString &file);
    void compareReports();

    std::array<Slot, systeminfo::pageCount> m_slots;
    qint32 m_createdPages = 0;
    QStackedLayout *m_stack;
    JobHost *m_jobs;
    QString m_search;
};
