// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/TextLabel.h"

void TextLabel::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text);
    setToolTip(shortenedTip());
    updateGeometry();
    update();
}

void TextLabel::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    setToolTip(shortenedTip());
}
