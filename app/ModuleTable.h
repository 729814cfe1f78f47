// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QList>
#include <QString>

#include <functional>

class FLWidget;
enum class ShellEvent;
class QWidget;

// One tool of the suite. The texts are English here and translated by the functions below.
struct Module {
    enum class Kind {
        Page,    // a form in the main window
        Launcher // an executable of its own, started with administrator rights
    };
    using Factory = std::function<FLWidget *(QWidget *parent)>;

    // Stable: stored in the registry, never renumbered, and in no order.
    int id = -1;
    const char *cardTitle = "";
    const char *cardName = nullptr; // object names on the home page; null for a card that is not asked for
    const char *starName = nullptr;
    const char *description = "";
    const char *icon = ""; // a 48-pixel image resource
    Kind kind = Kind::Page;

    // The side panel: null and 0 where the module has no button.
    const char *buttonName = nullptr; // object name
    const char *panelText = nullptr;  // may hold a line feed
    int panelOrder = 0;               // from 1, top to bottom

    // Pages.
    Factory create = {};
    int closeOrder = 0; // from 1: these are asked to stop before all others when the window closes
    QList<ShellEvent> shellEvents = {}; // what the page wants to hear of

    // Launchers. The display name is also the title of the executable's window, so it is not translated.
    const char *executable = nullptr; // "\Taskwick.exe"
    const char *displayName = nullptr;

    // Called when the window is first shown, before any page is created. Must not block: disk access needs a
    // thread.
    void (*atStart)() = nullptr;

    // Opening from the home page.
    const char *homeLog = nullptr; // a line for the log

    QString title() const;
    QString descriptionText() const;
    QString panelTitle() const;
    QString iconPath() const;
    bool hasButton() const { return buttonName != nullptr; }
    bool wants(ShellEvent event) const;
};

// All modules, in the order of the home page's catalogue. The side panel, the page stack, the home page and
// the close check are driven by it; tests make their own.
class ModuleTable
{
    Q_DECLARE_TR_FUNCTIONS(ModuleTable)

public:
    // All tools of the suite.
    static ModuleTable suite();

    explicit ModuleTable(QList<Module> rows);

    const QList<Module> &rows() const { return m_rows; }
    // Null for an id that no module has. Lives as long as the table.
    const Module *find(int id) const;

    QList<const Module *> inPanelOrder() const;
    // All modules with a page: first those with a closeOrder, then the others as in rows().
    QList<const Module *> inCloseOrder() const;
    QList<int> catalogue() const;

private:
    QList<const Module *> ordered(int Module::*key) const;

    QList<Module> m_rows;
};

// The suite's own table, made once.
const ModuleTable &moduleTable();
