// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/Theme.h"

#include "platform/ContrastTheme.h"
#include "widgets/FlatStyle.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QStyleHints>
#include <QWidget>

#include <algorithm>
#include <array>
#include <cmath>

namespace theme
{

namespace
{

constexpr double textContrast = 4.5; // WCAG 2.1 AA for text
constexpr double lineContrast = 3.0; // WCAG 2.1 AA for lines and areas that carry meaning
constexpr char primaryProperty[] = "larkspurPrimary";

bool highContrast = false;

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QFont scaled(const QFont &base, double factor, QFont::Weight weight)
{
    QFont font(base);
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else
        font.setPixelSize(qRound(font.pixelSize() * factor));
    font.setWeight(weight);
    return font;
}

// Recomputes the colour roles of one widget whenever the application's palette changes. Starts from the
// application's palette each time, since the widget's own palette is what this class sets.
class PaletteKeeper : public QObject
{
public:
    using Rule = void (*)(QPalette &palette);

    PaletteKeeper(QWidget *widget, Rule rule) : QObject(widget), m_widget(widget), m_rule(rule)
    {
        widget->installEventFilter(this);
        apply();
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // When the system colours change, the first event may still have the old ones, and hidden pages get
        // none; the parent's palette changes last.
        if (event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::PaletteChange ||
            event->type() == QEvent::Show)
            apply();
        return QObject::eventFilter(watched, event);
    }

private:
    void apply()
    {
        QPalette palette = QApplication::palette(m_widget);
        m_rule(palette);
        if (palette == m_applied) // also stops the recursion caused by setPalette()
            return;
        m_applied = palette;
        m_widget->setPalette(palette);
    }

    QWidget *m_widget;
    Rule m_rule;
    QPalette m_applied;
};

constexpr int minSaturation = 40; // of an accent colour; anything less is a grey

// The system's accent colour; the suite's own blue if there is none (its selection colour is a grey).
QColor accentOf(const QColor &highlight)
{
    return highlight.hsvSaturation() >= minSaturation ? highlight : QColor(0x2f, 0x7d, 0xd7);
}

void primaryRule(QPalette &palette)
{
    const Colors c = colors(palette);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Button, c.accent);
        palette.setColor(group, QPalette::ButtonText, c.accentText);
    }
}

void mutedRule(QPalette &palette)
{
    const Colors c = colors(palette);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::WindowText, c.textMuted);
        palette.setColor(group, QPalette::Text, c.textMuted);
    }
}

} // namespace

QColor mix(const QColor &from, const QColor &to, double amount)
{
    const auto channel = [amount](float a, float b) {
        return static_cast<float>(std::clamp(a + (b - a) * amount, 0.0, 1.0));
    };
    return QColor::fromRgbF(channel(from.redF(), to.redF()), channel(from.greenF(), to.greenF()),
                            channel(from.blueF(), to.blueF()));
}

double contrast(const QColor &first, const QColor &second)
{
    const double a = luminance(first);
    const double b = luminance(second);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor readable(const QColor &wanted, const QColor &background, double ratio)
{
    const QColor goal = luminance(background) < 0.18 ? QColor(Qt::white) : QColor(Qt::black);
    for (double amount = 0; amount < 1; amount += 0.05) {
        const QColor color = mix(wanted, goal, amount);
        if (contrast(color, background) >= ratio)
            return color;
    }
    return goal;
}

bool isDark(const QPalette &palette)
{
    return luminance(palette.color(QPalette::Active, QPalette::Window)) <
           luminance(palette.color(QPalette::Active, QPalette::WindowText));
}

bool isHighContrast()
{
    return highContrast;
}

void setHighContrast(bool on)
{
    highContrast = on;
}

namespace
{

// Only the user's own colours, and no line that is fainter than text.
Colors contrastColors(const QPalette &palette)
{
    const auto role = [&palette](QPalette::ColorRole r) { return palette.color(QPalette::Active, r); };
    Colors c;
    c.window = c.card = c.cardHover = c.cardPressed = c.field = c.accentText = role(QPalette::Window);
    c.text = c.textMuted = c.border = c.controlBorder = c.indicatorBorder = role(QPalette::WindowText);
    c.good = c.warning = c.danger = c.text;
    c.accent = c.borderHover = readable(role(QPalette::Highlight), c.card, textContrast);
    c.accentSoft = mix(c.card, c.accent, 0.2);
    c.track = mix(c.card, c.text, 0.3);
    return c;
}

} // namespace

Colors colors(const QPalette &palette)
{
    if (highContrast)
        return contrastColors(palette);
    const bool dark = isDark(palette);
    const auto role = [&palette](QPalette::ColorRole r) { return palette.color(QPalette::Active, r); };
    Colors c;
    c.window = role(QPalette::Window);
    c.text = role(QPalette::WindowText);
    c.card = dark ? mix(c.window, Qt::white, 0.06) : mix(c.window, Qt::white, 0.85);
    c.cardHover = dark ? mix(c.card, Qt::white, 0.05) : mix(c.card, c.text, 0.035);
    c.cardPressed = dark ? mix(c.card, Qt::black, 0.12) : mix(c.card, c.text, 0.08);
    c.border = mix(c.card, c.text, dark ? 0.14 : 0.13);
    c.borderHover = mix(c.card, c.text, dark ? 0.28 : 0.25);
    c.field = dark ? mix(c.window, Qt::black, 0.15) : QColor(Qt::white);
    c.controlBorder = mix(c.card, c.text, dark ? 0.22 : 0.24);
    c.indicatorBorder = readable(mix(c.card, c.text, 0.4), c.card, lineContrast);
    c.textMuted = readable(mix(c.text, c.card, 0.35), c.card, textContrast);
    c.accent = readable(accentOf(role(QPalette::Highlight)), c.card, textContrast);
    c.accentText = contrast(Qt::white, c.accent) >= textContrast ? QColor(Qt::white) : QColor(Qt::black);
    c.accentSoft = mix(c.card, c.accent, dark ? 0.22 : 0.14);
    c.track = mix(c.card, c.text, dark ? 0.16 : 0.10);
    c.good = readable(QColor(0x10, 0x8a, 0x4b), c.card, lineContrast);
    c.warning = readable(QColor(0xd0, 0x82, 0x00), c.card, lineContrast);
    c.danger = readable(QColor(0xd1, 0x34, 0x38), c.card, lineContrast);
    return c;
}

Colors colors(const QWidget *widget)
{
    return colors(widget ? QApplication::palette(widget) : QApplication::palette());
}

QColor chartColor(int index, const QPalette &palette)
{
    // Twelve well separated hues for neighbours in the list; saturation and value keep them calm.
    static constexpr std::array<int, chartColorCount> hues{212, 28,  158, 268, 348, 48,
                                                           190, 312, 96,  236, 8,   136};
    const int hue = hues[static_cast<std::size_t>(index) % hues.size()];
    return isDark(palette) ? QColor::fromHsv(hue, 120, 140) : QColor::fromHsv(hue, 92, 232);
}

QColor chartRestColor(const QPalette &palette)
{
    const Colors c = colors(palette);
    return mix(c.card, c.text, 0.18);
}

QFont headline(const QFont &base)
{
    return scaled(base, 1.75, QFont::DemiBold);
}

QFont sectionTitle(const QFont &base)
{
    return scaled(base, 1.15, QFont::DemiBold);
}

QFont caption(const QFont &base)
{
    return scaled(base, 0.92, QFont::Normal);
}

void paintFocusRing(QPainter &painter, const QRectF &rect, const Colors &colors, int radius)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors.accent, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(1, 1, -1, -1), radius, radius);
    painter.restore();
}

void paintCard(QPainter &painter, const QRectF &rect, const Colors &colors, CardState state, bool focus)
{
    const QColor fill = state == CardState::Hover     ? colors.cardHover
                        : state == CardState::Pressed ? colors.cardPressed
                        : state == CardState::Checked ? colors.accentSoft
                                                      : colors.card;
    const QColor line = state == CardState::Checked ? colors.accent
                        : state == CardState::Rest  ? colors.border
                                                    : colors.borderHover;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(line, 1));
    painter.setBrush(fill);
    // Half a pixel inwards, so that the line covers whole pixels.
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), cardRadius, cardRadius);
    painter.restore();
    if (focus)
        paintFocusRing(painter, rect, colors);
}

void paintBar(QPainter &painter, const QRectF &rect, double share, const QColor &fill, const QColor &track,
              Qt::LayoutDirection direction)
{
    const double radius = rect.height() / 2;
    const double width = rect.width() * std::clamp(share, 0.0, 1.0);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(track);
    painter.drawRoundedRect(rect, radius, radius);
    if (width > 0) {
        QPainterPath outline;
        outline.addRoundedRect(rect, radius, radius);
        painter.setClipPath(outline, Qt::IntersectClip);
        painter.setBrush(fill);
        const double left = direction == Qt::RightToLeft ? rect.right() - width : rect.left();
        painter.drawRoundedRect(QRectF(left, rect.top(), width, rect.height()), radius, radius);
    }
    painter.restore();
}

QPalette visibleSelection(const QPalette &system)
{
    const QColor highlight = system.color(QPalette::Active, QPalette::Highlight);
    QPalette own;
    if (highlight.hsvSaturation() >= minSaturation ||
        contrast(highlight, system.color(QPalette::Active, QPalette::Base)) >= lineContrast)
        return own;
    own.setColor(QPalette::Highlight, readable(accentOf(highlight), Qt::white, textContrast));
    own.setColor(QPalette::HighlightedText, Qt::white);
    return own;
}

void install()
{
    QApplication::setStyle(new FlatStyle);
    const auto keep = [] {
        highContrast = platform::contrastTheme();
        QApplication::setPalette({}); // the current system palette
        QApplication::setPalette(visibleSelection(QApplication::palette()));
    };
    keep();
    QObject::connect(QGuiApplication::styleHints(), &QStyleHints::colorSchemeChanged, qApp, keep);
}

void makePrimary(QPushButton *button)
{
    button->setProperty(primaryProperty, true);
    new PaletteKeeper(button, primaryRule);
}

bool isPrimary(const QWidget *widget)
{
    return widget && widget->property(primaryProperty).toBool();
}

void makeMuted(QWidget *widget)
{
    new PaletteKeeper(widget, mutedRule);
}

} // namespace theme
