// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/PayloadForm.h"

#include "QRCode/FieldNote.h"
#include "QRCode/engine/Countries.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include <algorithm>

namespace qr
{

namespace
{

int systemCountry()
{
    const QString name = QLocale::territoryToString(QLocale::system().territory());
    const auto table = countries();
    const auto found = std::ranges::find(
        table, name, [](const Country &country) { return QString::fromUtf8(country.name); });
    return found == table.end() ? 0 : static_cast<int>(found - table.begin());
}

} // namespace

PayloadForm::PayloadForm(const QString &description, QWidget *parent)
    : QWidget(parent),
      m_column(new QVBoxLayout(this))
{
    m_column->setContentsMargins(0, theme::space, theme::spaceSnug, theme::space);
    m_column->setSpacing(theme::spaceTight);
    m_column->addStretch();
    if (!description.isEmpty())
        addHint(description);
}

void PayloadForm::addHint(const QString &text)
{
    auto *hint = new WrappedLabel(this);
    hint->setText(text);
    theme::makeMuted(hint);
    m_column->insertWidget(m_column->count() - 1, hint);
    m_column->insertSpacing(m_column->count() - 1, theme::spaceSnug);
}

void PayloadForm::addField(const QString &label, const char *name, QWidget *field, Check check)
{
    field->setObjectName(QLatin1String(name));
    const int end = m_column->count() - 1; // insert before the stretch
    if (!label.isEmpty()) {
        auto *title = new QLabel(label, this);
        title->setTextFormat(Qt::PlainText);
        title->setBuddy(field);
        field->setAccessibleName(label);
        m_column->insertWidget(end, title);
    }
    m_column->insertWidget(m_column->count() - 1, field);
    if (check) {
        auto *note = new FieldNote(this);
        note->setObjectName(QLatin1String(name) + QLatin1String("Note"));
        m_column->insertWidget(m_column->count() - 1, note);
        m_checks.emplace_back(note, std::move(check));
    }
    m_column->insertSpacing(m_column->count() - 1, theme::spaceSnug);
}

QLineEdit *PayloadForm::addLine(const QString &label, const char *name, const settings::Text &setting,
                                Check check, std::function<bool()> isKept)
{
    auto *line = new QLineEdit(setting.read(), this);
    addField(label, name, line, std::move(check));
    connect(line, &QLineEdit::textChanged, this, &PayloadForm::refresh);
    m_savers.push_back([line, setting, isKept = std::move(isKept)] {
        setting.write(!isKept || isKept() ? line->text() : QString());
    });
    return line;
}

QPlainTextEdit *PayloadForm::addText(const QString &label, const char *name, const settings::Text &setting,
                                     Check check)
{
    auto *text = new QPlainTextEdit(setting.read(), this);
    text->setTabChangesFocus(true);
    // As high as the page allows, whatever its size hint.
    text->setMinimumHeight(3 * theme::rowHeight);
    text->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    addField(label, name, text, std::move(check));
    m_column->setStretchFactor(text, 1);
    connect(text, &QPlainTextEdit::textChanged, this, &PayloadForm::refresh);
    m_savers.push_back([text, setting] { setting.write(text->toPlainText()); });
    return text;
}

QComboBox *PayloadForm::addChoice(const QString &label, const char *name, const QStringList &rows,
                                  const settings::Number &setting, int preset)
{
    auto *choice = new QComboBox(this);
    choice->addItems(rows);
    const int stored = setting.read();
    choice->setCurrentIndex(stored >= 0 && stored < rows.size() ? stored : preset);
    // As narrow as the page, whatever the longest row.
    choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    choice->setMinimumContentsLength(8);
    addField(label, name, choice, {});
    connect(choice, &QComboBox::currentIndexChanged, this, &PayloadForm::refresh);
    m_savers.push_back([choice, setting] { setting.write(choice->currentIndex()); });
    return choice;
}

QComboBox *PayloadForm::addCountry(const settings::Number &setting)
{
    QStringList rows;
    for (const Country &country : countries())
        rows.append(country.displayName());
    QComboBox *choice = addChoice(tr("Country Code:"), "countryCodeComboBox", rows, setting, systemCountry());
    // Searchable by any part of the name, or by the code.
    choice->setEditable(true);
    choice->lineEdit()->setAccessibleName(choice->accessibleName());
    choice->setInsertPolicy(QComboBox::NoInsert);
    choice->completer()->setFilterMode(Qt::MatchContains);
    choice->completer()->setCompletionMode(QCompleter::PopupCompletion);
    connect(choice->lineEdit(), &QLineEdit::editingFinished, choice,
            [choice] { choice->setEditText(choice->itemText(choice->currentIndex())); });
    return choice;
}

QCheckBox *PayloadForm::addBox(const QString &text, const char *name, const settings::Flag &setting)
{
    auto *box = new QCheckBox(text, this);
    box->setChecked(setting.read());
    addField({}, name, box, {});
    connect(box, &QCheckBox::toggled, this, &PayloadForm::refresh);
    m_savers.push_back([box, setting] { setting.write(box->isChecked()); });
    return box;
}

void PayloadForm::refresh()
{
    for (const auto &[note, check] : m_checks)
        note->setWarning(check());
    emitPayload(payload());
}

void PayloadForm::save() const
{
    for (const std::function<void()> &saver : m_savers)
        saver();
}

} // namespace qr
