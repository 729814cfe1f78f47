// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// One line of text that is shortened to the width at hand, a path in its middle; the whole text is the tool
// tip while it is shortened, and always the accessible name. Takes the colour of the palette's window text.
class ElidedLabel : public QWidget
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr, Qt::TextElideMode mode = Qt::ElideRight);

    void setText(const QString &text);
    QString text() const { return m_text; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QString shown() const;
    void updateToolTip();

    QString m_text;
    Qt::TextElideMode m_mode;
};
