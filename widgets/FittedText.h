// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QString>

// Text metrics for item delegates. Measuring a text can be many times slower than drawing it, and lists paint
// the same texts repeatedly, so results are cached per font. Interface thread.
namespace fitted
{

// Pixels.
int width(const QString &text, const QFont &font);
// As QFontMetrics::elidedText().
QString elided(const QString &text, const QFont &font, Qt::TextElideMode mode, int room);

} // namespace fitted
