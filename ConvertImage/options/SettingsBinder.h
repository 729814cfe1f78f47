// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/options/Settings.h"

#include <QObject>

#include <functional>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QSlider;
class QSpinBox;

// Holds the settings of the page and ties them to its controls: what the user changes is written to the
// registry at once and shown by every other control of the same value. Controls get the limits and the name
// of their value. Interface thread.
class SettingsBinder : public QObject
{
    Q_OBJECT

public:
    explicit SettingsBinder(QObject *parent = nullptr);

    const conversion::Settings &settings() const { return m_held; }
    // Replaces everything, writes it and shows it.
    void apply(const conversion::Settings &settings);
    void set(QStringView name, int value);
    void set(QStringView name, const QString &text);

    void bind(QSpinBox *box, QStringView name);
    void bind(QSlider *slider, QStringView name);
    void bind(QComboBox *box, QStringView name); // by its index
    void bind(QCheckBox *box, QStringView name);
    void bind(QLineEdit *line, QStringView name);
    void bind(QPlainTextEdit *text, QStringView name);

signals:
    void changed();

private:
    void show();

    conversion::Settings m_held;
    std::vector<std::function<void()>> m_controls; // each shows the value of one
    bool m_showing = false;
};
