// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/StylePanel.h"

#include "QRCode/FieldNote.h"
#include "QRCode/Settings.h"
#include "imaging/engine/ImageLoader.h"
#include "platform/Dialogs.h"
#include "widgets/Controls.h"
#include "widgets/FLColorWidget.h"
#include "widgets/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

namespace qr
{

namespace
{

// More than a logo takes up in the largest image.
constexpr int maxLogoPixels = 1500;

QImage readLogo(const QString &path)
{
    QImage logo;
    if (!imaging::loadImage(path, logo))
        return {};
    if (logo.width() > maxLogoPixels || logo.height() > maxLogoPixels)
        return logo.scaled(maxLogoPixels, maxLogoPixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return logo;
}

} // namespace

StylePanel::StylePanel(QWidget *parent) : QWidget(parent), m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins(0, theme::space, theme::spaceSnug, theme::space);
    m_grid->setHorizontalSpacing(theme::space);
    m_grid->setVerticalSpacing(theme::spaceSnug);
    m_grid->setColumnStretch(1, 1);
    buildSize();
    buildColors();
    buildShapes();
    buildLogo();
    m_grid->setRowStretch(m_grid->rowCount(), 1);
    apply();
    setLogo(stored::logo.read());
}

void StylePanel::addTitle(const QString &text)
{
    auto *title = new QLabel(text, this);
    title->setFont(theme::sectionTitle(font()));
    const int row = m_grid->rowCount();
    if (row > 1)
        m_grid->setRowMinimumHeight(row, theme::spaceSnug);
    m_grid->addWidget(title, row + 1, 0, 1, 2);
}

void StylePanel::addRow(const QString &label, QWidget *field)
{
    const int row = m_grid->rowCount();
    auto *title = new QLabel(label, this);
    title->setBuddy(field);
    if (field->accessibleName().isEmpty())
        field->setAccessibleName(label);
    m_grid->addWidget(title, row, 0);
    m_grid->addWidget(field, row, 1);
}

QSpinBox *StylePanel::addNumber(const QString &label, const char *name, const QString &suffix,
                                const settings::Number &setting)
{
    auto *number = new QSpinBox(this);
    number->setObjectName(QLatin1String(name));
    number->setRange(setting.minimum, setting.maximum);
    number->setSuffix(suffix);
    number->setValue(setting.read());
    addRow(label, number);
    connect(number, &QSpinBox::valueChanged, this, [this, setting](int value) {
        setting.write(value);
        apply();
    });
    return number;
}

QComboBox *StylePanel::addChoice(const QString &label, const char *name, const QStringList &rows,
                                 const settings::Number &setting)
{
    auto *choice = new QComboBox(this);
    choice->setObjectName(QLatin1String(name));
    choice->addItems(rows);
    choice->setCurrentIndex(setting.read());
    choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    choice->setMinimumContentsLength(8);
    addRow(label, choice);
    connect(choice, &QComboBox::currentIndexChanged, this, [this, setting](int index) {
        setting.write(index);
        apply();
    });
    return choice;
}

FLColorWidget *StylePanel::addColor(const QString &label, const char *name, const settings::Number &setting)
{
    auto *color = new FLColorWidget(this);
    color->setObjectName(QLatin1String(name));
    color->setPurpose(label.chopped(1)); // without the colon
    color->setColor(QColor(static_cast<QRgb>(setting.read())));
    addRow(label, color);
    connect(color, &FLColorWidget::colorChanged, this, [this, setting](const QColor &chosen) {
        setting.write(static_cast<qint32>(chosen.rgb() & 0xFFFFFFU));
        apply();
    });
    return color;
}

QCheckBox *StylePanel::addBox(const QString &text, const char *name, const settings::Flag &setting)
{
    auto *box = new QCheckBox(text, this);
    box->setObjectName(QLatin1String(name));
    box->setChecked(setting.read());
    m_grid->addWidget(box, m_grid->rowCount(), 0, 1, 2);
    connect(box, &QCheckBox::toggled, this, [this, setting](bool on) {
        setting.write(on);
        apply();
    });
    return box;
}

void StylePanel::buildSize()
{
    addTitle(tr("Size"));
    m_imageSize = addNumber(tr("Picture:"), "imageSizeSpinBox", tr(" pixels"), stored::imageSize);
    m_imageSize->setSingleStep(50);
    m_margin = addNumber(tr("Margin:"), "marginSpinBox", tr(" modules"), stored::margin);
    m_correction = addChoice(tr("Error correction:"), "correctionComboBox",
                             {tr("Low (7 %)"), tr("Medium (15 %)"), tr("Quartile (25 %)"), tr("High (30 %)")},
                             stored::correction);
    m_correction->setToolTip(tr("How much of the code may be covered or damaged"));
}

void StylePanel::buildColors()
{
    addTitle(tr("Colours"));
    m_fill = addChoice(tr("Code:"), "colorTypeComboBox",
                       {tr("One colour"), tr("Gradient to the right"), tr("Gradient downwards"),
                        tr("Diagonal gradient"), tr("Gradient from the centre")},
                       stored::colorType);
    m_color = addColor(tr("Colour:"), "colorWidget", stored::color);
    m_color2 = addColor(tr("Second colour:"), "color2Widget", stored::color2);
    m_background = addColor(tr("Background:"), "backColorWidget", stored::backColor);
    m_transparent = addBox(tr("No background"), "transparentCheckBox", stored::transparent);
}

void StylePanel::buildShapes()
{
    const QStringList eyes{tr("Square"), tr("Rounded"), tr("Circle"), tr("Leaf")};
    addTitle(tr("Shapes"));
    m_body = addChoice(tr("Body:"), "bodyShapeComboBox",
                       {tr("Squares"), tr("Rounded"), tr("Dots"), tr("Diamonds"), tr("Horizontal bars"),
                        tr("Vertical bars")},
                       stored::bodyShape);
    m_eyeFrame = addChoice(tr("Eye frames:"), "eyeShapeComboBox", eyes, stored::eyeShape);
    m_eyeCentre = addChoice(tr("Eye centres:"), "eyeCentreComboBox", eyes, stored::eyeCentreShape);
}

void StylePanel::buildLogo()
{
    addTitle(tr("Logo"));
    m_chooseLogo = controls::pushButton(this, {"chooseLogoButton", "Image24", tr("Choose...")});
    m_removeLogo = controls::pushButton(this, {"removeLogoButton", "Delete24", tr("Remove")});
    m_logoNote = new FieldNote(this);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(theme::spaceSnug);
    buttons->addWidget(m_chooseLogo, 1);
    buttons->addWidget(m_removeLogo);
    m_grid->addLayout(buttons, m_grid->rowCount(), 0, 1, 2);
    m_grid->addWidget(m_logoNote, m_grid->rowCount(), 0, 1, 2);
    m_logoSize = addNumber(tr("Size:"), "logoSizeSpinBox", tr(" % of the code"), stored::logoSize);
    m_logoBack = addBox(tr("Plain area behind the logo"), "logoBackCheckBox", stored::logoBack);
    m_logoBackSize =
        addNumber(tr("Its border:"), "logoBackSizeSpinBox", tr(" % of the logo"), stored::logoBackSize);
    m_logoBackShape = addChoice(tr("Its shape:"), "logoBackShapeComboBox",
                                {tr("Square"), tr("Rounded"), tr("Circle")}, stored::logoBackShape);
    connect(m_chooseLogo, &QPushButton::clicked, this, &StylePanel::chooseLogo);
    connect(m_removeLogo, &QPushButton::clicked, this, [this] { setLogo({}); });
}

void StylePanel::chooseLogo()
{
    const QString folder = QFileInfo(m_logoPath).path();
    const QStringList files = platform::dialogs().chooseFilesToOpen(
        window(), tr("Choose a Logo"), m_logoPath.isEmpty() ? QString() : QDir::toNativeSeparators(folder),
        tr("Pictures (*.png *.jpg *.jpeg *.bmp *.gif *.ico *.webp *.tif *.tiff *.avif *.heic *.jxl);;All "
           "Files (*)"));
    if (!files.isEmpty())
        setLogo(files.first());
}

void StylePanel::setLogo(const QString &path)
{
    m_logoPath = path;
    m_logo = {};
    m_logoNote->setWarning({});
    if (stored::logo.read() != path)
        stored::logo.write(path);
    if (path.isEmpty()) {
        m_reading.forget();
        apply();
        return;
    }
    m_reading.ask([path](const core::Asking &) { return readLogo(path); },
                  [this](const QImage &logo) {
                      m_logo = logo;
                      m_logoNote->setWarning(logo.isNull() ? tr("This picture cannot be read.") : QString());
                      apply();
                  });
    apply();
}

void StylePanel::showLogo()
{
    const bool hasLogo = !m_logo.isNull();
    constexpr int maxNameWidth = 120;
    const QString name = m_logoPath.isEmpty() ? tr("Choose...") : QFileInfo(m_logoPath).fileName();
    m_chooseLogo->setText(fontMetrics().elidedText(name, Qt::ElideMiddle, maxNameWidth));
    m_chooseLogo->setToolTip(QDir::toNativeSeparators(m_logoPath));
    m_chooseLogo->setAccessibleName(tr("Logo: %1").arg(name));
    m_removeLogo->setEnabled(!m_logoPath.isEmpty());
    for (QWidget *field : {static_cast<QWidget *>(m_logoSize), static_cast<QWidget *>(m_logoBack)})
        field->setEnabled(hasLogo);
    m_logoBackSize->setEnabled(hasLogo && m_logoBack->isChecked());
    m_logoBackShape->setEnabled(hasLogo && m_logoBack->isChecked());
}

void StylePanel::apply()
{
    m_style = {.correction = static_cast<core::QrCorrection>(m_correction->currentIndex()),
               .imageSize = m_imageSize->value(),
               .margin = m_margin->value(),
               .fill = static_cast<Fill>(m_fill->currentIndex()),
               .color = m_color->color(),
               .color2 = m_color2->color(),
               .background = m_background->color(),
               .transparent = m_transparent->isChecked(),
               .body = static_cast<BodyShape>(m_body->currentIndex()),
               .eyeFrame = static_cast<EyeShape>(m_eyeFrame->currentIndex()),
               .eyeCentre = static_cast<EyeShape>(m_eyeCentre->currentIndex()),
               .logo = {.image = m_logo,
                        .size = m_logoSize->value(),
                        .back = m_logoBack->isChecked(),
                        .backSize = m_logoBackSize->value(),
                        .backShape = static_cast<BackShape>(m_logoBackShape->currentIndex())}};
    m_color2->setEnabled(m_style.fill != Fill::Solid);
    m_background->setEnabled(!m_style.transparent);
    showLogo();
    emit changed();
}

} // namespace qr
