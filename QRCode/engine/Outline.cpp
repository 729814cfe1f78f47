// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/engine/Outline.h"

#include <QPolygon>

#include <array>
#include <vector>

namespace qr
{

namespace
{

constexpr int eyeSide = 7;
// Control point distance for a cubic curve that approximates a quarter circle.
constexpr double circleHandle = 0.5523;
// As wide as possible without touching their neighbours: thinner shapes scan worse.
constexpr double dotDiameter = 0.96;
constexpr double barThickness = 0.88;
constexpr double diamondReach = 0.62;

// The dark modules that are drawn as the body, with an empty border on every side.
class Body
{
public:
    Body(const core::QrMatrix &matrix, const QPainterPath &cleared)
        : m_size(matrix.size()),
          m_dark(static_cast<std::size_t>(m_size) * static_cast<std::size_t>(m_size))
    {
        const QRect area = cleared.boundingRect().toAlignedRect();
        for (int y = 0; y < m_size; ++y) {
            for (int x = 0; x < m_size; ++x) {
                if (!matrix.isDark(x, y) || inEye(x, y))
                    continue;
                m_dark[index(x, y)] = !area.contains(x, y) || !cleared.intersects(QRectF(x, y, 1, 1));
            }
        }
    }

    int size() const { return m_size; }
    bool operator()(int x, int y) const
    {
        return x >= 0 && y >= 0 && x < m_size && y < m_size && m_dark[index(x, y)];
    }

private:
    std::size_t index(int x, int y) const { return static_cast<std::size_t>(y * m_size + x); }
    bool inEye(int x, int y) const
    {
        const int far = m_size - eyeSide;
        return (x < eyeSide && (y < eyeSide || y >= far)) || (x >= far && y < eyeSide);
    }

    int m_size;
    std::vector<bool> m_dark;
};

// Traces the outlines with the dark area on the right, so that holes have the opposite direction.
class Walk
{
public:
    explicit Walk(const Body &body) : m_body(body), m_side(body.size() + 1)
    {
        const auto places = static_cast<std::size_t>(m_side) * static_cast<std::size_t>(m_side);
        m_walked.resize(places);
        m_group.resize(places);
    }

    // One list per group of edge-connected modules: its border and its holes.
    std::vector<std::vector<QPolygon>> all()
    {
        std::vector<std::vector<QPolygon>> groups;
        for (int y = 0; y < m_side; ++y) {
            for (int x = 0; x < m_side; ++x) {
                // Every outline has an edge that runs to the right with a dark module below it.
                if (!isEdge({x, y}, 0) || at(m_walked, {x, y})[0])
                    continue;
                if (at(m_group, {x, y}) == 0) {
                    groups.emplace_back();
                    mark({x, y}, groups.size());
                }
                groups[at(m_group, {x, y}) - 1].push_back(around({x, y}));
            }
        }
        return groups;
    }

private:
    using Directions = std::array<bool, 4>; // right, down, left, up
    static constexpr std::array<QPoint, 4> steps{QPoint(1, 0), QPoint(0, 1), QPoint(-1, 0), QPoint(0, -1)};

    template <class T>
    T &at(std::vector<T> &grid, QPoint place) const
    {
        return grid[static_cast<std::size_t>(place.y() * m_side + place.x())];
    }

    // Labels all modules of a group.
    void mark(QPoint first, std::size_t group)
    {
        std::vector<QPoint> open{first};
        while (!open.empty()) {
            const QPoint place = open.back();
            open.pop_back();
            if (!m_body(place.x(), place.y()) || at(m_group, place) != 0)
                continue;
            at(m_group, place) = group;
            for (const QPoint step : steps)
                open.push_back(place + step);
        }
    }

    bool isEdge(QPoint at, std::size_t direction) const
    {
        const int x = at.x();
        const int y = at.y();
        switch (direction) {
        case 0:
            return m_body(x, y) && !m_body(x, y - 1);
        case 1:
            return m_body(x - 1, y) && !m_body(x, y);
        case 2:
            return m_body(x - 1, y - 1) && !m_body(x - 1, y);
        default:
            return m_body(x, y - 1) && !m_body(x - 1, y - 1);
        }
    }

    // The corner points in order.
    QPolygon around(QPoint start)
    {
        QPolygon corners;
        QPoint place = start;
        std::size_t direction = 0;
        do {
            at(m_walked, place)[direction] = true;
            place += steps[direction];
            // Right turn first: modules that touch only at a corner stay separate.
            const std::size_t straight = direction;
            for (const std::size_t turn : {std::size_t(1), std::size_t(0), std::size_t(3)}) {
                direction = (straight + turn) % 4;
                if (isEdge(place, direction))
                    break;
            }
            if (direction != straight)
                corners.append(place);
        } while (place != start || !at(m_walked, place)[direction]);
        return corners;
    }

    const Body &m_body;
    int m_side;
    std::vector<Directions> m_walked;
    std::vector<std::size_t>
        m_group; // group of the module to the lower right of the grid point, from 1; 0 for none
};

// Adds a polygon with rounded corners; `radius` is called for each corner.
template <class Radius>
void addRounded(QPainterPath &path, const QPolygonF &corners, Radius radius)
{
    for (qsizetype i = 0; i < corners.size(); ++i) {
        const QPointF corner = corners[i];
        const QPointF before = corners[(i + corners.size() - 1) % corners.size()] - corner;
        const QPointF after = corners[(i + 1) % corners.size()] - corner;
        const double reach = radius(i);
        // All edges are horizontal or vertical.
        const auto along = [&](QPointF edge, double distance) {
            return corner + edge * (distance / edge.manhattanLength());
        };
        if (i == 0)
            path.moveTo(along(before, reach));
        else
            path.lineTo(along(before, reach));
        if (reach > 0) {
            path.cubicTo(along(before, reach * (1 - circleHandle)), along(after, reach * (1 - circleHandle)),
                         along(after, reach));
        }
    }
    path.closeSubpath();
}

using Pieces = std::vector<QPainterPath>;

Pieces grown(const Body &body, double radius)
{
    Pieces pieces;
    for (const std::vector<QPolygon> &group : Walk(body).all()) {
        QPainterPath &path = pieces.emplace_back();
        for (const QPolygon &corners : group)
            addRounded(path, QPolygonF(corners), [radius](qsizetype) { return radius; });
    }
    return pieces;
}

// One shape per module, one piece per row.
template <class Shape>
Pieces eachModule(const Body &body, Shape addShape)
{
    Pieces pieces;
    for (int y = 0; y < body.size(); ++y) {
        QPainterPath &path = pieces.emplace_back();
        for (int x = 0; x < body.size(); ++x) {
            if (body(x, y))
                addShape(path, QPointF(x + 0.5, y + 0.5));
        }
    }
    return pieces;
}

// One bar per run of dark modules in a row or column.
Pieces bars(const Body &body, bool horizontal)
{
    const auto dark = [&](int line, int at) { return horizontal ? body(at, line) : body(line, at); };
    constexpr double inset = (1 - barThickness) / 2;
    Pieces pieces;
    for (int line = 0; line < body.size(); ++line) {
        QPainterPath &path = pieces.emplace_back();
        for (int at = 0; at < body.size(); ++at) {
            if (!dark(line, at))
                continue;
            const int first = at;
            while (dark(line, at + 1))
                ++at;
            const QRectF along(first + inset, line + inset, at - first + barThickness, barThickness);
            const QRectF bar =
                horizontal ? along : QRectF(along.y(), along.x(), along.height(), along.width());
            path.addRoundedRect(bar, barThickness / 2, barThickness / 2);
        }
    }
    return pieces;
}

Pieces bodyPieces(const Body &body, BodyShape shape)
{
    switch (shape) {
    case BodyShape::Squares:
        return grown(body, 0);
    case BodyShape::Rounded:
        return grown(body, 0.5);
    case BodyShape::Dots:
        return eachModule(body, [](QPainterPath &path, QPointF centre) {
            path.addEllipse(centre, dotDiameter / 2, dotDiameter / 2);
        });
    case BodyShape::Diamonds:
        return eachModule(body, [](QPainterPath &path, QPointF centre) {
            path.addPolygon(QPolygonF{centre - QPointF(0, diamondReach), centre + QPointF(diamondReach, 0),
                                      centre + QPointF(0, diamondReach), centre - QPointF(diamondReach, 0)});
            path.closeSubpath();
        });
    case BodyShape::HorizontalBars:
        return bars(body, true);
    case BodyShape::VerticalBars:
        return bars(body, false);
    }
    return {};
}

// Rounded at two opposite corners; `mirrored` selects the other two.
QPainterPath leaf(const QRectF &area, bool mirrored)
{
    QPainterPath path;
    addRounded(path, QPolygonF{area.topLeft(), area.topRight(), area.bottomRight(), area.bottomLeft()},
               [&](qsizetype corner) { return (corner % 2 == 0) == mirrored ? area.width() * 0.45 : 0.0; });
    return path;
}

QPainterPath eyePart(const QRectF &area, EyeShape shape, bool mirrored)
{
    QPainterPath path;
    switch (shape) {
    case EyeShape::Square:
        path.addRect(area);
        break;
    case EyeShape::Rounded:
        path.addRoundedRect(area, area.width() * 0.3, area.width() * 0.3);
        break;
    case EyeShape::Circle:
        path.addEllipse(area);
        break;
    case EyeShape::Leaf:
        return leaf(area, mirrored);
    }
    return path;
}

QPainterPath eye(QPointF corner, const Style &style, bool mirrored)
{
    const QRectF frame(corner, QSizeF(eyeSide, eyeSide));
    QPainterPath path = eyePart(frame, style.eyeFrame, mirrored);
    path.addPath(eyePart(frame.adjusted(1, 1, -1, -1), style.eyeFrame, mirrored).toReversed());
    path.addPath(eyePart(frame.adjusted(2, 2, -2, -2), style.eyeCentre, mirrored));
    return path;
}

} // namespace

std::vector<QPainterPath> outline(const core::QrMatrix &matrix, const Style &style,
                                  const QPainterPath &cleared)
{
    const double far = matrix.size() - eyeSide;
    Pieces pieces = bodyPieces(Body(matrix, cleared), style.body);
    pieces.push_back(eye({0, 0}, style, false));
    pieces.push_back(eye({far, 0}, style, true));
    pieces.push_back(eye({0, far}, style, true));
    for (QPainterPath &piece : pieces)
        piece.setFillRule(Qt::WindingFill);
    return pieces;
}

} // namespace qr
