// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/ConvertPage.h"

#include "platform/Dialogs.h"
#include "widgets/NoticeBar.h"
#include "widgets/SettingsBinding.h"

#include <QComboBox>
#include <QInputDialog>

// Asks before replacing a preset of the same name.
void ConvertPage::savePreset()
{
    QInputDialog ask(this);
    ask.setWindowTitle(tr("Save these settings"));
    ask.setLabelText(tr("Name of the set"));
    ask.resize(360, ask.sizeHint().height());
    ask.setTextValue(m_presets->currentIndex() > 0 ? m_presets->currentText() : QString());
    if (ask.exec() != QDialog::Accepted)
        return;
    const QString name = ask.textValue().trimmed();
    if (name.isEmpty())
        return;
    if (m_sets.names().contains(name) &&
        platform::dialogs().ask(this, tr("Save these settings"), tr("Replace the set \"%1\"?").arg(name)) !=
            QMessageBox::Yes)
        return;
    if (!m_sets.save(name, conversion::withoutPlaces(m_binding->values())))
        m_notice->showNotice(NoticeBar::Kind::Warning, tr("There is no room for more sets of settings."));
    fillPresets();
    m_presets->setCurrentText(name);
}

void ConvertPage::removePreset()
{
    if (m_presets->currentIndex() <= 0)
        return;
    const QString name = m_presets->currentText();
    if (platform::dialogs().ask(this, tr("Remove a set"), tr("Remove the set \"%1\"?").arg(name)) !=
        QMessageBox::Yes)
        return;
    m_sets.remove(name);
    fillPresets();
}
