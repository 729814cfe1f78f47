// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/options/Settings.h"
#include "widgets/FLTabWidget.h"
#include "widgets/SettingsBinding.h"

#include <QSize>

#include <functional>
#include <vector>

class QCheckBox;
class QFormLayout;
class QLabel;
class QPushButton;
class WrappedLabel;

// The settings of a conversion on four tabs. Every change is stored at once.
class SettingsPanel : public FLTabWidget
{
    Q_OBJECT

public:
    SettingsPanel(SettingsBinding *binding, QWidget *parent = nullptr);

    // The size of the selected image, empty for none. The resize tab shows the resulting size.
    void setImageSize(const QSize &size);

private:
    QWidget *makeOutputPage();
    void addFolderRows(QFormLayout *form);
    void addDocumentRows(QFormLayout *form);
    QWidget *makeResizePage();
    QWidget *makeAdjustPage();
    QWidget *makeMarksPage();
    void addTextMark(QFormLayout *form);
    void addImageMark(QFormLayout *form);
    void addQrMark(QFormLayout *form);

    // Controls are named after their setting.
    QSpinBox *makeNumber(const settings::Number &number);
    void tie(QComboBox *box, const settings::Number &number);
    void tie(QPlainTextEdit *edit, const settings::Text &text);
    QSpinBox *addNumber(QFormLayout *form, const QString &label, const settings::Number &number,
                        const QString &suffix = {});
    void addSliderRow(QFormLayout *form, const QString &label, const settings::Number &number);
    QCheckBox *addFlag(QFormLayout *form, const QString &text, const settings::Flag &flag);
    void addPosition(QFormLayout *form, const settings::Number &number);
    QLineEdit *addPath(QFormLayout *form, const QString &label, const settings::Text &text,
                       std::function<QString()> choose);
    void addSection(QFormLayout *form, const QString &title);
    QString spokenName(const QString &label) const;

    void showWhatApplies();
    void showResult();
    void chooseColor();

    SettingsBinding *m_binding;
    QSize m_pictureSize;
    std::vector<std::function<void(const conversion::Settings &)>> m_rules; // updates visibility
    QString m_section;                                                      // the section being built
    QLabel *m_result = nullptr;
    WrappedLabel *m_qrHint = nullptr;
    QPushButton *m_color = nullptr;
    QColor m_textColor;
};
