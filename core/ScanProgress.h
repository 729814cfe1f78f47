// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMutex>
#include <QObject>
#include <QString>
#include <QTimer>

namespace core
{

// The progress of a job. What it does not count stays 0.
struct ScanProgress {
    QString path;           // what is being worked on now
    int steps = 0;          // done, of totalSteps
    int totalSteps = 0;     // 0 = not known yet
    int items = 0;          // entries seen
    quint64 bytes = 0;      // done, of totalBytes
    quint64 totalBytes = 0; // 0 = not known yet

    // 0 to 1, by bytes where their total is known, else by steps; negative when neither is.
    double fraction() const;
};

// Stands between a worker that reports every entry and a form: keeps the latest values and passes them on at
// most twenty times a second, on the thread that the relay lives in. The slots are thread-safe and cheap;
// call them from the worker's thread, or connect its signals to them with Qt::DirectConnection.
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
    bool m_dirty = false;     // m_latest has not been passed on
    bool m_scheduled = false; // the timer runs, or the event that starts it is on its way
    QTimer m_timer;
};

} // namespace core
