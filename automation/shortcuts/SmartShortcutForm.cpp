// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/shortcuts/SmartShortcutForm.h"

#include "automation/shortcuts/ShortcutTest.h"
#include "automation/shortcuts/SmartShortcutDialog.h"
#include "automation/shortcuts/SmartShortcutList.h"
#include "platform/Dialogs.h"
#include "platform/GuardedRemoval.h"
#include "platform/GuardedText.h"
#include "platform/Shell.h"
#include "settings/SmartShortcutSettings.h"
#include "widgets/Controls.h"
#include "widgets/DropFrame.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NoticeBar.h"
#include "widgets/PageHeader.h"
#include "widgets/Theme.h"

#include <QItemSelectionModel>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>

using namespace automation;

namespace
{

QString starterPath()
{
    return settings::installationFolder() + u'\\' + starterName.toString();
}

ShortcutWish wishOf(const SmartShortcut &shortcut)
{
    ShortcutWish wish{
        shortcut.name, {}, shortcut.file.workingFolder, shortcut.file.description, shortcut.file.window};
    if (shortcut.start)
        wish.start = *shortcut.start;
    return wish;
}

} // namespace

SmartShortcutForm::SmartShortcutForm(QWidget *parent) : FLWidget(parent), m_jobs(this)
{
    buildWidgets();
    buildLayout();
    connectWidgets();
    setOwnFolder(settings::smartShortcutFolder.read());
    showButtons();
}

void SmartShortcutForm::buildWidgets()
{
    m_frame = new DropFrame(this);
    m_frame->setAccepts(DropFrame::Accepts::Anything);
    m_frame->setHint(tr("A program, or a shortcut to one"));
    m_toolBar = new QToolBar(this);
    m_toolBar->setObjectName(QStringLiteral("toolBar"));
    m_add = controls::toolButton(this, {"AddButton", "Add24", tr("Add"), {}, QKeySequence::New}, true);
    m_edit = controls::toolButton(this, {"EditButton", "Edit24", tr("Edit"), {}, Qt::Key_F2}, true);
    m_remove = controls::toolButton(this,
                                    {"RemoveButton", "Cancel24", tr("Remove"),
                                     tr("Move the shortcut to the recycle bin"), QKeySequence::Delete},
                                    true);
    m_test = controls::toolButton(this,
                                  {"TestButton", "Activate24", tr("Test"),
                                   tr("Start the program, and look at its priority"), Qt::Key_F9},
                                  true);
    m_repair = controls::toolButton(this,
                                    {"RepairButton", "FolderSearch24", tr("Repair"),
                                     tr("Find a program that has moved, or use this installation's starter")},
                                    true);
    m_reveal = controls::toolButton(
        this, {"RevealButton", "Explorer24", tr("Show in Explorer"), {}, QKeySequence(Qt::CTRL | Qt::Key_E)});
    m_again = controls::toolButton(
        this, {"RefreshButton", "Refresh24", tr("Read the folders again"), {}, QKeySequence::Refresh});
    for (QToolButton *button : {m_add, m_edit, m_remove, m_test, m_repair, m_reveal, m_again})
        m_toolBar->addWidget(button);

    m_view = new SmartShortcutList(this);
    m_notice = new NoticeBar(this);
    m_broken = new NoticeBar(this);
    m_broken->setObjectName(QStringLiteral("brokenNotice"));
    m_ownFolder = new ElidedLabel(this);
    m_ownFolder->setObjectName(QStringLiteral("ownFolderLabel"));
    m_chooseFolder = controls::pushButton(this, {"ownFolderButton", "", tr("Choose...")});
    m_noFolder = controls::pushButton(this, {"noFolderButton", "", tr("None")});
}

void SmartShortcutForm::buildLayout()
{
    auto *header = new PageHeader(PageHeader::Kind::Start, this);
    header->setTitle(tr("Smart Shortcut"));
    header->setText(
        tr("Shortcuts that start a program at the priority of your choice. They are ordinary files on "
           "the desktop or in the Start menu, and work while this window is closed."));
    auto *caption = new QLabel(tr("Your own folder of shortcuts:"), this);
    auto *folderRow = new QHBoxLayout;
    folderRow->setSpacing(theme::spaceSnug);
    folderRow->addWidget(caption);
    folderRow->addWidget(m_ownFolder, 1);
    folderRow->addWidget(m_chooseFolder);
    folderRow->addWidget(m_noFolder);

    auto *layout = new QVBoxLayout(m_frame);
    layout->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::space);
    layout->setSpacing(theme::space);
    layout->addWidget(header);
    layout->addWidget(m_notice);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_broken);
    layout->addLayout(folderRow);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(m_frame);
}

void SmartShortcutForm::connectWidgets()
{
    connect(m_add, &QToolButton::clicked, this, [this] { add(); });
    connect(m_edit, &QToolButton::clicked, this, &SmartShortcutForm::editCurrent);
    connect(m_remove, &QToolButton::clicked, this, &SmartShortcutForm::removeCurrent);
    connect(m_test, &QToolButton::clicked, this, &SmartShortcutForm::testCurrent);
    connect(m_repair, &QToolButton::clicked, this, &SmartShortcutForm::repairCurrent);
    connect(m_reveal, &QToolButton::clicked, this, [this] {
        if (const SmartShortcut *shortcut = m_view->current())
            platform::shell().revealInExplorer(shortcut->item.path);
    });
    connect(m_again, &QToolButton::clicked, this, [this] { refresh(); });
    connect(m_view, &QAbstractItemView::activated, this, &SmartShortcutForm::editCurrent);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &SmartShortcutForm::showButtons);
    connect(m_chooseFolder, &QPushButton::clicked, this, &SmartShortcutForm::chooseOwnFolder);
    connect(m_noFolder, &QPushButton::clicked, this, [this] {
        settings::smartShortcutFolder.write({});
        setOwnFolder({});
        refresh();
    });
    connect(m_frame, &DropFrame::pathsDropped, this,
            [this](const QStringList &paths) { add(paths.first()); });
}

// Reloads, since Explorer, installers and the user may change these folders.
void SmartShortcutForm::showEvent(QShowEvent *event)
{
    FLWidget::showEvent(event);
    refresh();
}

void SmartShortcutForm::refresh(const QString &selected)
{
    const SmartShortcut *now = m_view->current();
    const QString path = !selected.isEmpty() ? selected : now ? now->item.path : QString();
    m_search.ask(
        [places = shortcutPlaces(settings::smartShortcutFolder.read()), starter = starterPath()](
            const core::Asking &asking) { return findSmartShortcuts(places, starter, asking.cancel()); },
        [this, path](ShortcutSearch search) { showFound(std::move(search), path); });
}

void SmartShortcutForm::showFound(ShortcutSearch search, const QString &selected)
{
    const qsizetype broken = std::ranges::count_if(search.found, std::not_fn(isReady));
    m_view->setShortcuts(std::move(search.found), selected);
    showButtons();
    if (!search.unreadable.isEmpty())
        m_broken->showNotice(NoticeBar::Kind::Warning,
                             tr("%1 cannot be read.").arg(search.unreadable.join(QStringLiteral(", "))));
    else if (broken > 0)
        m_broken->showNotice(
            NoticeBar::Kind::Warning,
            broken == 1
                ? tr("One shortcut does not work any more. Select it, and choose \"Repair\".")
                : tr("%1 shortcuts do not work any more. Select one, and choose \"Repair\".").arg(broken));
    else
        m_broken->hide();
}

void SmartShortcutForm::showButtons()
{
    const SmartShortcut *shortcut = m_view->current();
    for (QToolButton *button : {m_edit, m_remove, m_reveal})
        button->setEnabled(shortcut != nullptr);
    m_test->setEnabled(shortcut && isReady(*shortcut));
    m_repair->setEnabled(shortcut && shortcut->start && !isReady(*shortcut));
}

void SmartShortcutForm::openDialog(SmartShortcutDialog *dialog, std::function<void()> save)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &SmartShortcutDialog::saveRequested, this, std::move(save));
    dialog->open();
}

void SmartShortcutForm::add(const QString &path)
{
    auto *dialog = new SmartShortcutDialog(shortcutPlaces(settings::smartShortcutFolder.read()), this);
    if (!path.isEmpty())
        dialog->propose(path);
    openDialog(dialog, [this, dialog] {
        const ShortcutWish wish = dialog->wish();
        const QString folder = dialog->folder();
        store(dialog, folder + u'\\' + wish.name + QStringLiteral(".lnk"),
              [folder, wish, starter = starterPath()] { return makeShortcut(folder, wish, starter); });
    });
}

void SmartShortcutForm::editCurrent()
{
    const SmartShortcut *shortcut = m_view->current();
    if (!shortcut)
        return;
    auto *dialog = new SmartShortcutDialog({}, this);
    dialog->edit(*shortcut);
    openDialog(dialog, [this, dialog, shortcut = *shortcut] {
        const ShortcutWish wish = dialog->wish();
        store(dialog, shortcut.item.folder() + u'\\' + wish.name + QStringLiteral(".lnk"),
              [shortcut, wish, starter = starterPath()] { return changeShortcut(shortcut, wish, starter); });
    });
}

// With a dialog, problems are reported there and it stays open; otherwise on the page.
void SmartShortcutForm::store(SmartShortcutDialog *dialog, const QString &path,
                              std::function<QString()> write)
{
    if (m_jobs.isBusy()) {
        if (dialog)
            dialog->refuse(tr("Another shortcut is being stored. Try again in a moment."));
        return;
    }
    m_jobs.run(
        {.busyText = tr("storing a shortcut")},
        [write = std::move(write)](const core::JobControl &) { return write(); },
        [this, path, dialog = QPointer(dialog)](auto &job) {
            const QString problem =
                job.error().isEmpty() ? job.takeResult().value_or(QString()) : job.error();
            if (dialog && !problem.isEmpty())
                dialog->refuse(problem);
            else if (dialog)
                dialog->accept();
            else if (!problem.isEmpty())
                m_notice->showNotice(NoticeBar::Kind::Error, problem);
            refresh(problem.isEmpty() ? path : QString());
        });
}

void SmartShortcutForm::removeCurrent()
{
    const SmartShortcut *shortcut = m_view->current();
    if (!shortcut || m_jobs.isBusy())
        return;
    m_jobs.run(
        {.busyText = tr("removing a shortcut")},
        [item = shortcut->item](const core::JobControl &) { return platform::moveShownItem(item); },
        [this, name = shortcut->name](auto &job) {
            const platform::Guarded result = job.takeResult().value_or(platform::Guarded::Failed);
            if (result == platform::Guarded::Done)
                m_notice->showNotice(NoticeBar::Kind::Success, tr("\"%1\" is in the recycle bin.").arg(name));
            else if (result == platform::Guarded::Untraced)
                m_notice->showNotice(NoticeBar::Kind::Warning,
                                     tr("\"%1\" is gone from its place, but Windows did not tell where it "
                                        "went. Look for it in the recycle bin.")
                                         .arg(name));
            else
                m_notice->showNotice(
                    NoticeBar::Kind::Error,
                    tr("\"%1\" was left where it is: %2.").arg(name, platform::guardedText(result)));
            refresh();
        });
}

void SmartShortcutForm::testCurrent()
{
    const SmartShortcut *shortcut = m_view->current();
    if (!shortcut || !isReady(*shortcut) || m_jobs.isBusy())
        return;
    const ShortcutTest test(*shortcut->start);
    if (!platform::shell().openFile(shortcut->item.path)) {
        m_notice->showNotice(NoticeBar::Kind::Error, tr("Windows did not start \"%1\".").arg(shortcut->name));
        return;
    }
    m_notice->showNotice(NoticeBar::Kind::Info, tr("Waiting for the program ..."));
    m_jobs.run(
        {.busyText = tr("the test of a shortcut")},
        [test](const core::JobControl &job) { return test.await(job.cancel); },
        [this](auto &job) {
            const auto found = job.takeResult();
            if (found && !job.stopRequested())
                m_notice->showNotice(found->asWanted ? NoticeBar::Kind::Success : NoticeBar::Kind::Warning,
                                     found->text);
        });
}

void SmartShortcutForm::repairCurrent()
{
    const SmartShortcut *shortcut = m_view->current();
    if (!shortcut || !shortcut->start)
        return;
    const SmartShortcut broken = *shortcut;
    ShortcutWish wish = wishOf(broken);
    if (!broken.programIsThere) {
        const QString &program = broken.start->program;
        const QStringList files = platform::dialogs().chooseFilesToOpen(
            this, tr("Find %1").arg(program.mid(program.lastIndexOf(u'\\') + 1)),
            program.left(program.lastIndexOf(u'\\')), tr("Programs (*.exe *.com)"));
        if (files.isEmpty())
            return;
        // A working folder equal to the program's own folder is updated with it.
        const QString old = program.left(program.lastIndexOf(u'\\'));
        if (wish.workingFolder.compare(old, Qt::CaseInsensitive) == 0)
            wish.workingFolder.clear();
        wish.start.program = files.first();
    }
    store(nullptr, broken.item.path,
          [broken, wish, starter = starterPath()] { return changeShortcut(broken, wish, starter); });
}

void SmartShortcutForm::chooseOwnFolder()
{
    const QString folder = platform::dialogs().chooseFolder(this, tr("Your own folder of shortcuts"),
                                                            settings::smartShortcutFolder.read());
    if (folder.isEmpty())
        return;
    if (!settings::smartShortcutFolder.write(folder))
        m_notice->showNotice(NoticeBar::Kind::Error, tr("Windows refused to store the setting."));
    setOwnFolder(folder);
    refresh();
}

void SmartShortcutForm::setOwnFolder(const QString &folder)
{
    m_ownFolder->setText(folder.isEmpty() ? tr("None") : folder);
    m_noFolder->setVisible(!folder.isEmpty());
}
