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
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>

using conversion::Settings;

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
    addPictureMark(form);
    addQrMark(form);
    return page;
}

void SettingsPanel::addTextMark(QFormLayout *form)
{
    addSection(form, tr("Text"));
    auto *text = new QPlainTextEdit(this);
    m_binder->bind(text, u"textContent");
    text->setAccessibleName(tr("Text of the watermark"));
    text->setTabChangesFocus(true);
    text->setFixedHeight(3 * fontMetrics().height() + theme::space);
    form->addRow(text);
    auto *family = new QFontComboBox(this);
    family->setObjectName(QStringLiteral("textFontComboBox"));
    family->setAccessibleName(spokenName(tr("Font")));
    connect(family, &QFontComboBox::currentFontChanged, this,
            [this](const QFont &chosen) { m_binder->set(u"textFont", chosen.family()); });
    form->addRow(tr("Font"), family);
    m_rules.push_back([this, family](const Settings &settings) {
        const QSignalBlocker blocker(family);
        const QString &name = settings.rendering.marks.text.font;
        family->setCurrentFont(name.isEmpty() ? font() : QFont(name));
    });
    addNumber(form, tr("Size"), u"textSize", tr(" pt"));
    m_color = controls::pushButton(this, {.objectName = "textColorButton", .text = tr("Choose ...")});
    m_color->setAccessibleName(spokenName(tr("Colour")));
    connect(m_color, &QPushButton::clicked, this, &SettingsPanel::chooseColor);
    m_rules.push_back([this](const Settings &settings) {
        m_color->setIcon(colorIcon(settings.rendering.marks.text.color));
    });
    form->addRow(tr("Colour"), m_color);
    addPosition(form, u"textPosition");
    addNumber(form, tr("Opacity"), u"textOpacity", QStringLiteral(" %"));
    addNumber(form, tr("Margin"), u"textMargin", tr(" px"));
}

void SettingsPanel::chooseColor()
{
    const QColor color = QColorDialog::getColor(m_binder->settings().rendering.marks.text.color, this,
                                                tr("Colour of the text"));
    if (color.isValid())
        m_binder->set(u"textColor", color.name());
}

void SettingsPanel::addPictureMark(QFormLayout *form)
{
    addSection(form, tr("Picture"));
    addPath(form, tr("File"), u"imagePath", [this] {
        const QStringList files = platform::dialogs().chooseFilesToOpen(
            this, tr("Picture of the watermark"), m_binder->settings().rendering.marks.picture.path,
            tr("Pictures (%1)").arg(pictureFilter()));
        return files.value(0);
    });
    addNumber(form, tr("Size"), u"imageSize", QStringLiteral(" %"));
    addPosition(form, u"imagePosition");
    addNumber(form, tr("Opacity"), u"imageOpacity", QStringLiteral(" %"));
    addNumber(form, tr("Margin"), u"imageMargin", tr(" px"));
}

void SettingsPanel::addQrMark(QFormLayout *form)
{
    addSection(form, tr("QR code"));
    auto *text = new QPlainTextEdit(this);
    m_binder->bind(text, u"qrCodeText");
    text->setAccessibleName(tr("Content of the QR code"));
    text->setTabChangesFocus(true);
    text->setFixedHeight(2 * fontMetrics().height() + theme::space);
    form->addRow(text);
    m_qrHint = new WrappedLabel(this);
    m_qrHint->setObjectName(QStringLiteral("qrHintLabel"));
    form->addRow(m_qrHint);
    addNumber(form, tr("Size"), u"qrCodeSize", tr(" px"));
    addPosition(form, u"qrCodePosition");
    addNumber(form, tr("Margin"), u"qrCodeMargin", tr(" px"));
    m_rules.push_back([this, form](const Settings &settings) {
        constexpr int readablePixels = 2; // a module of one pixel does not survive a lossy format
        const conversion::QrMark &mark = settings.rendering.marks.qr;
        const int pixels = conversion::qrModulePixels(mark.text, mark.size);
        m_qrHint->setText(pixels == 0 ? tr("The text is too long for a QR code.")
                                      : tr("At this size the code may not be readable."));
        form->setRowVisible(m_qrHint, !mark.text.isEmpty() && pixels < readablePixels);
    });
}
