// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Values.h"

#include <QObject>
#include <QVariantMap>

#include <functional>
#include <vector>

class QAbstractButton;
class QAction;
class QButtonGroup;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QSlider;
class QSpinBox;

// Two-way binding between the controls of a form and its stored settings. add() sets the stored value,
// including the control's signals, so that dependent controls are updated; an invalid stored value shows as
// the setting's default. Settings must outlive the binding (they are constants in the module's header).
// Controls of the same setting, such as a slider and a spin box, follow each other.
//
//     m_binding.add(ui.qualitySlider, settings::quality);     // Number, with its limits as the control's
//     m_binding.add(ui.keepNamesCheckBox, settings::keepNames); // Flag
//     m_binding.add(ui.formatComboBox, settings::format);      // Number, the current index
class SettingsBinding : public QObject
{
    Q_OBJECT

public:
    enum class Write {
        OnChange, // each change is stored at once; a text when editing has finished
        OnSave    // nothing is stored before save(): for dialogs with "Save" or "OK"
    };

    explicit SettingsBinding(Write write, QObject *parent = nullptr) : QObject(parent), m_write(write) {}

    // A check box, or any other checkable button.
    void add(QAbstractButton *button, const settings::Flag &flag);
    void add(QAction *action, const settings::Flag &flag);
    // The current index; fill the box first. An invalid index counts as absent.
    void add(QComboBox *box, const settings::Number &number);
    // The data of the current item, for stored numbers that are not indexes.
    void addData(QComboBox *box, const settings::Number &number);
    // The control gets the setting's limits, if there are any.
    void add(QSpinBox *box, const settings::Number &number);
    void add(QSlider *slider, const settings::Number &number);
    // The id of the checked button; an unknown id counts as absent.
    void add(QButtonGroup *group, const settings::Number &number);
    void add(QLineEdit *line, const settings::Text &text);
    void add(QPlainTextEdit *edit, const settings::Text &text);
    // Any other control for a text. Call the returned function after each change by the user.
    std::function<void()> add(const settings::Text &text, std::function<QString()> shown,
                              std::function<void(const QString &)> show);

    // The controls' values by setting name.
    QVariantMap values() const;
    // Shows these values; they are stored like changes by the user, and reported once. Unknown names are
    // ignored, invalid values show the setting's default.
    void show(const QVariantMap &values);

    // Shows the stored values in all controls.
    void load();
    // Stores the values of all controls. False if one of them could not be written; the others are stored.
    bool save();
    // Shows the defaults; they are stored like changes by the user.
    void showDefaults();
    // Whether a control differs from the last load() or save().
    bool isChanged() const;

signals:
    // Emitted for changes by the user or by code, not by load().
    void changed();

private:
    struct Tie {
        QString name;
        std::function<QVariant()> shown;
        std::function<void(const QVariant &)> show;
        std::function<QVariant()> stored;
        std::function<bool(const QVariant &)> store;
        std::function<QVariant(const QVariant &)> usable; // validates a value
        QVariant fallback;
        QVariant saved; // value at the last load() or save()
    };

    std::size_t tie(Tie tie);
    void addNumber(const settings::Number &number, std::function<int()> shown, std::function<void(int)> show,
                   std::function<bool(int)> usable);
    template <class Checkable>
    void addFlag(Checkable *control, const settings::Flag &flag);
    std::size_t addText(const settings::Text &text, std::function<QString()> shown,
                        std::function<void(const QString &)> show);
    void handleChange(std::size_t index);
    void noteChange(std::size_t index);
    void showInOthers(std::size_t index);

    Write m_write;
    bool m_loading = false;
    std::vector<Tie> m_ties;
};
