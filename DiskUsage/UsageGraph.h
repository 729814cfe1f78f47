// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/UsageTree.h"

#include <QPixmap>
#include <QStringList>
#include <QWidget>

// A treemap of a folder's space: its largest children and the rest, with nested boxes for folders. Files have
// the colour of their file type. The keyboard moves among the direct children.
class UsageGraph : public QWidget
{
    Q_OBJECT

public:
    explicit UsageGraph(QWidget *parent = nullptr);

    // `categories` are the names for the category indexes of the nodes, in table order.
    void setUsage(diskusage::UsageNode usage, const QStringList &categories);
    // Shown if the folder takes up no space.
    void setEmptyText(const QString &text);

    // The names from the displayed folder's child down to the current part; empty if none, or the rest, is
    // current.
    QStringList currentNames() const;
    QString currentText() const;

    // A part of the treemap, for tests and tool tips.
    struct Box {
        QRectF rect;
        const diskusage::UsageNode *node;
        int parent;   // index of the enclosing folder's box, -1 for direct children
        int depth;    // 1 for direct children
        bool divided; // its children have boxes
    };
    const std::vector<Box> &boxes() const { return m_boxes; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    // Double click or Enter; the names start with the displayed folder's child.
    void folderActivated(const QStringList &names);
    void fileActivated(const QStringList &names);
    void menuRequested(const QPoint &globalPosition);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void layOut();
    void addBoxes(const diskusage::UsageNode &folder, const QRectF &area, int parent, int depth);
    int boxAt(const QPointF &position) const;
    void setCurrent(int box);
    void moveCurrent(int key);
    void activate(int box);
    QStringList names(int box) const;
    QString describe(int box) const;

    QColor fill(const Box &box) const;
    void paintPicture(QPainter &painter) const;
    void paintBox(QPainter &painter, const Box &box) const;
    void paintLegend(QPainter &painter, const QRect &area) const;

    diskusage::UsageNode m_usage;
    QStringList m_categories;
    QString m_emptyText;
    std::vector<Box> m_boxes; // folders before their contents
    QPixmap m_picture;        // everything except mouse and keyboard highlights
    int m_current = -1;
    int m_hovered = -1;
};
