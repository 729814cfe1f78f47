// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/FileProbe.h"

#include <QHash>
#include <QMutex>
#include <QSemaphore>
#include <QSet>
#include <QStringList>

#include <memory>

namespace tests
{

// Takes the place of the probe while it lives, answers like the disk but for what a test says, and notes what
// was opened. Any thread. Waits at its end for workers that were left to themselves; what else asks it goes
// before: make it first.
class FakeFileProbe : public core::FileProbe
{
public:
    FakeFileProbe();
    ~FakeFileProbe() override;

    // The attributes that the folder lists for this path, whatever they are.
    void setAttributes(const QString &path, quint32 attributes);
    // The next question about this path is answered when the returned object goes, like by a disk that
    // sleeps; held() is released when it has been asked.
    using Hold = std::shared_ptr<void>;
    Hold hold(const QString &path);
    QSemaphore &held() { return m_held; }
    // From now on there is not enough memory to answer questions about this path.
    void failAt(const QString &path);

    QStringList opened() const;

    std::optional<quint32> listedAttributes(const QString &path) override;
    std::optional<core::FileFacts> facts(const QString &path) override;
    bool isInside(const QString &root, const QString &item) override;

private:
    void arrive(const QString &path);

    core::FileProbe &m_real;
    mutable QMutex m_mutex; // guards what follows
    QHash<QString, quint32> m_attributes;
    QHash<QString, std::shared_ptr<QSemaphore>> m_holds;
    QSet<QString> m_failing;
    QStringList m_opened;
    QSemaphore m_held;
};

} // namespace tests
