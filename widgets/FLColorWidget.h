// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPushButton>

// A button that shows a colour and opens a modeless dialog to change it.
class FLColorWidget : public QPushButton
{
    Q_OBJECT

public:
    explicit FLColorWidget(QWidget *parent = nullptr);

    QColor color() const { return m_color; } // opaque
    void setColor(const QColor &color);      // emits colorChanged() if it differs
    // The title of the dialog, and the accessible name before the colour.
    void setPurpose(const QString &purpose);

signals:
    void colorChanged(const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void choose();
    void describe();

    QColor m_color = Qt::black;
    QString m_purpose;
};
