// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ModuleTable.h"
#include "widgets/FLWidget.h"

#include <QHash>
#include <QPair>
#include <QPointer>

namespace tests
{

// A page that is busy when a test says so, and notes what it hears.
class FakePage : public FLWidget
{
public:
    FakePage(int id, QList<int> *asked, QWidget *parent) : FLWidget(parent), m_id(id), m_asked(asked) {}

    bool isBusy() const override { return busy; }
    void requestStop() override
    {
        m_asked->append(m_id);
        if (stopsAtOnce)
            busy = false;
    }
    bool mayLeave() override
    {
        ++timesAskedToLeave;
        return letsGo;
    }
    QString busyText() const override { return busy ? QStringLiteral("job of %1").arg(m_id) : QString(); }
    void shellEvent(ShellEvent event, quint32 value) override { heard.append({event, value}); }

    bool busy = false;
    bool stopsAtOnce = false;
    bool letsGo = true;
    int timesAskedToLeave = 0;
    QList<QPair<ShellEvent, quint32>> heard;

private:
    int m_id;
    QList<int> *m_asked;
};

// The suite's module table with a FakePage in the place of every form.
class FakeModules
{
public:
    FakeModules() : table(rows()) {}

    FakePage *page(int id) const { return m_pages.value(id); }
    qsizetype pageCount() const { return m_pages.size(); }

    QList<int> asked; // the ids of the pages that were asked to stop, in that order

private:
    QList<Module> rows()
    {
        QList<Module> all = ModuleTable::suite().rows();
        for (Module &module : all) {
            module.atStart = nullptr; // acts on the system
            if (module.kind == Module::Kind::Launcher)
                continue;
            module.create = [this, id = module.id](QWidget *parent) {
                auto *page = new FakePage(id, &asked, parent);
                m_pages.insert(id, page);
                return page;
            };
        }
        return all;
    }

    QHash<int, QPointer<FakePage>> m_pages;

public:
    const ModuleTable table;
};

} // namespace tests
