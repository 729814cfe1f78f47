// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/SettingsBinding.h"

#include <QAbstractButton>
#include <QAction>
#include <QButtonGroup>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
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
    noteChange(index);
    emit changed();
}

void SettingsBinding::noteChange(std::size_t index)
{
    Tie &tie = m_ties[index];
    if (m_write == Write::OnChange && tie.shown() != tie.saved && tie.store(tie.shown()))
        tie.saved = tie.shown();
    showInOthers(index);
}

void SettingsBinding::showInOthers(std::size_t index)
{
    const QScopedValueRollback loading(m_loading, true);
    for (std::size_t other = 0; other < m_ties.size(); ++other) {
        Tie &tie = m_ties[other];
        if (other == index || tie.name != m_ties[index].name)
            continue;
        if (tie.shown() != m_ties[index].shown())
            tie.show(m_ties[index].shown());
        tie.saved = m_ties[index].saved;
    }
}

void SettingsBinding::addNumber(const settings::Number &number, std::function<int()> shown,
                                std::function<void(int)> show, std::function<bool(int)> usable)
{
    const auto fitting = [&number, usable = std::move(usable)](qint32 value) {
        return QVariant(usable(value) ? value : number.fallback);
    };
    tie({.name = number.name.toString(),
         .shown = [shown = std::move(shown)] { return QVariant(shown()); },
         .show = [show = std::move(show)](const QVariant &value) { show(value.toInt()); },
         .stored = [&number, fitting] { return fitting(number.read()); },
         .store = [&number](const QVariant &value) { return number.write(value.toInt()); },
         .usable =
             [&number, fitting](const QVariant &value) {
                 bool isNumber = false;
                 const int given = value.toInt(&isNumber);
                 return fitting(isNumber ? number.usable(given) : number.fallback);
             },
         .fallback = number.fallback});
}

// `control` is a button or an action.
template <class Checkable>
void SettingsBinding::addFlag(Checkable *control, const settings::Flag &flag)
{
    const std::size_t index =
        tie({.name = flag.name.toString(),
             .shown = [control] { return QVariant(control->isChecked()); },
             .show = [control](const QVariant &on) { control->setChecked(on.toBool()); },
             .stored = [&flag] { return QVariant(flag.read()); },
             .store = [&flag](const QVariant &on) { return flag.write(on.toBool()); },
             .usable = [](const QVariant &on) { return QVariant(on.toBool()); },
             .fallback = flag.fallback});
    connect(control, &Checkable::toggled, this, [this, index] { handleChange(index); });
}

void SettingsBinding::add(QAbstractButton *button, const settings::Flag &flag)
{
    addFlag(button, flag);
}

void SettingsBinding::add(QAction *action, const settings::Flag &flag)
{
    addFlag(action, flag);
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
    // While the slider is dragged nothing is stored; other controls follow every step.
    connect(slider, &QSlider::valueChanged, this, [this, slider, index] {
        if (!slider->isSliderDown()) {
            handleChange(index);
        } else if (!m_loading) {
            showInOthers(index);
            emit changed();
        }
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

std::size_t SettingsBinding::addText(const settings::Text &text, std::function<QString()> shown,
                                     std::function<void(const QString &)> show)
{
    return tie({.name = text.name.toString(),
                .shown = [shown = std::move(shown)] { return QVariant(shown()); },
                .show = [show = std::move(show)](const QVariant &value) { show(value.toString()); },
                .stored = [&text] { return QVariant(text.read()); },
                .store = [&text](const QVariant &value) { return text.write(value.toString()); },
                .usable = [](const QVariant &value) { return QVariant(value.toString()); },
                .fallback = text.fallback.toString()});
}

void SettingsBinding::add(QLineEdit *line, const settings::Text &text)
{
    const std::size_t index = addText(
        text, [line] { return line->text(); }, [line](const QString &shown) { line->setText(shown); });
    if (m_write == Write::OnChange)
        connect(line, &QLineEdit::editingFinished, this, [this, index] { handleChange(index); });
    else
        connect(line, &QLineEdit::textChanged, this, [this, index] { handleChange(index); });
}

void SettingsBinding::add(QPlainTextEdit *edit, const settings::Text &text)
{
    const std::size_t index = addText(
        text, [edit] { return edit->toPlainText(); },
        [edit](const QString &shown) { edit->setPlainText(shown); });
    connect(edit, &QPlainTextEdit::textChanged, this, [this, index] { handleChange(index); });
}

std::function<void()> SettingsBinding::add(const settings::Text &text, std::function<QString()> shown,
                                           std::function<void(const QString &)> show)
{
    return [this, index = addText(text, std::move(shown), std::move(show))] { handleChange(index); };
}

QVariantMap SettingsBinding::values() const
{
    QVariantMap all;
    for (const Tie &tie : m_ties)
        all.insert(tie.name, tie.shown());
    return all;
}

void SettingsBinding::show(const QVariantMap &values)
{
    for (std::size_t index = 0; index < m_ties.size(); ++index) {
        const auto value = values.constFind(m_ties[index].name);
        if (value == values.cend())
            continue;
        {
            const QScopedValueRollback loading(m_loading, true);
            m_ties[index].show(m_ties[index].usable(*value));
        }
        noteChange(index);
    }
    emit changed();
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
