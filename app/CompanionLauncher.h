// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>

#include <functional>

class OpenAdminModuleDialog;
struct Module;
class QWidget;

// Starts the companions that need administrator rights, and waits for their windows.
class CompanionLauncher : public QObject
{
    Q_OBJECT

public:
    // True when a program without administrator rights could put another file in place of this one.
    using ChangeableTest = std::function<bool(const QString &file, const QString &folder)>;

    explicit CompanionLauncher(QWidget *window);
    ~CompanionLauncher() override;

    // Hands the module's executable to the shell and opens the dialog that waits for its window. A second
    // call while the user is being asked by Windows is dropped. A file that other programs could have
    // exchanged is started only after a question, asked once for a folder.
    void launch(const Module &module);

    void setChangeableTest(ChangeableTest test) { m_changeable = std::move(test); }

signals:
    // The waiting for this module is over, or it was never begun.
    void finished(int id);

private:
    bool mayStart(const QString &file, const QString &folder, const QString &name);
    void wait(int id, const QString &name, bool installed);

    QWidget *m_window;
    ChangeableTest m_changeable;
    QHash<int, QPointer<OpenAdminModuleDialog>> m_dialogs; // by module id
    QString m_trusted;                                     // the folder that the user has agreed to
    bool m_starting = false;
};

// Starts the background agent, \Glasswick.exe, when every background feature is off and its window does not
// exist. That it is not started when a feature is on looks the wrong way round and is intended.
void startAgentIfIdle();
