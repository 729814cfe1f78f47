// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

// The suite's row style: its row height, and a tool tip with the whole text if the column is too narrow.
class RowDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QString displayText(const QVariant &value, const QLocale &locale) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;
};

// A share as a bar and a number. The edit role contains the percentage, 0 to 100; the display role its text.
class BarDelegate : public RowDelegate
{
    Q_OBJECT

public:
    using RowDelegate::RowDelegate;

    static constexpr int ChartIndexRole = Qt::UserRole + 1000;

    static QString percentText(double percent); // "45.2 %"

    QString displayText(const QVariant &value, const QLocale &locale) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    static QColor barColor(const QModelIndex &index, const QPalette &palette);
};
