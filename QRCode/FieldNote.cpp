// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/FieldNote.h"

#include "widgets/Controls.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>

namespace qr
{

FieldNote::FieldNote(QWidget *parent)
    : QWidget(parent),
      m_icon(new QLabel(this)),
      m_text(new WrappedLabel(this))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(theme::spaceSnug);
    row->addWidget(m_icon, 0, Qt::AlignTop);
    row->addWidget(m_text, 1);
    hide();
}

void FieldNote::setNote(const QIcon &icon, const QString &text)
{
    constexpr QSize side(16, 16);
    m_icon->setPixmap(icon.pixmap(side, devicePixelRatio()));
    m_text->setText(text);
    setVisible(!text.isEmpty());
}

void FieldNote::setWarning(const QString &text)
{
    if (text != this->text())
        setNote(controls::image("Warning16"), text);
}

QString FieldNote::text() const
{
    return m_text->text();
}

} // namespace qr
