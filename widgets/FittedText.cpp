// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FittedText.h"

#include <QCache>
#include <QFontMetrics>
#include <QHash>

namespace fitted
{

namespace
{

constexpr qsizetype maxTexts = 4000;     // a few screens of rows, per font
constexpr qsizetype maxCharacters = 512; // longer texts are not cached
constexpr qsizetype maxFonts = 32;

struct Shortened {
    QString text;
    Qt::TextElideMode mode;
    int room;

    bool operator==(const Shortened &) const = default;
};

std::size_t qHash(const Shortened &key, std::size_t seed)
{
    return qHashMulti(seed, key.text, static_cast<int>(key.mode), key.room);
}

struct Measured {
    QCache<QString, int> widths{maxTexts};
    QCache<Shortened, QString> shortened{maxTexts};
};

Measured &measured(const QFont &font)
{
    static QHash<QFont, Measured *> all;
    if (all.size() >= maxFonts && !all.contains(font)) {
        qDeleteAll(all);
        all.clear();
    }
    Measured *&of = all[font];
    if (!of)
        of = new Measured;
    return *of;
}

} // namespace

int width(const QString &text, const QFont &font)
{
    if (text.size() > maxCharacters)
        return QFontMetrics(font).horizontalAdvance(text);
    QCache<QString, int> &known = measured(font).widths;
    if (const int *found = known.object(text))
        return *found;
    const int result = QFontMetrics(font).horizontalAdvance(text);
    known.insert(text, new int(result));
    return result;
}

QString elided(const QString &text, const QFont &font, Qt::TextElideMode mode, int room)
{
    if (text.size() > maxCharacters)
        return QFontMetrics(font).elidedText(text, mode, room);
    if (mode == Qt::ElideNone || width(text, font) < room)
        return text;
    const Shortened key{text, mode, room};
    QCache<Shortened, QString> &known = measured(font).shortened;
    if (const QString *found = known.object(key))
        return *found;
    const QString result = QFontMetrics(font).elidedText(text, mode, room);
    known.insert(key, new QString(result));
    return result;
}

} // namespace fitted
