// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/PathActions.h"

#include "platform/Paths.h"
#include "platform/Shell.h"
#include "widgets/Controls.h"
#include "widgets/FLPopupMenu.h"
#include "widgets/ResultView.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QWidget>

PathActions::PathActions(QWidget *view, std::function<QString()> path)
    : PathActions(view, std::move(path), QKeySequence::Copy)
{
    m_export = add(tr("Export as CSV..."), "Export24", QKeySequence::Save, QStringLiteral("exportAction"));
    connect(m_export, &QAction::triggered, this, &PathActions::exportTable);
}

PathActions::PathActions(ResultView *view, std::function<QString()> path)
    : PathActions(view, std::move(path), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C))
{
    connect(view, &ResultView::activated, this, &PathActions::open);
}

PathActions::PathActions(QWidget *view, std::function<QString()> path, const QKeySequence &copyKey)
    : QObject(view),
      m_view(view),
      m_path(std::move(path)),
      m_open(add(tr("Open"), "FolderOpen24", Qt::CTRL | Qt::Key_O, QStringLiteral("openAction"))),
      m_reveal(add(tr("Show in Explorer"), "Explorer24", Qt::CTRL | Qt::Key_E,
                   QStringLiteral("showInExplorerAction"))),
      m_copy(add(tr("Copy Path"), "Copy24", copyKey, QStringLiteral("copyPathAction")))
{
    connect(m_open, &QAction::triggered, this, &PathActions::open);
    connect(m_reveal, &QAction::triggered, this, &PathActions::showInExplorer);
    connect(m_copy, &QAction::triggered, this, &PathActions::copyPath);
}

PathActions::~PathActions() = default;

QAction *PathActions::add(const QString &text, const char *icon, const QKeySequence &key, const QString &name)
{
    auto *action = new QAction(controls::image(icon), text, this);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    m_view->addAction(action);
    return action;
}

void PathActions::addScanAgain()
{
    m_scanAgain =
        add(tr("Scan This Folder Again"), "Refresh24", Qt::Key_F5, QStringLiteral("scanAgainAction"));
    connect(m_scanAgain, &QAction::triggered, this, &PathActions::scanAgain);
}

void PathActions::showMenu(const QPoint &globalPosition)
{
    const bool any = !m_path().isEmpty();
    auto *menu = new FLPopupMenu(m_view);
    menu->setObjectName(QStringLiteral("pathMenu"));
    for (QAction *action : {m_open, m_reveal, m_copy, m_scanAgain}) {
        if (!action || !any)
            continue;
        menu->addWithShortcut(action);
    }
    if (any)
        menu->addSeparator();
    menu->addWithShortcut(m_export);
    menu->popup(globalPosition);
}

void PathActions::open()
{
    const QString path = m_path();
    if (!path.isEmpty() && !platform::shell().openFile(path))
        emit failed(
            tr("%1 could not be opened. It may have been moved or deleted since the scan.").arg(path));
}

void PathActions::showInExplorer()
{
    const QString path = m_path();
    if (path.isEmpty())
        return;
    m_check.ask([path](const core::Asking &) { return platform::fileExists(path); },
                [this, path](bool exists) { reveal(path, exists); });
}

// Checked first: for a missing path Explorer silently opens some other folder.
void PathActions::reveal(const QString &path, bool exists)
{
    if (!exists)
        emit failed(tr("%1 is not there any more. It was moved or deleted since the scan.").arg(path));
    else if (!platform::shell().revealInExplorer(path))
        emit failed(tr("%1 could not be shown in Explorer.").arg(path));
}

void PathActions::copyPath()
{
    const QString path = m_path();
    if (!path.isEmpty())
        QGuiApplication::clipboard()->setText(path);
}
