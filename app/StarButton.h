// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>

// The small star of a card: filled if the module is starred, with a round hover highlight and a focus ring.
class StarButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit StarButton(QWidget *parent = nullptr);

    // `lastStar`: no other module is starred. Removing the last star is not stored, which the tool tip
    // explains.
    void setStarred(bool starred, const QString &moduleTitle, bool lastStar);

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_focusVisible = false; // the focus was set by keyboard
};
