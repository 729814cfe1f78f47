// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>

// The small star of a card: filled when the module is starred, with a round highlight under the mouse and a
// focus ring for the keyboard.
class StarButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit StarButton(QWidget *parent = nullptr);

    // `lastStar`: no other module is starred. Removing that star is not remembered, and the tool tip says so.
    void setStarred(bool starred, const QString &moduleTitle, bool lastStar);

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_focusVisible = false; // the focus came by keyboard
};
