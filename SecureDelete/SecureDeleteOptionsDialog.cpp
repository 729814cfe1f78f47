// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/SecureDeleteOptionsDialog.h"

#include "SecureDelete/Texts.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

using securedelete::Method;

SecureDeleteOptionsDialog::SecureDeleteOptionsDialog(QWidget *parent)
    : QDialog(parent),
      m_methods(new QButtonGroup(this)),
      m_passes(new QSpinBox(this)),
      m_notStored(new QLabel(tr("The options could not be stored: Windows refused it."), this))
{
    setWindowTitle(tr("Options"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::spaceSection, theme::spaceSection, theme::spaceSection,
                               theme::spaceWide);
    layout->setSpacing(theme::space);
    buildMethods(layout);
    m_notStored->setObjectName(QStringLiteral("notStoredLabel"));
    m_notStored->setWordWrap(true);
    m_notStored->hide();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("closeButton"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(m_notStored);
    layout->addStretch();
    layout->addWidget(buttons);
    connect(m_methods, &QButtonGroup::idClicked, this, &SecureDeleteOptionsDialog::store);
    connect(m_passes, &QSpinBox::valueChanged, this, &SecureDeleteOptionsDialog::store);
}

void SecureDeleteOptionsDialog::buildMethods(QVBoxLayout *layout)
{
    const securedelete::Settings stored = securedelete::Settings::load();
    auto *title = new QLabel(tr("Overwrite files"), this);
    title->setFont(theme::sectionTitle(font()));
    layout->addWidget(title);
    static constexpr const char *names[] = {"gutmannRadioButton", "dod7RadioButton", "dod3RadioButton",
                                            "randomRadioButton"};
    for (const Method method : {Method::Gutmann, Method::Dod7, Method::Dod3, Method::Random}) {
        auto *button = new QRadioButton(securedelete::Texts::method(method), this);
        button->setObjectName(QLatin1String(names[static_cast<int>(method)]));
        button->setChecked(method == stored.method);
        m_methods->addButton(button, static_cast<int>(method));
        if (method != Method::Random)
            layout->addWidget(button);
    }
    m_passes->setObjectName(QStringLiteral("numPassesSpinBox"));
    m_passes->setRange(1, securedelete::maxRandomPasses);
    m_passes->setValue(stored.randomPasses);
    m_passes->setAccessibleName(tr("Number of passes"));
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::space);
    row->addWidget(m_methods->button(static_cast<int>(Method::Random)));
    row->addWidget(m_passes);
    row->addWidget(new QLabel(tr("passes"), this));
    row->addStretch();
    layout->addLayout(row);
    m_passes->setEnabled(stored.method == Method::Random);
    auto *hint = new WrappedLabel(this);
    // NIST Special Publication 800-88, revision 1, 2.4: "a single overwrite pass with a fixed pattern such as
    // binary zeros typically hinders recovery of data even if state of the art laboratory techniques are
    // applied".
    hint->setText(tr(
        "On magnetic disks a single pass is typically enough (NIST SP 800-88). Every further pass takes as "
        "long again."));
    theme::makeMuted(hint);
    layout->addWidget(hint);
}

void SecureDeleteOptionsDialog::store()
{
    const auto method = static_cast<Method>(m_methods->checkedId());
    m_passes->setEnabled(method == Method::Random);
    m_notStored->setVisible(!securedelete::Settings{method, m_passes->value()}.save());
}
