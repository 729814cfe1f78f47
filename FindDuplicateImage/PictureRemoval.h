// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/LatestTask.h"
#include "platform/GuardedRemoval.h"

#include <QObject>

#include <optional>

// Moves one picture to the recycle bin: looks whether it is still the one that was shown, asks the user,
// looks again and moves it. The disk is touched on a thread of its own.
class PictureRemoval : public QObject
{
    Q_OBJECT

public:
    explicit PictureRemoval(QObject *parent = nullptr);
    ~PictureRemoval() override;

    // Does nothing while one is running.
    void start(const platform::ShownFile &file);
    bool isRunning() const { return m_running; }

    // What happened, in words for the user; empty for Moved.
    static QString message(const QString &path, platform::Removal result);

signals:
    // Empty when the user said no.
    void finished(std::optional<platform::Removal> result);

private:
    void ask(const platform::ShownFile &file);
    void move(const platform::ShownFile &file);
    void finish(std::optional<platform::Removal> result);

    bool m_running = false;
    LatestTask m_task;
};
