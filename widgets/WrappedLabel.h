// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/TextLabel.h"

#include <QStringList>

// Plain text over several lines. Breaks between words where it can and inside a word where it must: QLabel
// would make the window as wide as the longest path in the text. A text of more than six lines loses its
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
    // The lines as they are drawn in this width.
    QStringList lines(int width) const;
};
