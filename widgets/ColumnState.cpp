// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ColumnState.h"

#include <QHeaderView>
#include <QStringList>
#include <QTimer>

#include <algorithm>

namespace columns
{

namespace
{

constexpr int storeDelay = 500; // ms after the last change
constexpr int minWidth = 16;
constexpr int maxWidth = 4000;
constexpr qsizetype maxText = 2000;

struct Column {
    int logical;
    int width;
    bool hidden;
};

struct State {
    QList<Column> columns;
    int sorted = -1;
    Qt::SortOrder order = Qt::AscendingOrder;
};

// Valid if each column occurs once, widths are within limits and at least one column is visible.
bool isSound(const State &state, int count)
{
    QList<int> seen;
    for (const Column &column : state.columns)
        seen.append(column.logical);
    std::sort(seen.begin(), seen.end());
    for (int i = 0; i < seen.size(); ++i)
        if (seen.at(i) != i)
            return false;
    return seen.size() == count && state.sorted < count &&
           std::ranges::any_of(state.columns, [](const Column &column) { return !column.hidden; });
}

bool parse(const QString &text, State &state)
{
    if (text.size() > maxText)
        return false;
    bool sound = true;
    for (const QString &word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        bool first = false;
        if (word.startsWith(QLatin1Char('<')) || word.startsWith(QLatin1Char('>'))) {
            state.sorted = word.mid(1).toInt(&first);
            state.order = word.startsWith(QLatin1Char('<')) ? Qt::AscendingOrder : Qt::DescendingOrder;
            sound = sound && first && state.sorted >= 0;
            continue;
        }
        bool second = false;
        const int logical = word.section(QLatin1Char(':'), 0, 0).toInt(&first);
        const int width = word.section(QLatin1Char(':'), 1).toInt(&second);
        const bool hidden = width < 0;
        sound = sound && first && second && qAbs(width) >= minWidth && qAbs(width) <= maxWidth;
        state.columns.append({logical, qAbs(width), hidden});
    }
    return sound;
}

} // namespace

QString stateText(const QHeaderView &header)
{
    QStringList words;
    for (int place = 0; place < header.count(); ++place) {
        const int logical = header.logicalIndex(place);
        const bool hidden = header.isSectionHidden(logical);
        // A hidden section reports no width.
        const int width = std::clamp(hidden ? header.defaultSectionSize() : header.sectionSize(logical),
                                     minWidth, maxWidth);
        words.append(QStringLiteral("%1:%2").arg(logical).arg(hidden ? -width : width));
    }
    if (header.isSortIndicatorShown() && header.sortIndicatorSection() >= 0)
        words.append(QLatin1Char(header.sortIndicatorOrder() == Qt::AscendingOrder ? '<' : '>') +
                     QString::number(header.sortIndicatorSection()));
    return words.join(QLatin1Char(' '));
}

bool restore(QHeaderView &header, const QString &text)
{
    State state;
    if (!parse(text, state) || !isSound(state, header.count()))
        return false;
    for (int place = 0; place < state.columns.size(); ++place) {
        const Column &column = state.columns.at(place);
        header.moveSection(header.visualIndex(column.logical), place);
        header.setSectionHidden(column.logical, false);
        header.resizeSection(column.logical, column.width);
        header.setSectionHidden(column.logical, column.hidden);
    }
    if (state.sorted >= 0)
        header.setSortIndicator(state.sorted, state.order);
    return true;
}

void keep(QHeaderView *header, const settings::Text &setting)
{
    restore(*header, setting.read());
    auto *delay = new QTimer(header);
    delay->setSingleShot(true);
    delay->setInterval(storeDelay);
    QObject::connect(delay, &QTimer::timeout, header, [header, &setting] {
        const QString text = stateText(*header);
        if (header->count() > 0 && text != setting.read())
            setting.write(text);
    });
    const auto changed = [delay] { delay->start(); };
    QObject::connect(header, &QHeaderView::sectionResized, delay, changed);
    QObject::connect(header, &QHeaderView::sectionMoved, delay, changed);
    QObject::connect(header, &QHeaderView::sortIndicatorChanged, delay, changed);
}

} // namespace columns
