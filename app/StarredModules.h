// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QSet>
#include <QString>

// The starred modules in the user's order, stored as decimal ids separated by commas: "9,2,5".
// The stored text is untrusted. Parts that are not numbers are dropped. Unknown ids are kept, so that an
// older version does not lose those of a newer one. A duplicate id counts as starred once; unstarring removes
// only its first occurrence, but the module counts as unstarred.
class StarredModules
{
public:
    StarredModules() = default;
    // Logs the parsing steps.
    explicit StarredModules(const QString &text);

    bool contains(int id) const { return m_starred.contains(id); }
    bool isEmpty() const { return m_ids.isEmpty(); }
    qsizetype size() const { return m_ids.size(); } // as stored: duplicates count twice
    // Toggles a module; a newly starred one is appended.
    void toggle(int id);

    QString text() const;

    // The order of the cards: starred ones in the user's order, then the others in catalogue order; exactly
    // the ids of the catalogue, each once.
    QList<int> arranged(const QList<int> &catalogue) const;

private:
    void append(QStringView piece);

    QList<int> m_ids;
    QSet<int> m_starred;
};
