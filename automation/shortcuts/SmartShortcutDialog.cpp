// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/shortcuts/SmartShortcutDialog.h"

#include "platform/Dialogs.h"
#include "widgets/Controls.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>

using namespace automation;

namespace
{

constexpr int smallestWidth = 540;
constexpr int maxPath = 259; // UTF-16 code units; limit of a shortcut's target
constexpr int maxDescription = 259;

} // namespace

SmartShortcutDialog::SmartShortcutDialog(const QList<ShortcutPlace> &places, QWidget *parent)
    : FormDialog(smallestWidth, parent)
{
    setWindowTitle(tr("Add Shortcut"));
    buildFields();
    for (const ShortcutPlace &place : places)
        m_place->addItem(place.title, place.folder);
    addRows();
    addButtons();
    connectFields();
    check();
}

void SmartShortcutDialog::buildFields()
{
    m_program = named(new QLineEdit(this), "programLineEdit", tr("Program"));
    m_program->setMaxLength(maxPath);
    m_programButton = controls::toolButton(this, {"programButton", "FolderOpen24", tr("Choose a program")});
    m_arguments = named(new QLineEdit(this), "argumentsLineEdit", tr("Arguments"));
    m_arguments->setPlaceholderText(tr("None"));
    m_startIn = named(new QLineEdit(this), "startInLineEdit", tr("Start in"));
    m_startIn->setMaxLength(maxPath);
    m_startIn->setPlaceholderText(tr("The program's own folder"));
    m_startInButton = controls::toolButton(this, {"startInButton", "FolderOpen24", tr("Choose a folder")});
    m_priority = named(new QComboBox(this), "priorityComboBox", tr("Priority"));
    for (int index = priorityCount - 1; index >= 0; --index)
        m_priority->addItem(priorityName(static_cast<Priority>(index)), index);
    m_priority->setCurrentIndex(m_priority->findData(static_cast<int>(Priority::AboveNormal)));
    m_window = named(new QComboBox(this), "windowComboBox", tr("Window"));
    m_window->addItems({tr("Normal"), tr("Minimized"), tr("Maximized")});
    m_processors = named(new QSpinBox(this), "processorsSpinBox", tr("Processors"));
    m_processors->setRange(0, maxProcessors);
    m_processors->setSpecialValueText(tr("All"));
    m_processors->setPrefix(tr("At most "));
    m_name = named(new QLineEdit(this), "nameLineEdit", tr("Name"));
    m_place = named(new QComboBox(this), "placeComboBox", tr("Place"));
    m_description = named(new QLineEdit(this), "descriptionLineEdit", tr("Comment"));
    m_description->setMaxLength(maxDescription);
    m_description->setPlaceholderText(tr("Shown when the mouse rests on the shortcut"));
}

void SmartShortcutDialog::addRows()
{
    addRow(tr("Program:"), m_program, m_programButton);
    addRow(tr("Arguments:"), m_arguments);
    addRow(tr("Start in:"), m_startIn, m_startInButton);
    addRow(tr("Priority:"), m_priority);
    addRow(tr("Window:"), m_window);
    addRow(tr("Processors:"), m_processors);
    addRow(tr("Name:"), m_name);
    addRow(tr("Place:"), m_place);
    addRow(tr("Comment:"), m_description);
}

void SmartShortcutDialog::connectFields()
{
    for (QLineEdit *edit : {m_program, m_arguments, m_startIn, m_name, m_description})
        connect(edit, &QLineEdit::textChanged, this, &SmartShortcutDialog::check);
    connect(m_processors, &QSpinBox::valueChanged, this, &SmartShortcutDialog::check);
    connect(m_priority, &QComboBox::currentIndexChanged, this, [this] {
        proposeName();
        check();
    });
    // Keeps a name that the user has typed.
    connect(m_program, &QLineEdit::editingFinished, this, [this] {
        if (!m_editing && m_name->text() == m_proposedName)
            propose(m_program->text());
    });
    connect(m_programButton, &QToolButton::clicked, this, &SmartShortcutDialog::chooseProgram);
    connect(m_startInButton, &QToolButton::clicked, this,
            [this] { chooseFolder(m_startIn, tr("Choose a folder")); });
    connect(saveButton(), &QPushButton::clicked, this, [this] {
        saveButton()->setEnabled(false); // until it has been stored or rejected
        emit saveRequested();
    });
}

Priority SmartShortcutDialog::priority() const
{
    return static_cast<Priority>(m_priority->currentData().toInt());
}

void SmartShortcutDialog::chooseProgram()
{
    const QStringList files = platform::dialogs().chooseFilesToOpen(
        this, tr("Choose a program"), m_program->text(), tr("Programs (*.exe *.com)"));
    if (files.isEmpty())
        return;
    m_program->setText(files.first());
    if (!m_editing)
        propose(files.first());
}

void SmartShortcutDialog::propose(const QString &path)
{
    m_proposal.ask([path](const core::Asking &) { return wishFor(path); },
                   [this, path](const ShortcutWish &wish) {
                       if (wish.start.program.isEmpty()) {
                           m_program->setText(path); // the notice shows what is wrong with it
                           return;
                       }
                       take(wish);
                   });
}

void SmartShortcutDialog::take(const ShortcutWish &wish)
{
    m_program->setText(wish.start.program);
    if (!wish.start.arguments.isEmpty())
        m_arguments->setText(wish.start.arguments);
    if (!wish.workingFolder.isEmpty())
        m_startIn->setText(wish.workingFolder);
    if (!wish.description.isEmpty())
        m_description->setText(wish.description);
    m_window->setCurrentIndex(static_cast<int>(wish.window));
    m_programText = wish.name.left(wish.name.lastIndexOf(QLatin1String(" (")));
    proposeName();
    check();
}

void SmartShortcutDialog::proposeName()
{
    if (m_editing || m_programText.isEmpty() || m_name->text() != m_proposedName)
        return;
    m_proposedName = proposedName(m_programText, m_program->text(), priority());
    m_name->setText(m_proposedName);
}

void SmartShortcutDialog::edit(const SmartShortcut &shortcut)
{
    m_editing = true;
    setWindowTitle(tr("Edit Shortcut"));
    m_name->setText(shortcut.name);
    m_description->setText(shortcut.file.description);
    m_startIn->setText(shortcut.file.workingFolder);
    m_window->setCurrentIndex(static_cast<int>(shortcut.file.window));
    m_place->clear();
    m_place->addItem(shortcut.place, shortcut.item.folder());
    m_place->setEnabled(false);
    if (shortcut.start) {
        m_program->setText(shortcut.start->program);
        m_arguments->setText(shortcut.start->arguments);
        m_priority->setCurrentIndex(m_priority->findData(static_cast<int>(shortcut.start->priority)));
        m_processors->setValue(shortcut.start->processors);
    }
    check();
}

ShortcutWish SmartShortcutDialog::wish() const
{
    ShortcutWish wish;
    wish.name = m_name->text();
    wish.start = {priority(), m_processors->value(), m_program->text(), m_arguments->text()};
    wish.workingFolder = m_startIn->text();
    wish.description = m_description->text();
    wish.window = static_cast<platform::ShortcutFile::Window>(m_window->currentIndex());
    return wish;
}

QString SmartShortcutDialog::folder() const
{
    return m_place->currentData().toString();
}

void SmartShortcutDialog::check()
{
    // "At most 0" is displayed as "All".
    m_processors->setSuffix(m_processors->value() == 1 ? tr(" processor") : tr(" processors"));
    const ShortcutWish wanted = wish();
    QString problem;
    if (!isStartable(wanted.start.program))
        problem = tr("Choose a program, or type its whole path. It ends in .exe or .com.");
    else if (startText(wanted.start).isEmpty())
        problem = tr("These arguments are too long, or hold a character that no shortcut can hold.");
    else
        problem = nameProblem(wanted.name);
    saveButton()->setEnabled(problem.isEmpty());
    if (problem.isEmpty() && wanted.start.priority == Priority::High)
        problem = tr("A program at high priority that is busy all the time can slow down everything else.");
    setNotice(problem);
}

void SmartShortcutDialog::refuse(const QString &problem)
{
    check();
    setNotice(problem);
}
