// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QWidget>

// A text that is fitted to the width at hand. The whole of it is the tool tip while it is shortened, and
// always the accessible name. Takes the colour of the palette's window text.
class TextLabel : public QWidget
{
    Q_OBJECT

public:
    void setText(const QString &text);
    QString text() const { return m_text; }

protected:
    using QWidget::QWidget;

    // For the width at hand; empty while nothing is shortened.
    virtual QString shortenedTip() const = 0;
    void resizeEvent(QResizeEvent *event) override;

private:
    QString m_text;
};
