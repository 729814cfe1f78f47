// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Values.h"

#include <QWidget>

#include <functional>
#include <utility>
#include <vector>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QVBoxLayout;

namespace qr
{
class FieldNote;

// The fields of one kind of code. A derived form adds its fields, builds the payload and reports it through
// its own signal. Fields are loaded when added, and stored by save().
class PayloadForm : public QWidget
{
    Q_OBJECT

public:
    explicit PayloadForm(const QString &description, QWidget *parent = nullptr);

    virtual QString payload() const = 0;
    // Updates the notes beside the fields and emits the payload.
    void refresh();
    // Stores all fields.
    void save() const;

protected:
    // Returns the note for a field; empty for none.
    using Check = std::function<QString()>;

    // If `isKept` is given and returns false, an empty text is stored instead.
    QLineEdit *addLine(const QString &label, const char *name, const settings::Text &setting,
                       Check check = {}, std::function<bool()> isKept = {});
    QPlainTextEdit *addText(const QString &label, const char *name, const settings::Text &setting,
                            Check check = {});
    // A stored number that is no valid row selects `preset`.
    QComboBox *addChoice(const QString &label, const char *name, const QStringList &rows,
                         const settings::Number &setting, int preset = 0);
    QComboBox *addCountry(const settings::Number &setting);
    QCheckBox *addBox(const QString &text, const char *name, const settings::Flag &setting);
    // A line in a muted colour.
    void addHint(const QString &text);
    virtual void emitPayload(const QString &payload) = 0;

private:
    void addField(const QString &label, const char *name, QWidget *field, Check check);

    QVBoxLayout *m_column;
    std::vector<std::function<void()>> m_savers;
    std::vector<std::pair<FieldNote *, Check>> m_checks;
};

} // namespace qr
