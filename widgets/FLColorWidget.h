// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPushButton>

// A button that shows a colour and lets the user choose another one in a modeless dialog.
class FLColorWidget : public QPushButton
{
    Q_OBJECT

public:
    explicit FLColorWidget(QWidget *parent = nullptr);

    QColor color() const { return m_color; } // opaque
    void setColor(const QColor &color);      // emits colorChanged() when it is another one
    // The title of the dialog, and what a screen reader says in front of the colour.
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
