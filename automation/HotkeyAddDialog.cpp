// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/HotkeyAddDialog.h"

#include "automation/AgentLink.h"
#include "automation/engine/KnownKeys.h"
#include "platform/Dialogs.h"
#include "widgets/Controls.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>

using automation::FormDialog;
using automation::Modifier;
using automation::ShortcutAction;
using automation::ShortcutCommand;

namespace
{

constexpr int minWidth = 480;
constexpr int maxPath = 32767; // UTF-16 code units; limit of Windows

// Holds exactly one character: typing replaces it.
class KeyEdit : public QLineEdit
{
public:
    explicit KeyEdit(QWidget *parent) : QLineEdit(parent)
    {
        setMaxLength(1);
        setAlignment(Qt::AlignCenter);
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        const QString typed = event->text();
        if (typed.size() == 1 && typed[0].isPrint() && !typed[0].isSpace())
            setText(typed.toUpper());
        else
            QLineEdit::keyPressEvent(event);
    }
};

} // namespace

HotkeyAddDialog::HotkeyAddDialog(QWidget *parent) : FormDialog(minWidth, parent)
{
    setWindowTitle(tr("Add Shortcut"));
    setHeadline(tr("Add a Shortcut Key"));
    buildFields();
    addRows();
    addButtons();
    connectFields();
    showAction();
    check();
}

void HotkeyAddDialog::buildFields()
{
    const QStringList modifiers{tr("Ctrl"), tr("Shift"),
                                tr("Windows")}; // the order is part of the stored format
    m_key1 = named(new QComboBox(this), "key1ComboBox", tr("First modifier key"));
    m_key1->addItems(modifiers);
    m_key2 = named(new QComboBox(this), "key2ComboBox", tr("Second modifier key"));
    m_key2->addItems(modifiers);
    m_key2->setCurrentIndex(static_cast<int>(Modifier::Shift));
    // Must not be empty: without a key the stored form would mean another shortcut.
    m_key3 = named(new KeyEdit(this), "key3LineEdit", tr("Key, one character"));
    m_key3->setText(QStringLiteral("K"));
    m_action1 = named(new QComboBox(this), "action1ComboBox", tr("Action"));
    m_action1->addItems({tr("Open Windows 11 App"), tr("Open Folder"), tr("Open Website"),
                         tr("Open Other App"), tr("Paste as Plain Text"), tr("Restart Windows"),
                         tr("Shutdown Windows")});
    m_action2 = named(new QComboBox(this), "action2ComboBox", tr("App"));
    for (const automation::BuiltInApp &app : automation::builtInApps)
        m_action2->addItem(tr(app.name), QString::fromLatin1(app.command));
    m_app = named(new QLineEdit(this), "appLineEdit", tr("App"));
    m_app->setMaxLength(maxPath);
    m_appButton = controls::toolButton(this, {"appButton", "FolderOpen24", tr("Add Files")});
    m_startIn = named(new QLineEdit(this), "startInLineEdit", tr("Start In"));
    m_startIn->setMaxLength(maxPath);
    m_startInButton = controls::toolButton(this, {"startInButton", "FolderOpen24", tr("Select folder ...")});
    m_delay = named(new QSpinBox(this), "delaySpinBox", tr("Delay in seconds"));
    m_delay->setRange(0, automation::maxDelay);
    m_delay->setValue(30);
    m_delay->setSuffix(tr(" second(s)"));
}

void HotkeyAddDialog::addRows()
{
    auto *keys = new QWidget(this);
    auto *keyRow = new QHBoxLayout(keys);
    keyRow->setContentsMargins(0, 0, 0, 0);
    keyRow->addWidget(m_key1, 1);
    keyRow->addWidget(new QLabel(QStringLiteral("+"), this));
    keyRow->addWidget(m_key2, 1);
    keyRow->addWidget(new QLabel(QStringLiteral("+"), this));
    keyRow->addWidget(m_key3, 1);

    addRow(tr("Shortcut Key:"), keys, m_key1);
    addRow(tr("Action:"), m_action1);
    m_builtInRow = addRow(tr("App:"), m_action2);
    m_appRow = addRow(tr("App:"), m_app, m_appButton);
    m_startInRow = addRow(tr("Start In:"), m_startIn, m_startInButton);
    m_delayRow = addRow(tr("Delay:"), m_delay);
}

void HotkeyAddDialog::connectFields()
{
    connect(m_action1, &QComboBox::currentIndexChanged, this, &HotkeyAddDialog::showAction);
    for (QComboBox *box : {m_key1, m_key2, m_action1})
        connect(box, &QComboBox::currentIndexChanged, this, &HotkeyAddDialog::check);
    for (QLineEdit *edit : {m_key3, m_app, m_startIn})
        connect(edit, &QLineEdit::textChanged, this, &HotkeyAddDialog::check);
    connect(m_startInButton, &QToolButton::clicked, this,
            [this] { chooseFolder(m_startIn, tr("Select folder ...")); });
    connect(m_appButton, &QToolButton::clicked, this, [this] {
        if (action() == ShortcutAction::OpenFolder)
            chooseFolder(m_app, tr("Select folder ..."));
        else
            chooseProgram();
    });
    connect(saveButton(), &QPushButton::clicked, this, [this] {
        emit insertDataSignal(automation::commandText(command()));
        accept();
    });
}

ShortcutAction HotkeyAddDialog::action() const
{
    return static_cast<ShortcutAction>(m_action1->currentIndex());
}

void HotkeyAddDialog::showAction()
{
    const ShortcutAction chosen = action();
    const bool builtIn = chosen == ShortcutAction::OpenBuiltInApp;
    const bool other = chosen == ShortcutAction::OpenOtherApp;
    const bool website = chosen == ShortcutAction::OpenWebsite;
    m_builtInRow.setVisible(builtIn);
    m_appRow.setVisible(other || website || chosen == ShortcutAction::OpenFolder);
    m_startInRow.setVisible(builtIn || other);
    m_delayRow.setVisible(chosen == ShortcutAction::Restart || chosen == ShortcutAction::ShutDown);
    m_appRow.label->setText(website ? tr("URL:") : other ? tr("App:") : tr("Folder:"));
    m_app->setAccessibleName(website ? tr("Address") : other ? tr("App") : tr("Folder"));
    m_appButton->setVisible(!website);
    m_startInRow.label->setText(builtIn ? tr("Working Dir:") : tr("Start In:"));
}

void HotkeyAddDialog::check()
{
    const ShortcutCommand entered = command();
    QString notice = automation::knownUse(entered.first, entered.second, entered.key);
    if (entered.key.isEmpty())
        notice = tr("Type a key: a letter, a digit or a sign.");
    else if (!automation::parseCommand(automation::commandText(entered)))
        notice = entered.action == ShortcutAction::OpenWebsite ? tr("Type the address of a website.")
                 : entered.action == ShortcutAction::OpenFolder
                     ? tr("Select a folder, or type its whole path.")
                     : tr("Select a program, or type its whole path.");
    else if (entered.action == ShortcutAction::OpenWebsite &&
             automation::openableAddress(entered.target).isEmpty())
        notice = tr("This is not the address of a website.");
    else if (notice.isEmpty() && automation::isKeyTaken(entered, false))
        notice = tr("Windows or another program uses this combination already.");
    setNotice(notice);
    // Without a key the stored form would mean another shortcut; any other input is stored as typed.
    saveButton()->setEnabled(!entered.key.isEmpty());
}

void HotkeyAddDialog::chooseProgram()
{
    const QStringList files =
        platform::dialogs().chooseFilesToOpen(this, tr("Add Files"), m_app->text(), tr("All Files (*.exe)"));
    if (!files.isEmpty())
        m_app->setText(files.first());
}

ShortcutCommand HotkeyAddDialog::command() const
{
    ShortcutCommand command;
    command.first = static_cast<Modifier>(m_key1->currentIndex());
    command.second = static_cast<Modifier>(m_key2->currentIndex());
    command.key = m_key3->text();
    command.action = action();
    switch (command.action) {
    case ShortcutAction::OpenBuiltInApp:
        command.target = m_action2->currentData().toString();
        command.workingFolder = m_startIn->text();
        break;
    case ShortcutAction::OpenOtherApp:
        command.workingFolder = m_startIn->text();
        command.target = m_app->text();
        break;
    case ShortcutAction::OpenFolder:
    case ShortcutAction::OpenWebsite:
        command.target = m_app->text();
        break;
    case ShortcutAction::Restart:
    case ShortcutAction::ShutDown:
        command.delay = m_delay->value();
        break;
    case ShortcutAction::PastePlainText:
        break;
    }
    return command;
}

void HotkeyAddDialog::edit(const ShortcutCommand &command)
{
    setWindowTitle(tr("Edit Shortcut"));
    setHeadline(tr("Edit a Shortcut Key"));
    m_key1->setCurrentIndex(static_cast<int>(command.first));
    m_key2->setCurrentIndex(static_cast<int>(command.second));
    m_key3->setText(command.key);
    m_action1->setCurrentIndex(static_cast<int>(command.action));
    if (command.action == ShortcutAction::OpenBuiltInApp)
        m_action2->setCurrentIndex(std::max(0, m_action2->findData(command.target)));
    else
        m_app->setText(command.target);
    m_startIn->setText(command.workingFolder);
    m_delay->setValue(command.delay);
    check();
}
