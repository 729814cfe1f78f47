// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/generator/SizesPanel.h"

#include "ExtractIcon/engine/IconWriter.h"
#include "ExtractIcon/generator/IconPreview.h"
#include "ExtractIcon/generator/IconSaving.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QScrollArea>
#include <QVBoxLayout>

namespace icons
{

namespace
{

constexpr int previewPause = 60; // ms

} // namespace

SizesPanel::SizesPanel(QWidget *parent)
    : QWidget(parent),
      m_preview(new IconPreview),
      m_sharpen(new QCheckBox(tr("Sharpen small sizes"), this))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    auto *scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(m_preview);
    column->addWidget(scroll, 1);
    column->addLayout(buildBoxes());
    m_sharpen->setObjectName(QStringLiteral("sharpenBox"));
    m_sharpen->setChecked(true);
    connect(m_sharpen, &QCheckBox::toggled, &m_pause, qOverload<>(&QTimer::start));
    column->addWidget(m_sharpen);
    m_pause.setSingleShot(true);
    m_pause.setInterval(previewPause);
    connect(&m_pause, &QTimer::timeout, this, &SizesPanel::updatePreview);
}

QLayout *SizesPanel::buildBoxes()
{
    auto *grid = new QGridLayout;
    constexpr int columns = 5;
    for (const int side : usualSizes) {
        auto *box = new QCheckBox(QString::number(side), this);
        box->setObjectName(QStringLiteral("size%1").arg(side));
        box->setAccessibleName(tr("%1 pixels").arg(side));
        box->setChecked(true);
        connect(box, &QCheckBox::toggled, this, [this] {
            m_pause.start();
            emit sizesChanged();
        });
        const int place = static_cast<int>(m_boxes.size());
        grid->addWidget(box, place / columns, place % columns);
        m_boxes.append(box);
    }
    return grid;
}

QList<int> SizesPanel::sizes() const
{
    QList<int> chosen;
    for (qsizetype i = 0; i < m_boxes.size(); ++i) {
        if (m_boxes[i]->isChecked())
            chosen.append(usualSizes[static_cast<std::size_t>(i)]);
    }
    return chosen;
}

bool SizesPanel::sharpens() const
{
    return m_sharpen->isChecked();
}

void SizesPanel::setPicture(const QImage &picture, const QRect &square)
{
    m_picture = picture;
    m_square = square;
    m_pause.stop();
    if (!picture.isNull()) {
        updatePreview();
        return;
    }
    m_making.forget();
    m_preview->setImages({});
}

void SizesPanel::setSquare(const QRect &square)
{
    m_square = square;
    if (!m_pause.isActive())
        m_pause.start();
}

void SizesPanel::updatePreview()
{
    if (m_picture.isNull())
        return;
    m_making.ask(
        [picture = m_picture, square = m_square, chosen = sizes(),
         sharpen = sharpens()](const core::Asking &asking) {
            return makeImages(picture, square, chosen, sharpen, asking.cancel());
        },
        [this](const QList<QImage> &images) { m_preview->setImages(images); });
}

} // namespace icons
