// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LatestAnswer.h"

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QString>
#include <QStringList>

// The system's icons for files, for all lists together. Each extension is asked for once, on a thread, when a
// row with it is painted first; until the answer comes its icon is empty. Interface thread.
class FileIcons : public QObject
{
    Q_OBJECT

public:
    // Lives as long as the application object.
    static FileIcons &instance();

    // `fileName` bears the extension; nothing is looked at on the disk.
    QIcon icon(const QString &fileName);
    static QIcon missing();
    static QIcon removed();

signals:
    void arrived(); // icons that were empty

private:
    explicit FileIcons(QObject *parent) : QObject(parent) {}

    void ask();

    QHash<QString, QIcon> m_bySuffix;
    QStringList m_unknown; // suffixes to be asked for
    core::LatestAnswer m_answer;
};
