// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/RowDelegate.h"

#include <QList>
#include <QMetaType>
#include <QString>

// A short remark beside a row's text.
struct RowBadge {
    enum class Tone { Neutral, Good, Warning, Danger };

    QString text;
    Tone tone = Tone::Neutral;
};
Q_DECLARE_METATYPE(RowBadge)

// A row's accessible text: what stands in it and the remarks beside it.
QString accessibleRowText(const QString &text, const QList<RowBadge> &badges);

// Rows of a fixed height for files: an icon, a title, a number of muted lines below it, and badges beside the
// last line. The display role keeps the row's whole text, for whoever reads it instead of looking.
class FileRowDelegate : public RowDelegate
{
    Q_OBJECT

public:
    enum Role {
        TitleRole = Qt::UserRole + 2000, // QString
        LinesRole,                       // QStringList; paths are shortened in their middle
        BadgesRole,                      // QList<RowBadge>
        StruckRole                       // bool: the title is struck out
    };

    // Rows with room for that many lines below the title.
    explicit FileRowDelegate(int lines, QObject *parent = nullptr);

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

private:
    int m_lines;
};
