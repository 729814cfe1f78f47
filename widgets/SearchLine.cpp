// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/SearchLine.h"

#include "widgets/Controls.h"

#include <QKeyEvent>

namespace
{

constexpr int pauseTime = 150; // ms
constexpr int maxWidth = 240;

} // namespace

SearchLine::SearchLine(QWidget *parent) : QLineEdit(parent)
{
    setObjectName(QStringLiteral("searchLineEdit"));
    setPlaceholderText(tr("Search"));
    setAccessibleName(tr("Search"));
    setToolTip(tr("Search (%1)").arg(QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText)));
    setClearButtonEnabled(true);
    setMaximumWidth(maxWidth);
    addAction(controls::image("Search16"), QLineEdit::LeadingPosition);
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseTime);
    connect(this, &QLineEdit::textChanged, &m_pause, qOverload<>(&QTimer::start));
    connect(&m_pause, &QTimer::timeout, this, [this] { emit searched(text()); });
}

void SearchLine::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !text().isEmpty())
        clear();
    else
        QLineEdit::keyPressEvent(event);
}
