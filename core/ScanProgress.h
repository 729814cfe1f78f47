// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMutex>
#include <QObject>
#include <QString>
#include <QTimer>

namespace core
{

struct ScanProgress {
    QString path;       // what is being scanned now
    int steps = 0;      // done
    int totalSteps = 0; // 0 = not known yet
    int items = 0;      // entries seen
};

// Stands between a worker whose signals fire for every entry and a form: keeps the latest values and passes
// them on at most twenty times a second, on the thread that the relay lives in. The slots are thread-safe and
// cheap; connect a worker's signals to them with Qt::DirectConnection.
class ProgressRelay : public QObject
{
    Q_OBJECT

public:
    explicit ProgressRelay(QObject *parent = nullptr);

    // Passes on what is left and takes no more until restart(); call it when the job has ended.
    void finish();
    // Back to zero, before the next job begins. A new relay needs no restart.
    void restart();
    ScanProgress latest() const;

public slots:
    void setPath(const QString &path);
    void setTotalSteps(int total);
    void addStep();
    void setItems(int items);

signals:
    void changed(const core::ScanProgress &progress);

private:
    template <class Change>
    void change(Change apply);
    void passOn();

    mutable QMutex m_mutex;
    ScanProgress m_latest;
    bool m_running = true;
    bool m_dirty = false;     // m_latest has not been passed on
    bool m_scheduled = false; // the timer runs, or the event that starts it is on its way
    QTimer m_timer;
};

} // namespace core
