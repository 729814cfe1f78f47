// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LatestAnswer.h"

#include <QKeySequence>
#include <QObject>
#include <QString>

#include <functional>

class QAction;
class QPoint;
class QWidget;
class ResultView;

// What can be done with the file or folder that is current in a list or picture: open it, show it in
// Explorer, copy its path, scan it again, and export the list. The actions belong to the view: their keys
// work while it has the focus. A ResultView has a menu of its own, copies rows and exports itself: the
// actions are added to that menu.
class PathActions : public QObject
{
    Q_OBJECT

public:
    // `path` answers with the full path of what is current, empty for nothing.
    PathActions(QWidget *view, std::function<QString()> path);
    PathActions(ResultView *view, std::function<QString()> path);
    ~PathActions() override;

    // Adds "Scan This Folder Again"; without this call there is none.
    void addScanAgain();
    void showMenu(const QPoint &globalPosition);
    void open();
    void showInExplorer();
    void copyPath();

signals:
    void scanAgain();
    void exportTable();
    // In words for the user.
    void failed(const QString &message);

private:
    PathActions(QWidget *view, std::function<QString()> path, const QKeySequence &copyKey);
    void reveal(const QString &path, bool exists);
    QAction *add(const QString &text, const char *icon, const QKeySequence &key, const QString &name);

    QWidget *m_view;
    std::function<QString()> m_path;
    QAction *m_open;
    QAction *m_reveal;
    QAction *m_copy;
    QAction *m_scanAgain = nullptr;
    QAction *m_export = nullptr;
    core::LatestAnswer m_check; // a disk may have to wake up to say whether the path is there
};
