// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/HotkeyForm.h"

#include "automation/AgentLink.h"
#include "automation/AgentLogView.h"
#include "automation/HotkeyAddDialog.h"
#include "platform/Dialogs.h"
#include "platform/TopLevelWindows.h"
#include "settings/HotKeySettings.h"
#include "widgets/Controls.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"
#include "widgets/PageHeader.h"
#include "widgets/Theme.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

using namespace automation;

namespace
{

enum Column { shortcutColumn, actionColumn, columnCount };
constexpr int commandRole = Qt::UserRole + 1;
constexpr int refreshInterval = 1000; // ms, while the page is visible

} // namespace

HotkeyForm::HotkeyForm(QWidget *parent)
    : FLWidget(parent),
      m_model(new QStandardItemModel(0, columnCount, this))
{
    buildWidgets();
    buildLayout();
    connectWidgets();
    load();
    showAgent();
    m_log->refresh();
}

void HotkeyForm::buildWidgets()
{
    m_enabled = new QCheckBox(tr("Enable Shortcut Keys"), this);
    m_enabled->setObjectName(QStringLiteral("checkBox"));
    m_toolBar = new QToolBar(this);
    m_toolBar->setObjectName(QStringLiteral("toolBar"));
    m_add = controls::toolButton(this, {"AddButton", "Add24", tr("Add"), {}, QKeySequence::New}, true);
    m_edit = controls::toolButton(this, {"EditButton", "Edit24", tr("Edit"), {}, Qt::Key_F2}, true);
    m_remove = controls::toolButton(
        this, {"RemoveButton", "Cancel24", tr("Remove"), {}, QKeySequence::Delete}, true);
    m_up = controls::toolButton(
        this, {"UpButton", "ArrowUp24", tr("Move Up"), {}, QKeySequence(Qt::CTRL | Qt::Key_Up)}, true);
    m_down = controls::toolButton(
        this, {"DownButton", "ArrowDown24", tr("Move Down"), {}, QKeySequence(Qt::CTRL | Qt::Key_Down)},
        true);
    m_test = controls::toolButton(
        this, {"TestButton", "Activate24", tr("Test"), tr("Do now what the shortcut does")}, true);
    for (QToolButton *button : {m_add, m_edit, m_remove, m_up, m_down, m_test})
        m_toolBar->addWidget(button);

    m_model->setHorizontalHeaderLabels({tr("Shortcut"), tr("Action")});
    m_view = new FLTreeView(this);
    m_view->setObjectName(QStringLiteral("treeView"));
    m_view->setAccessibleName(tr("Shortcuts"));
    m_view->setModel(m_model);
    m_view->setRootIsDecorated(false);
    m_view->setSortingEnabled(false);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setPlaceholder(tr("No shortcuts yet. \"Add\" makes the first one."));
    m_view->header()->resizeSection(shortcutColumn, 220);

    m_notice = new NoticeBar(this);
    m_conflicts = new NoticeBar(this);
    m_conflicts->setObjectName(QStringLiteral("conflictsNotice"));
    m_agent = new QLabel(this);
    m_agent->setObjectName(QStringLiteral("agentLabel"));
    m_startAgent = controls::pushButton(this, {"startAgentButton", "", tr("Start the Agent")});
    m_log = new AgentLogView(features::shortcutKeys, this);
}

void HotkeyForm::buildLayout()
{
    auto *header = new PageHeader(PageHeader::Kind::Start, this);
    header->setTitle(tr("Shortcut Keys"));
    header->setText(
        tr("Keyboard shortcuts that open apps, folders and websites, paste plain text, or restart "
           "Windows. The background agent carries them out, also while this window is closed."));
    auto *agentRow = new QHBoxLayout;
    agentRow->addWidget(m_enabled);
    agentRow->addStretch();
    agentRow->addWidget(m_agent);
    agentRow->addWidget(m_startAgent);
    auto *logTitle = new QLabel(tr("What happened"), this);
    logTitle->setFont(theme::sectionTitle(font()));

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::pageMargin);
    layout->setSpacing(theme::space);
    layout->addWidget(header);
    layout->addWidget(m_notice);
    layout->addLayout(agentRow);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_view, 3);
    layout->addWidget(m_conflicts);
    layout->addWidget(logTitle);
    layout->addWidget(m_log, 1);
}

void HotkeyForm::connectWidgets()
{
    connect(m_add, &QToolButton::clicked, this, &HotkeyForm::add);
    connect(m_edit, &QToolButton::clicked, this, &HotkeyForm::editCurrent);
    connect(m_remove, &QToolButton::clicked, this, &HotkeyForm::removeCurrent);
    connect(m_test, &QToolButton::clicked, this, &HotkeyForm::testCurrent);
    connect(m_up, &QToolButton::clicked, this, [this] { moveCurrent(-1); });
    connect(m_down, &QToolButton::clicked, this, [this] { moveCurrent(1); });
    connect(m_view, &QAbstractItemView::activated, this, &HotkeyForm::editCurrent);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &HotkeyForm::OnTreeViewSelectionChanged);
    connect(m_startAgent, &QPushButton::clicked, this, [this] {
        startAgent();
        showAgent();
    });
    m_enabled->setChecked(settings::hotKeysEnabled.read());
    connect(m_enabled, &QCheckBox::toggled, this, [this](bool on) {
        settings::hotKeysEnabled.write(on);
        apply();
    });
    m_refresh.setInterval(refreshInterval);
    connect(&m_refresh, &QTimer::timeout, this, [this] {
        if (!isVisible())
            return;
        showAgent();
        showConflicts();
        m_log->refresh();
    });
    m_refresh.start();
    OnTreeViewSelectionChanged({}, {});
}

void HotkeyForm::load()
{
    for (const QString &command : settings::hotKeyCommands.read())
        appendRow(command);
}

void HotkeyForm::appendRow(const QString &command)
{
    m_model->insertRow(m_model->rowCount());
    showRow(m_model->rowCount() - 1, command);
}

void HotkeyForm::showRow(int row, const QString &command)
{
    m_model->setData(m_model->index(row, shortcutColumn), keyText(command));
    m_model->setData(m_model->index(row, shortcutColumn), command, commandRole);
    m_model->setData(m_model->index(row, actionColumn), actionText(command));
}

QString HotkeyForm::commandAt(int row) const
{
    return m_model->index(row, shortcutColumn).data(commandRole).toString();
}

int HotkeyForm::currentRow() const
{
    const QModelIndexList rows = m_view->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

bool HotkeyForm::isTaken(const QString &command, int except)
{
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (row != except && sameKeys(command, commandAt(row))) {
            platform::dialogs().inform(
                this, tr("Duplicate Found"),
                tr("%1 is already used. Please use another combination.").arg(keyText(command)));
            return true;
        }
    }
    return false;
}

void HotkeyForm::insertData(const QString &command)
{
    if (isTaken(command, -1))
        return;
    appendRow(command);
    m_view->setCurrentIndex(m_model->index(m_model->rowCount() - 1, shortcutColumn));
    store();
}

void HotkeyForm::replace(int row, const QString &command)
{
    if (row >= m_model->rowCount() || isTaken(command, row))
        return;
    showRow(row, command);
    store();
}

void HotkeyForm::store()
{
    QStringList commands;
    for (int row = 0; row < m_model->rowCount(); ++row)
        commands.append(commandAt(row));
    if (!settings::hotKeyCommands.write(commands))
        m_notice->showNotice(NoticeBar::Kind::Error, tr("Windows refused to store the shortcuts."));
    apply();
}

void HotkeyForm::apply()
{
    applyToAgent(m_enabled->isChecked());
    showAgent();
    m_refresh.start(); // gives the agent a whole interval to load the stored shortcuts
}

void HotkeyForm::add()
{
    auto *dialog = new HotkeyAddDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &HotkeyAddDialog::insertDataSignal, this, &HotkeyForm::insertData);
    dialog->open();
}

void HotkeyForm::editCurrent()
{
    const int row = currentRow();
    if (row < 0)
        return;
    auto *dialog = new HotkeyAddDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    if (const auto command = parseCommand(commandAt(row)))
        dialog->edit(*command);
    connect(dialog, &HotkeyAddDialog::insertDataSignal, this,
            [this, row](const QString &changed) { replace(row, changed); });
    dialog->open();
}

void HotkeyForm::removeCurrent()
{
    const int row = currentRow();
    if (row < 0)
        return;
    m_model->removeRow(row);
    store();
}

void HotkeyForm::moveCurrent(int by)
{
    const int row = currentRow(), other = row + by;
    if (row < 0 || other < 0 || other >= m_model->rowCount())
        return;
    m_model->insertRow(other, m_model->takeRow(row));
    m_view->setCurrentIndex(m_model->index(other, shortcutColumn));
    store();
}

void HotkeyForm::testCurrent()
{
    const int row = currentRow();
    if (row >= 0 && !postToAgent(platform::messageTestHotKey, static_cast<unsigned>(row)))
        m_notice->showNotice(
            NoticeBar::Kind::Info,
            tr("The background agent does what a shortcut asks for, and it is not running."));
}

void HotkeyForm::OnTreeViewSelectionChanged(const QItemSelection &, const QItemSelection &)
{
    const int row = currentRow();
    for (QToolButton *button : {m_edit, m_remove, m_test})
        button->setEnabled(row >= 0);
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_model->rowCount());
}

void HotkeyForm::showAgent()
{
    const bool runs = agentRuns();
    m_agent->setText(runs ? tr("The background agent is running.")
                          : tr("The background agent is not running."));
    m_startAgent->setVisible(!runs && m_enabled->isChecked());
}

// Marks the rows of shortcuts that the agent could not register, and lists them below.
void HotkeyForm::showConflicts()
{
    QStringList taken;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        QStandardItem *item = m_model->item(row, shortcutColumn);
        const auto command = parseCommand(commandAt(row));
        const bool refused = command && isKeyTaken(*command, m_enabled->isChecked());
        if (refused)
            taken.append(item->text());
        if (refused == item->icon().isNull()) {
            item->setIcon(refused ? controls::image("Warning16") : QIcon());
            item->setToolTip(refused ? tr("Windows or another program uses this combination.") : QString());
        }
    }
    const QString text =
        taken.isEmpty()
            ? QString()
            : tr("Windows or another program uses %1: it does nothing here until that ends. Another "
                 "combination works at once.")
                  .arg(taken.join(QStringLiteral(", ")));
    if (text == m_conflictsShown)
        return;
    m_conflictsShown = text;
    if (text.isEmpty())
        m_conflicts->hide();
    else
        m_conflicts->showNotice(NoticeBar::Kind::Warning, text);
}
