// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LatestAnswer.h"

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QString>
#include <QStringList>

namespace duplicates
{

// The system's file icons, shared by all lists. Each extension is queried once on a worker thread, when a row
// with it is first painted; until then its icon is empty. Interface thread.
class FileIcons : public QObject
{
    Q_OBJECT

public:
    // Lives as long as the application object.
    static FileIcons &instance();

    // Only the extension of `fileName` is used; the disk is not accessed.
    QIcon icon(const QString &fileName);
    static QIcon missing();
    static QIcon removed();

signals:
    void arrived(); // new icons are available

private:
    explicit FileIcons(QObject *parent) : QObject(parent) {}

    void ask();

    QHash<QString, QIcon> m_bySuffix;
    QStringList m_unknown; // suffixes to query
    core::LatestAnswer m_answer;
};

} // namespace duplicates
