// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ClickableLabel.h"

#include "widgets/Theme.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace
{

// Exposes the label as a button, since a screen reader could otherwise read the text but not press it.
class AccessibleLink : public QAccessibleWidget
{
public:
    explicit AccessibleLink(ClickableLabel *label) : QAccessibleWidget(label, QAccessible::Button) {}

    QString text(QAccessible::Text which) const override
    {
        const QString given = QAccessibleWidget::text(which);
        return which == QAccessible::Name && given.isEmpty() ? label()->text() : given;
    }
    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (widget()->isEnabled())
            names.prepend(pressAction());
        return names;
    }
    void doAction(const QString &name) override
    {
        if (name != pressAction())
            QAccessibleWidget::doAction(name);
        else if (widget()->isEnabled())
            emit label()->clicked();
    }

private:
    ClickableLabel *label() const { return static_cast<ClickableLabel *>(widget()); }
};

QAccessibleInterface *accessibleLink(const QString &, QObject *object)
{
    auto *label = qobject_cast<ClickableLabel *>(object);
    return label ? new AccessibleLink(label) : nullptr;
}

} // namespace

ClickableLabel::ClickableLabel(QWidget *parent) : ClickableLabel(QString(), parent) {}

ClickableLabel::ClickableLabel(const QString &text, QWidget *parent) : QLabel(text, parent)
{
    QAccessible::installFactory(accessibleLink); // installing it again has no effect
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setTextFormat(Qt::PlainText);
    colour();
}

void ClickableLabel::mousePressEvent(QMouseEvent *event)
{
    m_pressed = event->button() == Qt::LeftButton;
    event->accept();
}

void ClickableLabel::mouseReleaseEvent(QMouseEvent *event)
{
    const bool inside = rect().contains(event->position().toPoint());
    if (std::exchange(m_pressed, false) && event->button() == Qt::LeftButton && inside)
        emit clicked();
    event->accept();
}

void ClickableLabel::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        emit clicked();
        return;
    default:
        QLabel::keyPressEvent(event);
    }
}

void ClickableLabel::enterEvent(QEnterEvent *event)
{
    showAsLink(true);
    QLabel::enterEvent(event);
}

void ClickableLabel::leaveEvent(QEvent *event)
{
    showAsLink(false);
    QLabel::leaveEvent(event);
}

void ClickableLabel::paintEvent(QPaintEvent *event)
{
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    theme::paintFocusRing(painter, rect(), theme::colors(this), theme::controlRadius);
}

void ClickableLabel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        colour();
    QLabel::changeEvent(event);
}

void ClickableLabel::showAsLink(bool underlined)
{
    QFont linkFont = font();
    linkFont.setUnderline(underlined);
    setFont(linkFont);
}

void ClickableLabel::colour()
{
    QPalette link = palette();
    link.setColor(QPalette::WindowText, theme::colors(this).accent);
    setPalette(link);
}
