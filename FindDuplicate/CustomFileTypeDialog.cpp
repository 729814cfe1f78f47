// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/CustomFileTypeDialog.h"

#include "core/FileTypes.h"
#include "widgets/Theme.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

#include <algorithm>

using duplicates::CustomFileType;
using duplicates::SelectableCategory;

namespace
{

constexpr int maxNameLength = 100;
constexpr int minWidth = 420;

QStringList pieces(const QString &typed)
{
    static const QRegularExpression separators(QStringLiteral("[\\s,;]+"));
    return typed.split(separators, Qt::SkipEmptyParts);
}

// A scan uses the part after the last dot, so an extension with a second dot would never match.
bool isUsable(const QString &extension)
{
    return extension.size() > 1 && extension.lastIndexOf(QLatin1Char('.')) == 0;
}

} // namespace

CustomFileTypeDialog::CustomFileTypeDialog(const CustomFileType &type, duplicates::CategorySelection others,
                                           std::size_t before, QWidget *parent)
    : QDialog(parent),
      m_others(std::move(others)),
      m_before(std::min(before, m_others.size())),
      m_name(new QLineEdit(type.name, this)),
      m_extensions(new QLineEdit(type.extensions.join(QLatin1Char(' ')), this)),
      m_problem(new QLabel(this)),
      m_ok(new QPushButton(tr("OK"), this)),
      m_cancel(new QPushButton(tr("Cancel"), this))
{
    setWindowTitle(type.name.isEmpty() ? tr("New File Type") : tr("Edit File Type"));
    buildLayout();
    connect(m_ok, &QAbstractButton::clicked, this, &CustomFileTypeDialog::accept);
    connect(m_cancel, &QAbstractButton::clicked, this, &QDialog::reject);
    connect(m_name, &QLineEdit::textChanged, this, &CustomFileTypeDialog::checkInput);
    connect(m_extensions, &QLineEdit::textChanged, this, &CustomFileTypeDialog::checkInput);
    checkInput();
}

void CustomFileTypeDialog::buildLayout()
{
    m_name->setObjectName(QStringLiteral("nameLineEdit"));
    m_name->setMaxLength(maxNameLength);
    m_extensions->setObjectName(QStringLiteral("extensionsLineEdit"));
    m_extensions->setPlaceholderText(QStringLiteral(".log .trace"));
    m_problem->setObjectName(QStringLiteral("problemLabel"));
    m_problem->setWordWrap(true);
    m_problem->setTextFormat(Qt::PlainText);
    theme::makeMuted(m_problem);
    m_ok->setObjectName(QStringLiteral("OKButton"));
    m_ok->setDefault(true);
    theme::makePrimary(m_ok);
    m_cancel->setObjectName(QStringLiteral("CancelButton"));
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(m_ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(m_cancel, QDialogButtonBox::RejectRole);

    auto *form = new QFormLayout;
    form->addRow(tr("&Name"), m_name);
    form->addRow(tr("&Extensions"), m_extensions);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(theme::spaceSnug);
    layout->addLayout(form);
    layout->addWidget(m_problem);
    layout->addStretch();
    layout->addWidget(buttons);
    setMinimumWidth(minWidth);
}

std::optional<CustomFileType> CustomFileTypeDialog::entered() const
{
    CustomFileType type;
    type.name = m_name->text().trimmed();
    for (const QString &piece : pieces(m_extensions->text())) {
        const QString extension = core::normalisedExtension(piece);
        if (!isUsable(extension))
            return std::nullopt;
        if (!type.extensions.contains(extension))
            type.extensions.append(extension);
    }
    if (!type.isValid() || isTaken(type.name))
        return std::nullopt;
    return type;
}

bool CustomFileTypeDialog::isTaken(const QString &name) const
{
    return std::any_of(m_others.cbegin(), m_others.cend(), [&name](const SelectableCategory &other) {
        return other.name.compare(name, Qt::CaseInsensitive) == 0;
    });
}

QString CustomFileTypeDialog::problem() const
{
    if (isTaken(m_name->text().trimmed()))
        return tr("There is a file type of that name already.");
    QStringList extensions;
    for (const QString &piece : pieces(m_extensions->text())) {
        extensions.append(core::normalisedExtension(piece));
        if (!isUsable(extensions.last()))
            return tr("\"%1\" is not an extension with one dot, such as \".log\".").arg(piece);
    }
    const QString remarked = remark(extensions);
    return remarked.isEmpty() ? tr("Separate several extensions by spaces.") : remarked;
}

QString CustomFileTypeDialog::remark(const QStringList &extensions) const
{
    for (const QString &extension : extensions)
        for (std::size_t i = 0; i < m_before; ++i)
            if (m_others[i].selected && m_others[i].extensions.contains(extension, Qt::CaseInsensitive))
                return tr("\"%1\" already belongs to %2, which goes first.").arg(extension, m_others[i].name);
    return {};
}

void CustomFileTypeDialog::checkInput()
{
    m_ok->setEnabled(entered().has_value());
    m_problem->setText(problem());
}

void CustomFileTypeDialog::accept()
{
    const std::optional<CustomFileType> type = entered();
    if (!type)
        return;
    QDialog::accept();
    emit typeEntered(*type);
}
