// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/options/SettingsBinder.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSlider>
#include <QSpinBox>

using conversion::NumberValue;
using conversion::TextValue;

SettingsBinder::SettingsBinder(QObject *parent) : QObject(parent), m_held(conversion::loadSettings()) {}

void SettingsBinder::apply(const conversion::Settings &settings)
{
    if (settings == m_held)
        return;
    conversion::saveChanges(m_held, settings);
    m_held = settings;
    show();
    emit changed();
}

void SettingsBinder::set(QStringView name, int value)
{
    if (m_showing)
        return;
    conversion::Settings next = m_held;
    conversion::numberValue(name).set(next, value);
    apply(next);
}

void SettingsBinder::set(QStringView name, const QString &text)
{
    if (m_showing)
        return;
    conversion::Settings next = m_held;
    conversion::textValue(name).set(next, text);
    apply(next);
}

void SettingsBinder::show()
{
    m_showing = true;
    for (const auto &control : m_controls)
        control();
    m_showing = false;
}

void SettingsBinder::bind(QSpinBox *box, QStringView name)
{
    const NumberValue &value = conversion::numberValue(name);
    box->setObjectName(name.toString() + QStringLiteral("SpinBox"));
    box->setRange(value.minimum, value.maximum);
    box->setKeyboardTracking(false);
    m_controls.push_back([this, box, &value] { box->setValue(value.get(m_held)); });
    m_controls.back()();
    connect(box, &QSpinBox::valueChanged, this, [this, name](int number) { set(name, number); });
}

void SettingsBinder::bind(QSlider *slider, QStringView name)
{
    const NumberValue &value = conversion::numberValue(name);
    slider->setObjectName(name.toString() + QStringLiteral("Slider"));
    slider->setRange(value.minimum, value.maximum);
    m_controls.push_back([this, slider, &value] { slider->setValue(value.get(m_held)); });
    m_controls.back()();
    connect(slider, &QSlider::valueChanged, this, [this, name](int number) { set(name, number); });
}

void SettingsBinder::bind(QComboBox *box, QStringView name)
{
    const NumberValue &value = conversion::numberValue(name);
    box->setObjectName(name.toString() + QStringLiteral("ComboBox"));
    m_controls.push_back([this, box, &value] { box->setCurrentIndex(value.get(m_held)); });
    m_controls.back()();
    connect(box, &QComboBox::currentIndexChanged, this, [this, name](int index) { set(name, index); });
}

void SettingsBinder::bind(QCheckBox *box, QStringView name)
{
    const NumberValue &value = conversion::numberValue(name);
    box->setObjectName(name.toString() + QStringLiteral("CheckBox"));
    m_controls.push_back([this, box, &value] { box->setChecked(value.get(m_held) != 0); });
    m_controls.back()();
    connect(box, &QCheckBox::toggled, this, [this, name](bool on) { set(name, on ? 1 : 0); });
}

void SettingsBinder::bind(QLineEdit *line, QStringView name)
{
    const TextValue &value = conversion::textValue(name);
    line->setObjectName(name.toString() + QStringLiteral("LineEdit"));
    m_controls.push_back([this, line, &value] {
        if (line->text() != value.get(m_held))
            line->setText(value.get(m_held));
    });
    m_controls.back()();
    connect(line, &QLineEdit::textChanged, this, [this, name](const QString &text) { set(name, text); });
}

void SettingsBinder::bind(QPlainTextEdit *text, QStringView name)
{
    const TextValue &value = conversion::textValue(name);
    text->setObjectName(name.toString() + QStringLiteral("TextEdit"));
    m_controls.push_back([this, text, &value] {
        if (text->toPlainText() != value.get(m_held))
            text->setPlainText(value.get(m_held));
    });
    m_controls.back()();
    connect(text, &QPlainTextEdit::textChanged, this, [this, text, name] { set(name, text->toPlainText()); });
}
