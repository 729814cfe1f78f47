// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FLColorWidget.h"

#include "widgets/Theme.h"

#include <QColorDialog>
#include <QPainter>

FLColorWidget::FLColorWidget(QWidget *parent) : QPushButton(parent)
{
    describe();
    connect(this, &QPushButton::clicked, this, &FLColorWidget::choose);
}

void FLColorWidget::setColor(const QColor &color)
{
    if (color.rgb() == m_color.rgb())
        return;
    m_color = QColor(color.rgb());
    describe();
    emit colorChanged(m_color);
}

void FLColorWidget::setPurpose(const QString &purpose)
{
    m_purpose = purpose;
    describe();
}

void FLColorWidget::describe()
{
    setText(m_color.name().toUpper());
    setAccessibleName(m_purpose.isEmpty() ? text() : tr("%1: %2").arg(m_purpose, text()));
    update();
}

void FLColorWidget::choose()
{
    auto *dialog = new QColorDialog(m_color, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(m_purpose);
    connect(dialog, &QColorDialog::colorSelected, this, &FLColorWidget::setColor);
    dialog->open();
}

void FLColorWidget::paintEvent(QPaintEvent *event)
{
    QPushButton::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int side = height() - 2 * theme::spaceSnug;
    QRectF swatch(theme::spaceSnug, theme::spaceSnug, side, side);
    if (layoutDirection() == Qt::RightToLeft)
        swatch.moveRight(width() - theme::spaceSnug);
    painter.setPen(theme::colors(this).controlBorder);
    painter.setBrush(isEnabled() ? m_color : theme::colors(this).track);
    painter.drawRoundedRect(swatch.adjusted(0.5, 0.5, -0.5, -0.5), theme::controlRadius,
                            theme::controlRadius);
}
