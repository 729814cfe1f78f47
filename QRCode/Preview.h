// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QWidget>

// The code as large as there is room, or a sentence that says why there is none.
class QRCodePreview : public QWidget
{
    Q_OBJECT

public:
    explicit QRCodePreview(QWidget *parent = nullptr);

    // `name` is what a screen reader says of it, `facts` a line below it. A picture of another size than
    // wantedPixels() is scaled.
    void showCode(const QImage &picture, bool transparent, const QString &name, const QString &facts);
    void showText(const QString &text);
    QString text() const { return m_text; } // empty while a code is shown
    QString facts() const { return m_facts; }
    // A side, in the screen's own pixels, so that the modules are sharp on scaled screens too.
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
    QString m_facts;  // painted here: a label of its own would lay out the whole page with every key
    QImage m_picture; // null: the text is shown
    bool m_transparent = false;
};
