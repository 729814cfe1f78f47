// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/options/SettingsBinder.h"
#include "widgets/FLTabWidget.h"

#include <QSize>

class QFormLayout;
class QLabel;
class QPushButton;
class WrappedLabel;

// The settings of a conversion on four tabs. Everything is written as it is changed.
class SettingsPanel : public FLTabWidget
{
    Q_OBJECT

public:
    SettingsPanel(SettingsBinder *binder, QWidget *parent = nullptr);

    // Of the selected picture; empty: none. The resize tab shows what becomes of it.
    void setPictureSize(const QSize &size);

private:
    QWidget *makeOutputPage();
    void addFolderRows(QFormLayout *form);
    void addDocumentRows(QFormLayout *form);
    QWidget *makeResizePage();
    QWidget *makeAdjustPage();
    QWidget *makeMarksPage();
    void addTextMark(QFormLayout *form);
    void addPictureMark(QFormLayout *form);
    void addQrMark(QFormLayout *form);

    QSpinBox *addNumber(QFormLayout *form, const QString &label, QStringView name,
                        const QString &suffix = {});
    void addSliderRow(QFormLayout *form, const QString &label, QStringView name);
    QCheckBox *addFlag(QFormLayout *form, const QString &text, QStringView name);
    void addPosition(QFormLayout *form, QStringView name);
    QLineEdit *addPath(QFormLayout *form, const QString &label, QStringView name,
                       std::function<QString()> choose);
    void addSection(QFormLayout *form, const QString &title);
    QString spokenName(const QString &label) const;

    void showWhatApplies();
    void showResult();
    void chooseColor();

    SettingsBinder *m_binder;
    QSize m_pictureSize;
    std::vector<std::function<void(const conversion::Settings &)>> m_rules; // what is shown when
    QString m_section;                                                      // that is being built
    QLabel *m_result = nullptr;
    WrappedLabel *m_qrHint = nullptr;
    QPushButton *m_color = nullptr;
};
