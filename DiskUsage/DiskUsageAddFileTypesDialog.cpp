// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageAddFileTypesDialog.h"

#include "core/FileTypes.h"
#include "widgets/Theme.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int maxExtensionLength = 64; // a name with its extension has at most 255 characters
constexpr int smallestWidth = 360;
} // namespace

DiskUsageAddFileTypesDialog::DiskUsageAddFileTypesDialog(QWidget *parent)
    : QDialog(parent),
      m_edit(new QLineEdit(this)),
      m_problem(new QLabel(this)),
      m_ok(new QPushButton(tr("OK"), this)),
      m_cancel(new QPushButton(tr("Cancel"), this))
{
    setWindowTitle(tr("New File Extensions"));
    buildLayout();
    connect(m_ok, &QAbstractButton::clicked, this, &DiskUsageAddFileTypesDialog::on_OKButton_clicked);
    connect(m_cancel, &QAbstractButton::clicked, this, &DiskUsageAddFileTypesDialog::on_CancelButton_clicked);
    connect(m_edit, &QLineEdit::textChanged, this, &DiskUsageAddFileTypesDialog::checkInput);
    checkInput();
}

void DiskUsageAddFileTypesDialog::buildLayout()
{
    auto *hint = new QLabel(tr("Add a new file extensions. Example: ") + QStringLiteral("\".pdf\""), this);
    hint->setObjectName(QStringLiteral("hintLabel"));
    auto *name = new QLabel(tr("&Extension:"), this);
    name->setBuddy(m_edit);
    m_edit->setObjectName(QStringLiteral("FileTypeLineEdit"));
    m_edit->setAccessibleName(tr("File extension"));
    m_edit->setMaxLength(maxExtensionLength);
    m_problem->setObjectName(QStringLiteral("problemLabel"));
    m_problem->setWordWrap(true);
    theme::makeMuted(m_problem);
    m_ok->setObjectName(QStringLiteral("OKButton"));
    m_ok->setDefault(true);
    theme::makePrimary(m_ok);
    m_cancel->setObjectName(QStringLiteral("CancelButton"));
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(m_ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(m_cancel, QDialogButtonBox::RejectRole);

    auto *line = new QHBoxLayout;
    line->setSpacing(theme::spaceSnug);
    line->addWidget(name);
    line->addWidget(m_edit, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(theme::spaceSnug);
    layout->addWidget(hint);
    layout->addLayout(line);
    layout->addWidget(m_problem);
    layout->addStretch();
    layout->addWidget(buttons);
    setMinimumWidth(smallestWidth);
}

void DiskUsageAddFileTypesDialog::checkInput()
{
    const bool empty = m_edit->text().trimmed().isEmpty();
    const QString extension = core::normalisedExtension(m_edit->text());
    m_ok->setEnabled(!extension.isEmpty());
    if (empty)
        m_problem->clear();
    else if (extension.isEmpty())
        m_problem->setText(
            tr("An extension has no spaces and none of the characters , ; ( ) \\ / : * ? \" < > |"));
    else
        m_problem->setText(tr("Files that end in %1").arg(extension));
}

void DiskUsageAddFileTypesDialog::on_OKButton_clicked()
{
    const QString extension = core::normalisedExtension(m_edit->text());
    if (extension.isEmpty())
        return;
    accept();
    emit newExtension(extension);
}

void DiskUsageAddFileTypesDialog::on_CancelButton_clicked()
{
    reject();
}
