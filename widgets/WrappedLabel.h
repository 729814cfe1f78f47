// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/TextLabel.h"

#include <QStringList>

// Plain text over several lines. Breaks between words if possible and within a word if necessary: QLabel
// would make the window as wide as the longest path. A text of more than six lines is shortened in the
// middle.
class WrappedLabel : public TextLabel
{
    Q_OBJECT

public:
    explicit WrappedLabel(QWidget *parent = nullptr);

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    QString shortenedTip() const override;

private:
    // The lines as drawn at this width.
    QStringList lines(int width) const;
};
