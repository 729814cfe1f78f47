// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/FindSources.h"
#include "ConvertImage/engine/Watermarking.h"
#include "ConvertImage/options/SettingsPanel.h"
#include "platform/Dialogs.h"
#include "widgets/Controls.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QColorDialog>
#include <QFontComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>

using conversion::Settings;
namespace stored = conversion::stored;

namespace
{

QIcon colorIcon(const QColor &color)
{
    QPixmap picture(16, 16);
    picture.fill(color);
    QPainter painter(&picture);
    painter.setPen(Qt::gray);
    painter.drawRect(0, 0, 15, 15);
    return picture;
}

} // namespace

QWidget *SettingsPanel::makeMarksPage()
{
    auto *page = new QWidget(this);
    auto *form = new QFormLayout(page);
    form->setContentsMargins(theme::space, theme::space, theme::space, theme::space);
    form->setVerticalSpacing(theme::spaceSnug);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto *hint = new WrappedLabel(this);
    hint->setText(tr("Drag a mark in the preview to place it."));
    theme::makeMuted(hint);
    form->addRow(hint);
    addTextMark(form);
    addImageMark(form);
    addQrMark(form);
    return page;
}

void SettingsPanel::addTextMark(QFormLayout *form)
{
    addSection(form, tr("Text"));
    auto *text = new QPlainTextEdit(this);
    tie(text, stored::textContent);
    text->setAccessibleName(tr("Text of the watermark"));
    text->setTabChangesFocus(true);
    text->setFixedHeight(3 * fontMetrics().height() + theme::space);
    form->addRow(text);
    auto *family = new QFontComboBox(this);
    family->setObjectName(QStringLiteral("textFontComboBox"));
    family->setAccessibleName(spokenName(tr("Font")));
    family->lineEdit()->setAccessibleName(family->accessibleName());
    const auto chosen = m_binding->add(
        stored::textFont, [family] { return family->currentFont().family(); },
        [this, family](const QString &name) {
            family->setCurrentFont(name.isEmpty() ? font() : QFont(name));
        });
    connect(family, &QFontComboBox::currentFontChanged, this, chosen);
    form->addRow(tr("Font"), family);
    addNumber(form, tr("Size"), stored::textSize, tr(" pt"));
    m_color = controls::pushButton(this, {.objectName = "textColorButton", .text = tr("Choose ...")});
    m_color->setAccessibleName(spokenName(tr("Colour")));
    connect(m_color, &QPushButton::clicked, this, &SettingsPanel::chooseColor);
    m_binding->add(
        stored::textColor, [this] { return m_textColor.name(); },
        [this](const QString &name) {
            m_textColor = QColor(name);
            if (!m_textColor.isValid())
                m_textColor = QColor(stored::textColor.fallback);
            m_color->setIcon(colorIcon(m_textColor));
        });
    form->addRow(tr("Colour"), m_color);
    addPosition(form, stored::textPosition);
    addNumber(form, tr("Opacity"), stored::textOpacity, QStringLiteral(" %"));
    addNumber(form, tr("Margin"), stored::textMargin, tr(" px"));
}

void SettingsPanel::chooseColor()
{
    const QColor color = QColorDialog::getColor(m_textColor, this, tr("Colour of the text"));
    if (color.isValid())
        m_binding->show({{stored::textColor.name.toString(), color.name()}});
}

void SettingsPanel::addImageMark(QFormLayout *form)
{
    addSection(form, tr("Picture"));
    addPath(form, tr("File"), stored::imagePath, [this] {
        const QStringList files = platform::dialogs().chooseFilesToOpen(
            this, tr("Picture of the watermark"), stored::imagePath.read(),
            tr("Pictures (%1)").arg(pictureFilter()));
        return files.value(0);
    });
    addNumber(form, tr("Size"), stored::imageSize, QStringLiteral(" %"));
    addPosition(form, stored::imagePosition);
    addNumber(form, tr("Opacity"), stored::imageOpacity, QStringLiteral(" %"));
    addNumber(form, tr("Margin"), stored::imageMargin, tr(" px"));
}

void SettingsPanel::addQrMark(QFormLayout *form)
{
    addSection(form, tr("QR code"));
    auto *text = new QPlainTextEdit(this);
    tie(text, stored::qrCodeText);
    text->setAccessibleName(tr("Content of the QR code"));
    text->setTabChangesFocus(true);
    text->setFixedHeight(2 * fontMetrics().height() + theme::space);
    form->addRow(text);
    m_qrHint = new WrappedLabel(this);
    m_qrHint->setObjectName(QStringLiteral("qrHintLabel"));
    form->addRow(m_qrHint);
    addNumber(form, tr("Size"), stored::qrCodeSize, tr(" px"));
    addPosition(form, stored::qrCodePosition);
    addNumber(form, tr("Margin"), stored::qrCodeMargin, tr(" px"));
    m_rules.push_back([this, form](const Settings &settings) {
        constexpr int readablePixels = 2; // modules of one pixel do not survive lossy compression
        const conversion::QrMark &mark = settings.rendering.marks.qr;
        const int pixels = conversion::qrModulePixels(mark.text, mark.size);
        m_qrHint->setText(pixels == 0 ? tr("The text is too long for a QR code.")
                                      : tr("At this size the code may not be readable."));
        form->setRowVisible(m_qrHint, !mark.text.isEmpty() && pixels < readablePixels);
    });
}
