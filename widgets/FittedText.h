// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QString>

// For what paints rows: measuring a text can cost many times as much as drawing it, and a list paints the
// same texts again and again. What was measured is remembered for each font. Interface thread.
namespace fitted
{

// Pixels.
int width(const QString &text, const QFont &font);
// As QFontMetrics::elidedText().
QString elided(const QString &text, const QFont &font, Qt::TextElideMode mode, int room);

} // namespace fitted
