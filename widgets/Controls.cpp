// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/Controls.h"

#include "widgets/Theme.h"

#include <QAction>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>

namespace controls
{

namespace
{

constexpr QSize imageSize(24, 24);

QString tipOf(const Button &button)
{
    QString tip = button.tip.isEmpty() ? button.text : button.tip;
    if (!button.key.isEmpty())
        tip += QStringLiteral(" (%1)").arg(button.key.toString(QKeySequence::NativeText));
    return tip;
}

void dress(QAbstractButton *widget, const Button &button)
{
    widget->setObjectName(QLatin1String(button.objectName));
    widget->setIcon(image(button.image));
    widget->setIconSize(imageSize);
    widget->setText(button.text);
    widget->setShortcut(button.key);
    if (!button.tip.isEmpty() || !button.key.isEmpty())
        widget->setToolTip(tipOf(button));
    widget->setMinimumHeight(theme::buttonHeight);
}

} // namespace

QIcon image(const char *name)
{
    return *name ? QIcon(QStringLiteral(":/resources/images/%1.png").arg(QLatin1String(name))) : QIcon();
}

QPushButton *pushButton(QWidget *parent, const Button &button, Rank rank)
{
    auto *widget = new QPushButton(parent);
    dress(widget, button);
    if (rank == Rank::Primary)
        theme::makePrimary(widget);
    return widget;
}

QToolButton *toolButton(QWidget *parent, const Button &button, bool showText)
{
    auto *widget = new QToolButton(parent);
    dress(widget, button);
    widget->setToolButtonStyle(showText ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
    widget->setAutoRaise(true);
    widget->setFocusPolicy(Qt::TabFocus);
    widget->setAccessibleName(button.text);
    widget->setToolTip(tipOf(button));
    return widget;
}

QScrollArea *scrollArea(QWidget *content, QWidget *parent)
{
    auto *area = new QScrollArea(parent);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(content);
    // setWidget() makes the content paint its background, but here the page's colour should show.
    area->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    return area;
}

QAction *shortcut(QWidget *owner, const QKeySequence &key, std::function<void()> pressed)
{
    return action(owner, {.key = key}, std::move(pressed));
}

QAction *action(QWidget *owner, const Button &button, std::function<void()> triggered)
{
    auto *action = new QAction(image(button.image), button.text, owner);
    action->setObjectName(QLatin1String(button.objectName));
    action->setShortcut(button.key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    if (!button.tip.isEmpty())
        action->setToolTip(button.tip);
    owner->addAction(action);
    QObject::connect(action, &QAction::triggered, owner, std::move(triggered));
    return action;
}

} // namespace controls
