// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "QRCode/engine/Style.h"
#include "core/LatestAnswer.h"
#include "settings/Values.h"

#include <QWidget>

class FLColorWidget;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QSpinBox;

namespace qr
{
class FieldNote;

// The design of the code. Loaded on creation; every change is stored and emitted at once.
class StylePanel : public QWidget
{
    Q_OBJECT

public:
    explicit StylePanel(QWidget *parent = nullptr);

    const Style &style() const { return m_style; }

public slots:
    // Any size and any format that the suite can read; an empty path removes the logo.
    void setLogo(const QString &path);

signals:
    void changed();

private:
    void addTitle(const QString &text);
    void addRow(const QString &label, QWidget *field);
    QSpinBox *addNumber(const QString &label, const char *name, const QString &suffix,
                        const settings::Number &setting);
    QComboBox *addChoice(const QString &label, const char *name, const QStringList &rows,
                         const settings::Number &setting);
    FLColorWidget *addColor(const QString &label, const char *name, const settings::Number &setting);
    QCheckBox *addBox(const QString &text, const char *name, const settings::Flag &setting);
    void buildSize();
    void buildColors();
    void buildShapes();
    void buildLogo();
    void chooseLogo();
    void apply();
    void showLogo();

    QGridLayout *m_grid;
    QSpinBox *m_imageSize;
    QSpinBox *m_margin;
    QComboBox *m_correction;
    QComboBox *m_fill;
    FLColorWidget *m_color;
    FLColorWidget *m_color2;
    FLColorWidget *m_background;
    QCheckBox *m_transparent;
    QComboBox *m_body;
    QComboBox *m_eyeFrame;
    QComboBox *m_eyeCentre;
    QPushButton *m_chooseLogo;
    QPushButton *m_removeLogo;
    FieldNote *m_logoNote;
    QSpinBox *m_logoSize;
    QCheckBox *m_logoBack;
    QSpinBox *m_logoBackSize;
    QComboBox *m_logoBackShape;
    QString m_logoPath;
    QImage m_logo;
    Style m_style;
    core::LatestAnswer m_reading;
};

} // namespace qr
