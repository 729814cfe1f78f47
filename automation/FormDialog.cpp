// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/FormDialog.h"

#include "platform/Dialogs.h"
#include "widgets/Theme.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace automation
{

void FormDialog::Row::setVisible(bool visible) const
{
    label->setVisible(visible);
    field->setVisible(visible);
}

FormDialog::FormDialog(int minWidth, QWidget *parent)
    : QDialog(parent),
      m_headline(named(new QLabel(this), "headlineLabel")),
      m_form(new QFormLayout),
      m_notice(named(new QLabel(this), "noticeLabel"))
{
    m_headline->setFont(theme::sectionTitle(font()));
    m_headline->hide();
    m_form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    m_form->setHorizontalSpacing(theme::spaceWide);
    m_notice->setWordWrap(true);
    m_notice->setTextFormat(Qt::PlainText);
    m_notice->setAlignment(Qt::AlignTop);
    m_notice->setMinimumHeight(2 * m_notice->fontMetrics().lineSpacing());

    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(theme::space);
    layout->addWidget(m_headline);
    layout->addLayout(m_form);
    layout->addWidget(m_notice);
    layout->addStretch();
    setMinimumWidth(minWidth);
}

void FormDialog::setHeadline(const QString &text)
{
    m_headline->setText(text);
    m_headline->show();
}

FormDialog::Row FormDialog::addRow(const QString &text, QWidget *field, QWidget *buddy)
{
    auto *label = new QLabel(text, this);
    label->setBuddy(buddy ? buddy : field);
    m_form->addRow(label, field);
    return {label, field};
}

FormDialog::Row FormDialog::addRow(const QString &text, QLineEdit *field, QToolButton *button)
{
    auto *row = new QWidget(this);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::spaceTight);
    layout->addWidget(field, 1);
    layout->addWidget(button);
    return addRow(text, row, field);
}

void FormDialog::addButtons()
{
    m_save = named(new QPushButton(tr("Save"), this), "saveButton");
    m_save->setDefault(true);
    theme::makePrimary(m_save);
    auto *cancel = named(new QPushButton(tr("Cancel"), this), "cancelButton");
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(m_save, QDialogButtonBox::AcceptRole);
    buttons->addButton(cancel, QDialogButtonBox::RejectRole);
    layout()->addWidget(buttons);
}

void FormDialog::setNotice(const QString &text)
{
    m_notice->setText(text);
}

void FormDialog::chooseFolder(QLineEdit *field, const QString &title)
{
    const QString folder = platform::dialogs().chooseFolder(this, title, field->text());
    if (!folder.isEmpty())
        field->setText(folder);
}

} // namespace automation
