// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/InstallationFolder.h"
#include "app/MainWindow.h"
#include "app/Resources.h"
#include "tests/app/FakeModules.h"
#include "tests/app/LogCapture.h"
#include "tests/support/FakeShell.h"
#include "tests/support/TestPrefix.h"

#include <QApplication>
#include <QStackedLayout>
#include <QTest>
#include <QToolButton>

#include <optional>

namespace tests
{

// What the tests of the main window share: the window with a FakePage for every module, on an empty registry
// and with a shell that starts nothing.
class ShellTest : public QObject
{
protected:
    void openShell()
    {
        initResources();
        QApplication::setStyle(QStringLiteral("Fusion"));
        m_log.emplace();
        m_registry.emplace();
        installation::setFolder(QStringLiteral("C:/here"));
        m_shell.emplace();
        m_modules.emplace();
        openWindow(m_modules->table);
    }
    void openWindow(const ModuleTable &table)
    {
        m_window.emplace(nullptr, table);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&*m_window));
        m_log->clear();
    }
    void closeShell()
    {
        m_window.reset();
        m_modules.reset();
        m_shell.reset();
        m_registry.reset();
        m_log.reset();
    }

    FakePage *page(int id) const { return m_modules->page(id); }
    QWidget *shown() const { return m_window->findChild<QStackedLayout *>()->currentWidget(); }
    QToolButton *button(const char *name) const
    {
        return m_window->findChild<QToolButton *>(QLatin1StringView(name));
    }

    std::optional<LogCapture> m_log;
    std::optional<RegistryGuard> m_registry;
    std::optional<FakeShell> m_shell;
    std::optional<FakeModules> m_modules;
    std::optional<MainWindow> m_window;
};

} // namespace tests
