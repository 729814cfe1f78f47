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
    // True if a program without administrator rights could replace this file.
    using ChangeableTest = std::function<bool(const QString &file, const QString &folder)>;

    explicit CompanionLauncher(QWidget *window);
    ~CompanionLauncher() override;

    // Starts the module's executable through the shell and opens the dialog that waits for its window. A
    // second call during the elevation prompt is ignored. If other programs could have replaced the file, the
    // user is asked first, once per folder.
    void launch(const Module &module);

    void setChangeableTest(ChangeableTest test) { m_changeable = std::move(test); }

signals:
    // The wait for this module has ended or never started.
    void finished(int id);

private:
    bool mayStart(const QString &file, const QString &folder, const QString &name);
    void wait(int id, const QString &name, bool installed);

    QWidget *m_window;
    ChangeableTest m_changeable;
    QHash<int, QPointer<OpenAdminModuleDialog>> m_dialogs; // by module id
    QString m_trusted;                                     // folder confirmed by the user
    bool m_starting = false;
};

// Starts the background agent, \Glasswick.exe, if all background features are off and its window does not
// exist. That it is not started when a feature is on is intended, although it looks inverted.
void startAgentIfIdle();
