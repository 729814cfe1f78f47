// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QWidget>

// Shows the code as large as possible, or a sentence that explains why there is none.
class QRCodePreview : public QWidget
{
    Q_OBJECT

public:
    explicit QRCodePreview(QWidget *parent = nullptr);

    // `name` is the accessible description, `facts` a line below the code. An image of another size than
    // wantedPixels() is scaled.
    void showCode(const QImage &picture, bool transparent, const QString &name, const QString &facts);
    void showText(const QString &text);
    QString text() const { return m_text; } // empty while a code is shown
    QString facts() const { return m_facts; }
    // Side length in device pixels, so that modules are sharp on scaled screens.
    int wantedPixels() const;

    QSize sizeHint() const override { return {320, 320}; }
    QSize minimumSizeHint() const override { return {180, 180}; }

signals:
    // wantedPixels() has changed.
    void sizeChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void paintChecks(QPainter &painter, const QRect &square) const;
    QRect square() const;
    int factsHeight() const;

    QString m_text;
    QString m_facts;  // painted here: a label would trigger a layout of the whole page on every key press
    QImage m_picture; // null while a text is shown
    bool m_transparent = false;
};
