// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QSet>
#include <QString>

// The modules that the user has starred, in the user's order, and the text in which they are stored: ids in
// decimal, joined by commas, "9,2,5".
//
// The text comes from outside. Pieces that are not numbers are dropped. Ids that this build does not know are
// kept, so that an older version does not lose what a newer one has stored. An id that stands twice counts as
// starred once; unstarring it removes its first occurrence only, and leaves it unstarred all the same.
class StarredModules
{
public:
    StarredModules() = default;
    // Traces the split in the log.
    explicit StarredModules(const QString &text);

    bool contains(int id) const { return m_starred.contains(id); }
    bool isEmpty() const { return m_ids.isEmpty(); }
    qsizetype size() const { return m_ids.size(); } // as stored, so that an id that stands twice counts twice
    // Starred becomes unstarred and the other way round; a newly starred module goes to the end.
    void toggle(int id);

    QString text() const;

    // The order in which cards stand: the starred ones as the user ordered them, then the others as the
    // catalogue lists them; each id of the catalogue once, and no other.
    QList<int> arranged(const QList<int> &catalogue) const;

private:
    void append(QStringView piece);

    QList<int> m_ids;
    QSet<int> m_starred;
};
