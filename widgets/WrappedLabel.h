// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QWidget>

// Plain text over several lines. Breaks between words where it can and inside a word where it must: QLabel
// would make the window as wide as the longest path in the text. A text of more than six lines loses its
// middle; the whole of it is then the tool tip, and always the accessible name.
class WrappedLabel : public QWidget
{
    Q_OBJECT

public:
    explicit WrappedLabel(QWidget *parent = nullptr);

    void setText(const QString &text);
    QString text() const { return m_text; }

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    // The lines as they are drawn in this width.
    QStringList lines(int width) const;
    void updateToolTip();

    QString m_text;
};
