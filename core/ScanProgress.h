// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QMutex>
#include <QObject>
#include <QString>
#include <QTimer>

namespace core {

struct ScanProgress {
    QString path;      // what is being scanned now
    int steps = 0;     // done
    int totalSteps = 0; // 0 = not known yet
    int items = 0;     // entries seen
};

// Stands between a worker whose signals fire for every entry and a form: keeps the latest values and passes them on
// at most twenty times a second, on the thread that the relay lives in. The slots are thread-safe and cheap;
// connect a worker's signals to them with Qt::DirectConnection.
class ProgressRelay : public QObject {
    Q_OBJECT

public:
    explicit ProgressRelay(QObject *parent = nullptr);

    // Passes on what is left and stops; call it when the job has ended.
    void finish();
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
    void passOn();

    mutable QMutex m_mutex;
    ScanProgress m_latest;
    bool m_dirty = false;
    QTimer m_timer;
};

} // namespace core
