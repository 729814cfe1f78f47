// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/options/SettingsPanel.h"

#include "ConvertImage/engine/PdfWriter.h"
#include "ConvertImage/engine/Resizing.h"
#include "ConvertImage/engine/Targets.h"
#include "platform/Dialogs.h"
#include "widgets/Controls.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>

using conversion::Settings;
namespace stored = conversion::stored;
using conversion::Target;

namespace
{

QFormLayout *makeForm(QWidget *page)
{
    auto *form = new QFormLayout(page);
    form->setContentsMargins(theme::space, theme::space, theme::space, theme::space);
    form->setHorizontalSpacing(theme::space);
    form->setVerticalSpacing(theme::spaceSnug);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    return form;
}

const conversion::TargetFacts &facts(const Settings &settings)
{
    return conversion::factsOf(settings.encoding.target);
}

} // namespace

SettingsPanel::SettingsPanel(SettingsBinding *binding, QWidget *parent)
    : FLTabWidget(parent),
      m_binding(binding)
{
    setObjectName(QStringLiteral("settingsTabWidget"));
    tabBar()->setAccessibleName(tr("Settings"));
    addTab(controls::scrollArea(makeOutputPage()), tr("Output"));
    addTab(controls::scrollArea(makeResizePage()), tr("Resize"));
    addTab(controls::scrollArea(makeAdjustPage()), tr("Adjust"));
    addTab(controls::scrollArea(makeMarksPage()), tr("Watermark"));
    connect(binding, &SettingsBinding::changed, this, &SettingsPanel::showWhatApplies);
    showWhatApplies();
}

void SettingsPanel::showWhatApplies()
{
    const Settings settings = conversion::settingsFrom(m_binding->values());
    for (const auto &rule : m_rules)
        rule(settings);
    showResult();
}

QSpinBox *SettingsPanel::makeNumber(const settings::Number &number)
{
    auto *box = new QSpinBox(this);
    box->setObjectName(number.name.toString() + QStringLiteral("SpinBox"));
    box->setKeyboardTracking(false);
    m_binding->add(box, number);
    return box;
}

void SettingsPanel::tie(QComboBox *box, const settings::Number &number)
{
    box->setObjectName(number.name.toString() + QStringLiteral("ComboBox"));
    m_binding->add(box, number);
}

void SettingsPanel::tie(QPlainTextEdit *edit, const settings::Text &text)
{
    edit->setObjectName(text.name.toString() + QStringLiteral("TextEdit"));
    m_binding->add(edit, text);
}

QSpinBox *SettingsPanel::addNumber(QFormLayout *form, const QString &label, const settings::Number &number,
                                   const QString &suffix)
{
    QSpinBox *box = makeNumber(number);
    box->setSuffix(suffix);
    box->setAccessibleName(spokenName(label));
    form->addRow(label, box);
    return box;
}

// A slider, a number field and a reset button.
void SettingsPanel::addSliderRow(QFormLayout *form, const QString &label, const settings::Number &number)
{
    auto *slider = new QSlider(Qt::Horizontal, this);
    slider->setObjectName(number.name.toString() + QStringLiteral("Slider"));
    m_binding->add(slider, number);
    QSpinBox *box = makeNumber(number);
    slider->setAccessibleName(label);
    box->setAccessibleName(label);
    auto *reset = controls::toolButton(this, {.image = "Refresh24", .text = tr("Reset %1").arg(label)});
    reset->setObjectName(number.name.toString() + QStringLiteral("ResetButton"));
    connect(reset, &QToolButton::clicked, box, [box, &number] { box->setValue(number.fallback); });
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceTight);
    row->addWidget(slider, 1);
    row->addWidget(box);
    row->addWidget(reset);
    auto *caption = new QLabel(label, this);
    caption->setBuddy(box);
    form->addRow(caption);
    form->addRow(row);
}

// Adds the section, since several sections have equal labels.
QString SettingsPanel::spokenName(const QString &label) const
{
    return m_section.isEmpty() ? label : m_section + QStringLiteral(": ") + label;
}

QCheckBox *SettingsPanel::addFlag(QFormLayout *form, const QString &text, const settings::Flag &flag)
{
    auto *box = new QCheckBox(text, this);
    box->setObjectName(flag.name.toString() + QStringLiteral("CheckBox"));
    m_binding->add(box, flag);
    form->addRow(box);
    return box;
}

void SettingsPanel::addPosition(QFormLayout *form, const settings::Number &number)
{
    auto *box = new QComboBox(this);
    for (int i = 0; i < conversion::positionCount; ++i)
        box->addItem(tr(conversion::positionName(static_cast<conversion::Position>(i))));
    tie(box, number);
    box->setAccessibleName(spokenName(tr("Position")));
    form->addRow(tr("Position"), box);
}

QLineEdit *SettingsPanel::addPath(QFormLayout *form, const QString &label, const settings::Text &text,
                                  std::function<QString()> choose)
{
    auto *line = new QLineEdit(this);
    line->setObjectName(text.name.toString() + QStringLiteral("LineEdit"));
    m_binding->add(line, text);
    line->setAccessibleName(spokenName(label));
    auto *button = controls::toolButton(this, {.image = "FolderOpen24", .text = tr("Browse ...")});
    button->setObjectName(text.name.toString() + QStringLiteral("BrowseButton"));
    connect(button, &QToolButton::clicked, this, [this, &text, choose = std::move(choose)] {
        if (const QString path = choose(); !path.isEmpty())
            m_binding->show({{text.name.toString(), path}});
    });
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceTight);
    row->addWidget(line, 1);
    row->addWidget(button);
    auto *caption = new QLabel(label, this);
    caption->setBuddy(line);
    form->addRow(caption);
    form->addRow(row);
    return line;
}

void SettingsPanel::addSection(QFormLayout *form, const QString &title)
{
    m_section = title;
    auto *label = new QLabel(title, this);
    label->setFont(theme::sectionTitle(font()));
    if (form->rowCount() > 0)
        form->addItem(new QSpacerItem(0, theme::space));
    form->addRow(label);
}

QWidget *SettingsPanel::makeOutputPage()
{
    auto *page = new QWidget(this);
    QFormLayout *form = makeForm(page);
    auto *format = new QComboBox(this);
    for (int i = 0; i < conversion::targetCount; ++i)
        format->addItem(QString::fromLatin1(conversion::factsOf(static_cast<Target>(i)).name));
    tie(format, stored::targetFileType);
    format->setAccessibleName(tr("Format"));
    form->addRow(tr("Format"), format);
    QSpinBox *jpg = addNumber(form, tr("Quality"), stored::targetFileQuality);
    QSpinBox *other = addNumber(form, tr("Quality"), stored::otherQuality);
    other->setSpecialValueText(tr("Automatic"));
    QCheckBox *lossless = addFlag(form, tr("Without any loss"), stored::lossless);
    m_rules.push_back([form, jpg, other, lossless](const Settings &settings) {
        const bool isJpg = settings.encoding.target == Target::Jpg;
        form->setRowVisible(jpg, isJpg);
        form->setRowVisible(other, facts(settings).hasQuality && !isJpg);
        form->setRowVisible(lossless, facts(settings).hasLossless);
        other->setEnabled(!settings.encoding.lossless);
    });
    addFolderRows(form);
    addDocumentRows(form);
    QCheckBox *metadata = addFlag(form, tr("Keep the metadata (EXIF, XMP)"), stored::keepMetadata);
    QCheckBox *place = addFlag(form, tr("Keep the place where it was taken"), stored::keepPlace);
    QCheckBox *times = addFlag(form, tr("Keep the time of the file"), stored::keepTimes);
    m_rules.push_back([form, metadata, place, times](const Settings &settings) {
        form->setRowVisible(metadata, facts(settings).hasMetadata);
        form->setRowVisible(place, facts(settings).hasMetadata);
        form->setRowVisible(times, settings.encoding.target != Target::Pdf);
        place->setEnabled(settings.encoding.keepMetadata);
    });
    return page;
}

void SettingsPanel::addFolderRows(QFormLayout *form)
{
    QCheckBox *beside = addFlag(form, tr("Beside the source files"), stored::besideSource);
    const int firstRow = form->rowCount();
    QLineEdit *folder = addPath(form, tr("Output folder"), stored::outputFolder, [this] {
        return platform::dialogs().chooseFolder(this, tr("Output folder"), stored::outputFolder.read());
    });
    QCheckBox *structure = addFlag(form, tr("Keep the folders of added folders"), stored::keepFolders);
    m_rules.push_back([form, beside, folder, structure, firstRow](const Settings &settings) {
        const bool isDocument = settings.encoding.target == Target::Pdf;
        form->setRowVisible(beside, !isDocument);
        form->setRowVisible(firstRow, !isDocument);
        form->setRowVisible(firstRow + 1, !isDocument);
        form->setRowVisible(structure, !isDocument);
        folder->setEnabled(!settings.besideSource);
        structure->setEnabled(!settings.besideSource);
    });
}

void SettingsPanel::addDocumentRows(QFormLayout *form)
{
    const int firstRow = form->rowCount();
    addPath(form, tr("PDF document"), stored::pdfFileName, [this] {
        return platform::dialogs().chooseFileToSave(this, tr("PDF document"), stored::pdfFileName.read(),
                                                    tr("PDF documents (*.pdf)"));
    });
    auto *paper = new QComboBox(this);
    for (int i = 0; i < conversion::paperSizeCount; ++i)
        paper->addItem(tr(conversion::paperSizeName(static_cast<conversion::PaperSize>(i))));
    tie(paper, stored::pdfPaperSize);
    paper->setAccessibleName(tr("Paper"));
    form->addRow(tr("Paper"), paper);
    auto *hint = new WrappedLabel(this);
    hint->setObjectName(QStringLiteral("paperHintLabel"));
    hint->setText(tr("Pictures are fitted to A4. On this paper a part of them may be cut off."));
    theme::makeMuted(hint);
    form->addRow(hint);
    m_rules.push_back([form, paper, hint, firstRow](const Settings &settings) {
        const bool isDocument = settings.encoding.target == Target::Pdf;
        form->setRowVisible(firstRow, isDocument);
        form->setRowVisible(firstRow + 1, isDocument);
        form->setRowVisible(paper, isDocument);
        form->setRowVisible(hint, isDocument && conversion::cutOffOn(settings.paper));
    });
}

QWidget *SettingsPanel::makeResizePage()
{
    auto *page = new QWidget(this);
    QFormLayout *form = makeForm(page);
    addFlag(form, tr("Resize the pictures"), stored::scaleImage);
    auto *mode = new QComboBox(this);
    mode->addItems({tr("Percentage"), tr("Width and height"), tr("Relative to one side")});
    tie(mode, stored::scaleType);
    mode->setAccessibleName(tr("Resize by"));
    form->addRow(tr("By"), mode);
    QSpinBox *percent = addNumber(form, tr("Percentage"), stored::scalePercentage, QStringLiteral(" %"));
    QSpinBox *width = addNumber(form, tr("Width"), stored::scaleAbsoluteWidth, tr(" px"));
    QSpinBox *height = addNumber(form, tr("Height"), stored::scaleAbsoluteHeight, tr(" px"));
    auto *side = new QComboBox(this);
    side->addItems({tr("Width"), tr("Height")});
    tie(side, stored::scaleRelativeTo);
    side->setAccessibleName(tr("Side"));
    form->addRow(tr("Side"), side);
    QSpinBox *relativeWidth = addNumber(form, tr("Width"), stored::scaleRelativeWidth, tr(" px"));
    QSpinBox *relativeHeight = addNumber(form, tr("Height"), stored::scaleRelativeHeight, tr(" px"));
    m_result = new QLabel(this);
    m_result->setObjectName(QStringLiteral("resultSizeLabel"));
    m_result->setWordWrap(true);
    form->addRow(m_result);
    m_rules.push_back([=](const Settings &settings) {
        using conversion::ScaleMode;
        const conversion::Resize &resize = settings.rendering.resize;
        const bool relative = resize.mode == ScaleMode::Relative;
        const bool toWidth = resize.relativeTo == conversion::Side::Width;
        form->setRowVisible(percent, resize.mode == ScaleMode::Percentage);
        form->setRowVisible(width, resize.mode == ScaleMode::Absolute);
        form->setRowVisible(height, resize.mode == ScaleMode::Absolute);
        form->setRowVisible(side, relative);
        form->setRowVisible(relativeWidth, relative && toWidth);
        form->setRowVisible(relativeHeight, relative && !toWidth);
        for (QWidget *control : std::initializer_list<QWidget *>{mode, percent, width, height, side,
                                                                 relativeWidth, relativeHeight})
            control->setEnabled(resize.on);
    });
    return page;
}

void SettingsPanel::setImageSize(const QSize &size)
{
    m_pictureSize = size;
    showResult();
}

void SettingsPanel::showResult()
{
    if (m_pictureSize.isEmpty()) {
        m_result->setText(tr("Select a picture to see its new size."));
        return;
    }
    const QSize size = conversion::resizedSize(
        m_pictureSize, conversion::settingsFrom(m_binding->values()).rendering.resize);
    m_result->setText(tr("The selected picture: %1 x %2 becomes %3 x %4")
                          .arg(m_pictureSize.width())
                          .arg(m_pictureSize.height())
                          .arg(size.width())
                          .arg(size.height()));
}

QWidget *SettingsPanel::makeAdjustPage()
{
    auto *page = new QWidget(this);
    QFormLayout *form = makeForm(page);
    addSliderRow(form, tr("Contrast"), stored::adjustContrast);
    addSliderRow(form, tr("Brightness"), stored::adjustBrightness);
    addSliderRow(form, tr("Gamma"), stored::adjustGamma);
    addSliderRow(form, tr("Invert colours darker than"), stored::adjustInvertColours);
    addSliderRow(form, tr("Blur"), stored::setBlurRadius);
    addFlag(form, tr("Sepia"), stored::adjustSepia);
    addFlag(form, tr("Shades of grey"), stored::adjustGrayScale);
    auto *reset =
        controls::pushButton(this, {.objectName = "resetAdjustmentsButton", .text = tr("Reset all")});
    connect(reset, &QPushButton::clicked, this, [this] {
        QVariantMap none;
        for (const settings::Number *number :
             {&stored::adjustContrast, &stored::adjustBrightness, &stored::adjustGamma,
              &stored::adjustInvertColours, &stored::setBlurRadius})
            none.insert(number->name.toString(), number->fallback);
        for (const settings::Flag *flag : {&stored::adjustSepia, &stored::adjustGrayScale})
            none.insert(flag->name.toString(), flag->fallback);
        m_binding->show(none);
    });
    form->addRow(reset);
    return page;
}
