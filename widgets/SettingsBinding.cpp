// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/SettingsBinding.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QSlider>
#include <QSpinBox>
#include <QVariant>

#include <algorithm>
#include <limits>

namespace
{

bool isLimited(const settings::Number &number)
{
    return number.minimum > std::numeric_limits<qint32>::min() ||
           number.maximum < std::numeric_limits<qint32>::max();
}

} // namespace

std::size_t SettingsBinding::tie(Tie tie)
{
    const QScopedValueRollback loading(m_loading, true);
    tie.show(tie.stored());
    tie.saved = tie.shown();
    m_ties.push_back(std::move(tie));
    return m_ties.size() - 1;
}

void SettingsBinding::handleChange(std::size_t index)
{
    if (m_loading)
        return;
    Tie &tie = m_ties[index];
    if (m_write == Write::OnChange && tie.shown() != tie.saved && tie.store(tie.shown()))
        tie.saved = tie.shown();
    emit changed();
}

void SettingsBinding::addNumber(const settings::Number &number, std::function<int()> shown,
                                std::function<void(int)> show, std::function<bool(int)> usable)
{
    tie({.shown = [shown = std::move(shown)] { return QVariant(shown()); },
         .show = [show = std::move(show)](const QVariant &value) { show(value.toInt()); },
         .stored =
             [&number, usable = std::move(usable)] {
                 const qint32 value = number.read();
                 return QVariant(usable(value) ? value : number.fallback);
             },
         .store = [&number](const QVariant &value) { return number.write(value.toInt()); },
         .fallback = number.fallback});
}

void SettingsBinding::add(QAbstractButton *button, const settings::Flag &flag)
{
    const std::size_t index = tie({.shown = [button] { return QVariant(button->isChecked()); },
                                   .show = [button](const QVariant &on) { button->setChecked(on.toBool()); },
                                   .stored = [&flag] { return QVariant(flag.read()); },
                                   .store = [&flag](const QVariant &on) { return flag.write(on.toBool()); },
                                   .fallback = flag.fallback});
    connect(button, &QAbstractButton::toggled, this, [this, index] { handleChange(index); });
}

void SettingsBinding::add(QComboBox *box, const settings::Number &number)
{
    addNumber(
        number, [box] { return box->currentIndex(); }, [box](int index) { box->setCurrentIndex(index); },
        [box](int index) { return index >= 0 && index < box->count(); });
    connect(box, &QComboBox::currentIndexChanged, this,
            [this, index = m_ties.size() - 1] { handleChange(index); });
}

void SettingsBinding::addData(QComboBox *box, const settings::Number &number)
{
    addNumber(
        number, [box] { return box->currentData().toInt(); },
        [box](int value) { box->setCurrentIndex(box->findData(value)); },
        [box](int value) { return box->findData(value) >= 0; });
    connect(box, &QComboBox::currentIndexChanged, this,
            [this, index = m_ties.size() - 1] { handleChange(index); });
}

void SettingsBinding::add(QSpinBox *box, const settings::Number &number)
{
    if (isLimited(number))
        box->setRange(number.minimum, number.maximum);
    addNumber(
        number, [box] { return box->value(); }, [box](int value) { box->setValue(value); },
        [box](int value) { return value >= box->minimum() && value <= box->maximum(); });
    connect(box, &QSpinBox::valueChanged, this, [this, index = m_ties.size() - 1] { handleChange(index); });
}

void SettingsBinding::add(QSlider *slider, const settings::Number &number)
{
    if (isLimited(number))
        slider->setRange(number.minimum, number.maximum);
    addNumber(
        number, [slider] { return slider->value(); }, [slider](int value) { slider->setValue(value); },
        [slider](int value) { return value >= slider->minimum() && value <= slider->maximum(); });
    const std::size_t index = m_ties.size() - 1;
    // While the handle is dragged the registry is left alone; others are told of every step.
    connect(slider, &QSlider::valueChanged, this, [this, slider, index] {
        if (!slider->isSliderDown())
            handleChange(index);
        else if (!m_loading)
            emit changed();
    });
    connect(slider, &QSlider::sliderReleased, this, [this, index] { handleChange(index); });
}

void SettingsBinding::add(QButtonGroup *group, const settings::Number &number)
{
    addNumber(
        number, [group] { return group->checkedId(); },
        [group](int id) {
            if (QAbstractButton *button = group->button(id))
                button->setChecked(true);
        },
        [group](int id) { return group->button(id) != nullptr; });
    connect(group, &QButtonGroup::idToggled, this, [this, index = m_ties.size() - 1](int, bool on) {
        if (on)
            handleChange(index);
    });
}

void SettingsBinding::add(QLineEdit *line, const settings::Text &text)
{
    const std::size_t index =
        tie({.shown = [line] { return QVariant(line->text()); },
             .show = [line](const QVariant &value) { line->setText(value.toString()); },
             .stored = [&text] { return QVariant(text.read()); },
             .store = [&text](const QVariant &value) { return text.write(value.toString()); },
             .fallback = text.fallback.toString()});
    if (m_write == Write::OnChange)
        connect(line, &QLineEdit::editingFinished, this, [this, index] { handleChange(index); });
    else
        connect(line, &QLineEdit::textChanged, this, [this, index] { handleChange(index); });
}

void SettingsBinding::load()
{
    const QScopedValueRollback loading(m_loading, true);
    for (Tie &tie : m_ties) {
        tie.show(tie.stored());
        tie.saved = tie.shown();
    }
}

bool SettingsBinding::save()
{
    bool all = true;
    for (Tie &tie : m_ties) {
        if (tie.store(tie.shown()))
            tie.saved = tie.shown();
        else
            all = false;
    }
    return all;
}

void SettingsBinding::showDefaults()
{
    for (std::size_t index = 0; index < m_ties.size(); ++index) {
        m_ties[index].show(m_ties[index].fallback);
        handleChange(index);
    }
}

bool SettingsBinding::isChanged() const
{
    return std::ranges::any_of(m_ties, [](const Tie &tie) { return tie.shown() != tie.saved; });
}
