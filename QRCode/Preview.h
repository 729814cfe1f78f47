// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "QRCode/engine/Drawing.h"

#include <QWidget>

#include <optional>

// The code as large as there is room, or a sentence that says why there is none.
class QRCodePreview : public QWidget
{
    Q_OBJECT

public:
    explicit QRCodePreview(QWidget *parent = nullptr);

    // `name` is what a screen reader says of it.
    void showCode(const qr::Drawing &drawing, const QString &name);
    void showText(const QString &text);
    QString text() const { return m_text; } // empty while a code is shown

    QSize sizeHint() const override { return {320, 320}; }
    QSize minimumSizeHint() const override { return {180, 180}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintChecks(QPainter &painter, const QRect &square) const;

    std::optional<qr::Drawing> m_drawing;
    QString m_text;
    QImage m_picture; // of m_drawing, for the size at hand
};
