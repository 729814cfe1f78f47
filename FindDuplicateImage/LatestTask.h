// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QObject>
#include <QThreadPool>

#include <functional>
#include <memory>

// Work for one thing on the screen that the user may have left again before it is done: only the last task
// that was started has an effect. Tasks run one after the other on a thread of their own.
class LatestTask : public QObject
{
    Q_OBJECT

public:
    // Called on the thread that this object lives in, when the task was not replaced meanwhile; may be empty.
    using Effect = std::function<void()>;
    using Task = std::function<Effect(const core::CancelFlag &cancel)>;

    explicit LatestTask(QObject *parent = nullptr);
    // Asks the running task to end, and waits for it.
    ~LatestTask() override;

    // `failed` is the effect of a task that throws, which is a lack of memory: without it the screen goes
    // without, and whatever waits for an effect waits for ever.
    void start(Task task, Effect failed = {});
    void cancel();
    bool isRunning() const { return m_current != nullptr; }

private:
    std::shared_ptr<core::CancelFlag> m_current;
    QThreadPool m_pool;
};
