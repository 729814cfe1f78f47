// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QWidget>

// A text that is fitted to the available width. The complete text is the tool tip while it is shortened, and
// always the accessible name. Uses the palette's window text colour.
class TextLabel : public QWidget
{
    Q_OBJECT

public:
    void setText(const QString &text);
    QString text() const { return m_text; }

protected:
    using QWidget::QWidget;

    // For the current width; empty while nothing is shortened.
    virtual QString shortenedTip() const = 0;
    void resizeEvent(QResizeEvent *event) override;

private:
    QString m_text;
};
