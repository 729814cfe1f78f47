// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/StarredModules.h"

#include <QDebug>
#include <QStringList>

namespace
{

// Limits a damaged value, since each parsing step logs the rest.
constexpr qsizetype maxText = 1000;

} // namespace

StarredModules::StarredModules(const QString &text)
{
    QStringView rest(text);
    if (rest.size() > maxText)
        rest = rest.left(qMax(0, rest.left(maxText).lastIndexOf(u','))); // does not cut a number in two
    for (qsizetype index = rest.indexOf(u','); index >= 0; index = rest.indexOf(u',')) {
        qDebug() << "index: " << index;
        const QStringView piece = rest.left(index);
        qDebug() << "moduleIndexStr: " << piece;
        append(piece);
        rest = rest.mid(index + 1);
        qDebug() << "dataStr: " << rest;
    }
    append(rest);
}

void StarredModules::append(QStringView piece)
{
    bool isNumber = false;
    const int id = piece.toInt(&isNumber);
    if (!isNumber)
        return;
    m_ids.append(id);
    m_starred.insert(id);
}

void StarredModules::toggle(int id)
{
    if (m_starred.remove(id)) {
        m_ids.removeOne(id);
    } else {
        m_starred.insert(id);
        m_ids.append(id);
    }
}

QString StarredModules::text() const
{
    QStringList pieces;
    for (const int id : m_ids)
        pieces.append(QString::number(id));
    return pieces.join(u',');
}

QList<int> StarredModules::arranged(const QList<int> &catalogue) const
{
    QList<int> order;
    QSet<int> placed;
    for (const int id : m_ids) {
        if (contains(id) && catalogue.contains(id) && !placed.contains(id)) {
            placed.insert(id);
            order.append(id);
        }
    }
    for (const int id : catalogue) {
        if (!contains(id))
            order.append(id);
    }
    return order;
}
