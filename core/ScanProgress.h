// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMutex>
#include <QObject>
#include <QString>
#include <QTimer>

namespace core
{

// The progress of a job. Counters that it does not use stay 0.
struct ScanProgress {
    QString path;           // current item
    int steps = 0;          // finished, of totalSteps
    int totalSteps = 0;     // 0 = not known yet
    int items = 0;          // entries seen
    quint64 bytes = 0;      // finished, of totalBytes
    quint64 totalBytes = 0; // 0 = not known yet

    // 0 to 1, by bytes if their total is known, otherwise by steps; negative if neither is known.
    double fraction() const;
};

// Connects a worker that reports every entry to a form: keeps the latest values and forwards them at most
// twenty times a second, on the relay's own thread. The slots are thread-safe and cheap; call them on the
// worker's thread, or connect with Qt::DirectConnection.
class ProgressRelay : public QObject
{
    Q_OBJECT

public:
    explicit ProgressRelay(QObject *parent = nullptr);

    // Forwards the last values and ignores further ones until restart(); call it when the job has ended.
    void finish();
    // Resets to zero before the next job. Not needed for a new relay.
    void restart();
    ScanProgress latest() const;

public slots:
    void setPath(const QString &path);
    void setTotalSteps(int total);
    void setSteps(int steps);
    void addStep();
    void setItems(int items);
    void setTotalBytes(quint64 total);
    void setBytes(quint64 bytes);

signals:
    void changed(const core::ScanProgress &progress);

private:
    template <class Change>
    void change(Change apply);
    void passOn();

    mutable QMutex m_mutex;
    ScanProgress m_latest;
    bool m_running = true;
    bool m_dirty = false;     // m_latest has not been forwarded
    bool m_scheduled = false; // the timer is running, or the event that starts it is queued
    QTimer m_timer;
};

} // namespace core
