// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/UsageGraph.h"

#include "DiskUsage/Treemap.h"
#include "core/SizeText.h"
#include "widgets/Theme.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>

using diskusage::UsageNode;

namespace
{

constexpr double gap = 2;         // around every box
constexpr double smallestBox = 3; // smaller parts are not drawn
constexpr double smallestDivided = 26;

double bandHeight(const QFontMetrics &metrics)
{
    return metrics.height() + theme::spaceTight;
}

QString shareText(quint64 part, quint64 whole)
{
    const double share = whole == 0 ? 0 : 100.0 * static_cast<double>(part) / static_cast<double>(whole);
    return QString::number(share, 'f', 1) + QStringLiteral(" %");
}

} // namespace

UsageGraph::UsageGraph(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(tr("Usage graph"));
}

void UsageGraph::setUsage(UsageNode usage, const QStringList &categories)
{
    m_current = -1;
    m_usage = std::move(usage);
    m_categories = categories;
    layOut();
}

void UsageGraph::setEmptyText(const QString &text)
{
    m_emptyText = text;
    update();
}

QSize UsageGraph::sizeHint() const
{
    return {420, 360};
}

QSize UsageGraph::minimumSizeHint() const
{
    return {160, 120};
}

void UsageGraph::layOut()
{
    const UsageNode *current = m_current < 0 ? nullptr : m_boxes[static_cast<std::size_t>(m_current)].node;
    m_boxes.clear();
    m_hovered = -1;
    m_picture = QPixmap();
    QRectF area = rect();
    area.setBottom(area.bottom() - bandHeight(fontMetrics()) - theme::spaceTight); // the legend
    addBoxes(m_usage, area, -1, 1);
    const auto same = std::find_if(m_boxes.begin(), m_boxes.end(),
                                   [current](const Box &box) { return box.node == current; });
    setCurrent(same == m_boxes.end() ? -1 : static_cast<int>(same - m_boxes.begin()));
}

void UsageGraph::addBoxes(const UsageNode &folder, const QRectF &area, int parent, int depth)
{
    std::vector<double> weights;
    for (const UsageNode &child : folder.children)
        weights.push_back(static_cast<double>(child.bytes));
    // The children are sorted, except for the rest, which is last whatever its size.
    std::vector<std::size_t> order(weights.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return weights[a] > weights[b]; });
    std::stable_sort(weights.begin(), weights.end(), std::greater<>());
    const std::vector<QRectF> rects = diskusage::squarified(weights, area);
    for (std::size_t i = 0; i < rects.size(); ++i) {
        const QRectF rect = rects[i].adjusted(gap / 2, gap / 2, -gap / 2, -gap / 2);
        if (rect.width() < smallestBox || rect.height() < smallestBox)
            continue;
        const UsageNode &node = folder.children[order[i]];
        const int box = static_cast<int>(m_boxes.size());
        m_boxes.push_back({rect, &node, parent, depth, false});
        const double band = bandHeight(fontMetrics());
        const QRectF inside = rect.adjusted(gap, band, -gap, -gap);
        if (!node.children.empty() && inside.width() >= smallestDivided &&
            inside.height() >= smallestDivided) {
            m_boxes.back().divided = true;
            addBoxes(node, inside, box, depth + 1);
        }
    }
}

int UsageGraph::boxAt(const QPointF &position) const
{
    for (int i = static_cast<int>(m_boxes.size()) - 1; i >= 0; --i)
        if (m_boxes[static_cast<std::size_t>(i)].rect.contains(position))
            return i;
    return -1;
}

QStringList UsageGraph::names(int box) const
{
    QStringList result;
    for (int i = box; i >= 0; i = m_boxes[static_cast<std::size_t>(i)].parent) {
        const UsageNode &node = *m_boxes[static_cast<std::size_t>(i)].node;
        if (node.kind == UsageNode::Kind::Rest)
            return {};
        result.prepend(node.name);
    }
    return result;
}

QStringList UsageGraph::currentNames() const
{
    return names(m_current);
}

QString UsageGraph::currentText() const
{
    return describe(m_current);
}

QString UsageGraph::describe(int box) const
{
    if (box < 0)
        return {};
    const Box &shown = m_boxes[static_cast<std::size_t>(box)];
    const QString inside =
        shown.parent < 0 ? m_usage.name : m_boxes[static_cast<std::size_t>(shown.parent)].node->name;
    const quint64 whole =
        shown.parent < 0 ? m_usage.bytes : m_boxes[static_cast<std::size_t>(shown.parent)].node->bytes;
    const QString size = core::sizeText(shown.node->bytes);
    const QString share = tr("%1 of %2").arg(shareText(shown.node->bytes, whole), inside);
    switch (shown.node->kind) {
    case UsageNode::Kind::Rest:
        return tr("Everything else\n%1, %2").arg(size, share);
    case UsageNode::Kind::Folder:
        return tr("%1\nFolder, %2, %3").arg(shown.node->name, size, share);
    default:
        return tr("%1\n%2, %3, %4")
            .arg(shown.node->name, m_categories.value(shown.node->category, tr("Other file types")), size,
                 share);
    }
}

void UsageGraph::setCurrent(int box)
{
    m_current = box;
    const QString what = describe(box).replace(QLatin1Char('\n'), QLatin1String(", "));
    setAccessibleDescription(what);
    update();
}

void UsageGraph::activate(int box)
{
    const QStringList path = names(box);
    if (path.isEmpty())
        return;
    if (m_boxes[static_cast<std::size_t>(box)].node->kind == UsageNode::Kind::Folder)
        emit folderActivated(path);
    else
        emit fileActivated(path);
}

void UsageGraph::moveCurrent(int key)
{
    // The nearest direct child in the direction of the key; the first key press selects the largest.
    int best = -1;
    double bestDistance = 0;
    int from = m_current;
    while (from >= 0 && m_boxes[static_cast<std::size_t>(from)].parent >= 0)
        from = m_boxes[static_cast<std::size_t>(from)].parent;
    for (int i = 0; i < static_cast<int>(m_boxes.size()); ++i) {
        const Box &box = m_boxes[static_cast<std::size_t>(i)];
        if (box.depth != 1 || i == from)
            continue;
        if (from < 0) {
            setCurrent(i);
            return;
        }
        const QPointF step = box.rect.center() - m_boxes[static_cast<std::size_t>(from)].rect.center();
        const double along = key == Qt::Key_Right  ? step.x()
                             : key == Qt::Key_Left ? -step.x()
                             : key == Qt::Key_Down ? step.y()
                                                   : -step.y();
        const bool horizontal = key == Qt::Key_Right || key == Qt::Key_Left;
        const double across = std::abs(horizontal ? step.y() : step.x());
        if (along < 1)
            continue;
        const double distance = along + 2 * across; // prefers candidates straight ahead
        if (best < 0 || distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    }
    if (best >= 0)
        setCurrent(best);
}

bool UsageGraph::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const int box = boxAt(help->pos());
        const QRect area = box < 0 ? QRect() : m_boxes[static_cast<std::size_t>(box)].rect.toRect();
        QToolTip::showText(help->globalPos(), describe(box), this, area);
        return true;
    }
    return QWidget::event(event);
}

void UsageGraph::resizeEvent(QResizeEvent *)
{
    layOut();
}

void UsageGraph::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        layOut();
    QWidget::changeEvent(event);
}

void UsageGraph::mouseMoveEvent(QMouseEvent *event)
{
    const int box = boxAt(event->position());
    if (box == m_hovered)
        return;
    m_hovered = box;
    update();
}

void UsageGraph::leaveEvent(QEvent *)
{
    m_hovered = -1;
    update();
}

void UsageGraph::mousePressEvent(QMouseEvent *event)
{
    setCurrent(boxAt(event->position()));
}

void UsageGraph::mouseDoubleClickEvent(QMouseEvent *event)
{
    setCurrent(boxAt(event->position()));
    if (event->button() == Qt::LeftButton)
        activate(m_current);
}

void UsageGraph::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        moveCurrent(event->key());
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        activate(m_current);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void UsageGraph::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() == QContextMenuEvent::Mouse)
        setCurrent(boxAt(event->pos()));
    if (!currentNames().isEmpty())
        emit menuRequested(event->globalPos());
}
