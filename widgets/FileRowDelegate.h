// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/RowDelegate.h"

#include <QList>
#include <QMetaType>
#include <QString>

// A short label at the end of a row.
struct RowBadge {
    enum class Tone { Neutral, Good, Warning, Danger };

    QString text;
    Tone tone = Tone::Neutral;
};
Q_DECLARE_METATYPE(RowBadge)

// A row's accessible text: its own text and its badges.
QString accessibleRowText(const QString &text, const QList<RowBadge> &badges);

// Fixed-height rows for files: an icon, a title, a number of muted lines below it, and badges beside the last
// line. The display role contains the complete text of the row for accessibility.
class FileRowDelegate : public RowDelegate
{
    Q_OBJECT

public:
    enum Role {
        TitleRole = Qt::UserRole + 2000, // QString
        LinesRole,                       // QStringList; paths are elided in the middle
        BadgesRole,                      // QList<RowBadge>
        StruckRole                       // bool: the title is struck through
    };

    // Rows with room for that number of lines below the title.
    explicit FileRowDelegate(int lines, QObject *parent = nullptr);

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    int m_lines;
};
