// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Values.h"

#include <QWidget>

#include <functional>
#include <utility>
#include <vector>

class FieldNote;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QVBoxLayout;

// The fields of one kind of code. A derived form adds its fields, builds the payload and tells of it by a
// signal of its own. Fields are loaded when they are added and stored by save().
class PayloadForm : public QWidget
{
    Q_OBJECT

public:
    explicit PayloadForm(const QString &description, QWidget *parent = nullptr);

    virtual QString payload() const = 0;
    // Shows what is to be said beside the fields, and tells the payload.
    void refresh();
    // Writes all fields to the settings.
    void save() const;

protected:
    // What is to be said beside the field; empty for nothing.
    using Check = std::function<QString()>;

    // While `isKept`, if given, says no, an empty text is stored.
    QLineEdit *addLine(const QString &label, const char *name, const settings::Text &setting,
                       Check check = {}, std::function<bool()> isKept = {});
    QPlainTextEdit *addText(const QString &label, const char *name, const settings::Text &setting,
                            Check check = {});
    // A stored number that is no row becomes `preset`.
    QComboBox *addChoice(const QString &label, const char *name, const QStringList &rows,
                         const settings::Number &setting, int preset = 0);
    QComboBox *addCountry(const settings::Number &setting);
    QCheckBox *addBox(const QString &text, const char *name, const settings::Flag &setting);
    // A muted line.
    void addHint(const QString &text);
    virtual void tell(const QString &payload) = 0;

private:
    void addField(const QString &label, const char *name, QWidget *field, Check check);

    QVBoxLayout *m_column;
    std::vector<std::function<void()>> m_savers;
    std::vector<std::pair<FieldNote *, Check>> m_checks;
};
