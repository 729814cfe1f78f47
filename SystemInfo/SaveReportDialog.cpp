// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/SaveReportDialog.h"

#include "platform/Dialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QRadioButton>

SaveReportDialog::SaveReportDialog(const QString &page, QWidget *parent)
    : QDialog(parent),
      m_thisPage(new QRadioButton(tr("This page only"), this)),
      m_allPages(new QRadioButton(tr("All pages"), this)),
      m_format(new QComboBox(this)),
      m_private(
          new QCheckBox(tr("Include serial numbers, keys, names of user and computer, and addresses"), this))
{
    setWindowTitle(tr("Save Report"));
    m_thisPage->setObjectName(QStringLiteral("thisPageRadioButton"));
    m_allPages->setObjectName(QStringLiteral("allPagesRadioButton"));
    m_format->setObjectName(QStringLiteral("formatComboBox"));
    m_private->setObjectName(QStringLiteral("includePrivateCheckBox"));
    m_allPages->setChecked(true);
    m_thisPage->setEnabled(!page.isEmpty());
    if (!page.isEmpty())
        m_thisPage->setText(
            tr("This page only: %1").arg(page).replace(QLatin1Char('&'), QStringLiteral("&&")));
    m_format->addItem(tr("Text"), QStringLiteral("txt"));
    m_format->addItem(tr("Web page"), QStringLiteral("html"));
    m_format->addItem(tr("JSON, to be compared later"), QStringLiteral("json"));

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &SaveReportDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QFormLayout(this);
    layout->addRow(tr("Content:"), m_allPages);
    layout->addRow(QString(), m_thisPage);
    layout->addRow(tr("Format:"), m_format);
    layout->addRow(QString(), m_private);
    layout->addRow(buttons);
}

bool SaveReportDialog::onlyThisPage() const
{
    return m_thisPage->isChecked();
}

bool SaveReportDialog::includesPrivateValues() const
{
    return m_private->isChecked();
}

void SaveReportDialog::accept()
{
    const QString ending = m_format->currentData().toString();
    const QString filter = QStringLiteral("%1 (*.%2)").arg(m_format->currentText(), ending);
    QString file = platform::dialogs().chooseFileToSave(this, windowTitle(),
                                                        tr("System report") + u'.' + ending, filter);
    if (file.isEmpty())
        return;
    if (!file.endsWith(QLatin1Char('.') + ending, Qt::CaseInsensitive))
        file += QLatin1Char('.') + ending;
    m_file = file;
    QDialog::accept();
}
