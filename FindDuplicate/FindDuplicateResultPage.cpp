// SPDX-License-Identifier: GPL-3.0-or-later
// How the results page is put together.
#include "FindDuplicate/FindDuplicateResultForm.h"

#include "FindDuplicate/GroupModel.h"
#include "FindDuplicate/MemberModel.h"
#include "FindDuplicate/engine/ListedGroups.h"
#include "platform/Shell.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLPopupMenu.h"
#include "widgets/FLTreeView.h"
#include "widgets/FileRowDelegate.h"
#include "widgets/NoticeBar.h"
#include "widgets/OpenSeveral.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

using duplicates::GroupOrder;

namespace
{

constexpr int searchDelay = 150; // ms
constexpr int readDelay = 30;    // ms
constexpr int progressTick = 50; // ms
constexpr int rowLines = 3;      // below the title; the last one is for the badges

QIcon image(const char *name)
{
    return QIcon(QStringLiteral(":/resources/images/%1.png").arg(QLatin1String(name)));
}

void dressList(FLTreeView *list)
{
    list->setItemDelegate(new FileRowDelegate(rowLines, list));
    list->setHeaderHidden(true);
    list->setRootIsDecorated(false);
    list->setContextMenuPolicy(Qt::CustomContextMenu);
}

} // namespace

FindDuplicateResultForm::FindDuplicateResultForm(QString root, std::shared_ptr<Groups> groups,
                                                 int foldersUnread, QWidget *parent)
    : QWidget(parent),
      m_root(std::move(root)),
      m_foldersUnread(foldersUnread),
      m_groups(std::move(groups)),
      m_toolBar(new QToolBar(this)),
      m_summary(new ElidedLabel(this)),
      m_note(new QLabel(this)),
      m_notice(new NoticeBar(this)),
      m_splitter(new QSplitter(Qt::Horizontal, this)),
      m_search(new QLineEdit(this)),
      m_order(new QComboBox(this)),
      m_groupTree(new FLTreeView(this)),
      m_groupTitle(new ElidedLabel(this)),
      m_compare(new QPushButton(image("Compare24"), tr("Compare contents"), this)),
      m_compareBar(new QProgressBar(this)),
      m_compareCancel(new QPushButton(tr("Cancel"), this)),
      m_memberTree(new FLTreeView(this)),
      m_groupModel(new GroupModel(this)),
      m_memberModel(new MemberModel(this)),
      m_removal(new duplicates::MemberRemoval(this)),
      m_jobs(this)
{
    buildToolBar();
    buildLayout();
    connectAll();
    buildActions();
    enableTools();
}

QToolButton *FindDuplicateResultForm::addTool(const char *name, const char *icon, const QString &text,
                                              const QString &toolTip)
{
    auto *button = new QToolButton(m_toolBar);
    button->setObjectName(QLatin1String(name));
    button->setIcon(image(icon));
    button->setText(text);
    button->setToolTip(toolTip);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    m_toolBar->addWidget(button);
    return button;
}

void FindDuplicateResultForm::buildToolBar()
{
    m_toolBar->setObjectName(QStringLiteral("toolBar"));
    m_toolBar->setIconSize({24, 24});
    m_toolBar->setMovable(false);
    m_back = addTool("backButton", "ArrowLeft24", tr("Back"), tr("Back to the start page (Alt+Left)"));
    m_open = addTool("openButton", "Activate24", tr("Open File"),
                     tr("Open the selected files with their programs; a program runs (Ctrl+O)"));
    m_explorer = addTool("explorerButton", "FolderSearch24", tr("Explorer"),
                         tr("Show the selected files in their folders (Ctrl+E)"));
    m_recycleBin =
        addTool("RecycleBinButton", "RecycleBin24", tr("Move to Recycle Bin"),
                tr("Ask, and move this one file to the recycle bin (Delete in the list of files)"));
}

void FindDuplicateResultForm::buildGroupList(QVBoxLayout *column)
{
    m_search->setObjectName(QStringLiteral("searchLineEdit"));
    m_search->setPlaceholderText(tr("Search by name or folder"));
    m_search->setAccessibleName(tr("Search by name or folder"));
    m_search->setToolTip(tr("Lists the groups with a file of that name or folder (Ctrl+F)"));
    m_search->setClearButtonEnabled(true);
    m_search->addAction(image("Search16"), QLineEdit::LeadingPosition);
    m_order->setObjectName(QStringLiteral("orderComboBox"));
    m_order->setAccessibleName(tr("Order"));
    for (const auto &[order, text] : {std::pair{GroupOrder::Report, tr("Largest file first")},
                                      {GroupOrder::Freeable, tr("Most to free first")},
                                      {GroupOrder::Members, tr("Most files first")},
                                      {GroupOrder::Name, tr("By name")},
                                      {GroupOrder::Folder, tr("By folder")}})
        m_order->addItem(text, static_cast<int>(order));
    m_groupTree->setObjectName(QStringLiteral("sideTreeView"));
    m_groupTree->setAccessibleName(tr("Groups of duplicates"));
    m_groupTree->setPlaceholder(tr("No group has a file of that name or folder."));
    dressList(m_groupTree);
    // Of several, the first files can be opened; the members shown are those of the current one.
    m_groupTree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_groupTree->setModel(m_groupModel);

    auto *line = new QHBoxLayout;
    line->setSpacing(theme::spaceSnug);
    line->addWidget(m_search, 1);
    line->addWidget(m_order);
    column->addLayout(line);
    column->addWidget(m_groupTree, 1);
}

void FindDuplicateResultForm::buildMemberList(QVBoxLayout *column)
{
    m_groupTitle->setObjectName(QStringLiteral("groupTitleLabel"));
    m_groupTitle->setFont(theme::sectionTitle(font()));
    m_compare->setObjectName(QStringLiteral("compareButton"));
    m_compare->setToolTip(tr("Read the files of this group and compare them byte by byte"));
    m_compareBar->setObjectName(QStringLiteral("compareProgressBar"));
    m_compareBar->setRange(0, 1000);
    m_compareBar->setTextVisible(false);
    m_compareBar->setFixedHeight(2 * theme::barHeight);
    m_compareBar->setAccessibleName(tr("Progress of the comparison"));
    m_compareBar->hide();
    m_compareCancel->setObjectName(QStringLiteral("compareCancelButton"));
    m_compareCancel->hide();
    m_memberTree->setObjectName(QStringLiteral("mainTreeView"));
    m_memberTree->setAccessibleName(tr("Files of the group"));
    dressList(m_memberTree);
    // For opening, showing and copying; only a single file is removed at a time.
    m_memberTree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_memberTree->setModel(m_memberModel);

    auto *line = new QHBoxLayout;
    line->setSpacing(theme::spaceSnug);
    line->addWidget(m_groupTitle, 1);
    line->addWidget(m_compareBar, 1);
    line->addWidget(m_compareCancel);
    line->addWidget(m_compare);
    column->addLayout(line);
    column->addWidget(m_memberTree, 1);
}

void FindDuplicateResultForm::buildLayout()
{
    m_summary->setObjectName(QStringLiteral("summaryLabel"));
    m_summary->setFont(theme::sectionTitle(font()));
    m_note->setObjectName(QStringLiteral("metadataNoteLabel"));
    m_note->setText(
        tr("Only type, size and last change were compared, not the contents: \"Compare contents\" "
           "tells whether the files of a group really are the same."));
    m_note->setWordWrap(true);
    theme::makeMuted(m_note);
    m_notice->setObjectName(QStringLiteral("noticeBar"));

    for (const auto build :
         {&FindDuplicateResultForm::buildGroupList, &FindDuplicateResultForm::buildMemberList}) {
        auto *side = new QWidget(m_splitter);
        auto *column = new QVBoxLayout(side);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(theme::spaceSnug);
        (this->*build)(column);
        m_splitter->addWidget(side);
    }
    m_splitter->setHandleWidth(theme::space);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setSizes({450, 550}); // a proportion: the splitter fits it to its width

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::space, theme::spaceSnug, theme::space, theme::space);
    layout->setSpacing(theme::spaceSnug);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_summary);
    layout->addWidget(m_note);
    layout->addWidget(m_notice);
    layout->addWidget(m_splitter, 1);
}

void FindDuplicateResultForm::connectAll()
{
    connect(m_back, &QAbstractButton::clicked, this, &FindDuplicateResultForm::backToMain);
    connect(m_open, &QAbstractButton::clicked, this, &FindDuplicateResultForm::on_openButton_clicked);
    connect(m_explorer, &QAbstractButton::clicked, this, &FindDuplicateResultForm::on_explorerButton_clicked);
    connect(m_recycleBin, &QAbstractButton::clicked, this,
            &FindDuplicateResultForm::on_RecycleBinButton_clicked);
    connect(m_compare, &QAbstractButton::clicked, this, &FindDuplicateResultForm::compareContents);
    connect(m_compareCancel, &QAbstractButton::clicked, this, &FindDuplicateResultForm::cancelComparison);
    m_searchLater.setSingleShot(true);
    m_searchLater.setInterval(searchDelay);
    connect(m_search, &QLineEdit::textChanged, &m_searchLater, qOverload<>(&QTimer::start));
    connect(&m_searchLater, &QTimer::timeout, this, &FindDuplicateResultForm::showListed);
    connect(m_order, &QComboBox::activated, this, &FindDuplicateResultForm::showListed);
    m_readLater.setSingleShot(true);
    m_readLater.setInterval(readDelay);
    connect(&m_readLater, &QTimer::timeout, this, &FindDuplicateResultForm::readGroup);
    m_compareTicker.setInterval(progressTick);
    connect(&m_compareTicker, &QTimer::timeout, this, &FindDuplicateResultForm::showCompareProgress);
    connect(m_groupTree->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &FindDuplicateResultForm::onMainTreeItemChanged);
    // A right click on one of several that are selected makes it the current one, and changes no selection.
    connect(m_groupTree->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &FindDuplicateResultForm::showGroup);
    connect(m_memberTree->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &FindDuplicateResultForm::onItemChanged);
    connect(m_removal, &duplicates::MemberRemoval::lookTakesLong, this,
            &FindDuplicateResultForm::showLooking);
    connect(m_removal, &duplicates::MemberRemoval::lookEnded, m_notice, &QWidget::hide);
    connect(m_removal, &duplicates::MemberRemoval::finished, this, &FindDuplicateResultForm::afterRemoval);
    connect(m_memberTree, &QWidget::customContextMenuRequested, this,
            &FindDuplicateResultForm::showMemberMenu);
    connect(m_groupTree, &QWidget::customContextMenuRequested, this, &FindDuplicateResultForm::showGroupMenu);
}

QAction *FindDuplicateResultForm::addKey(QWidget *owner, const QKeySequence &key, const QString &text)
{
    auto *action = new QAction(text, owner);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    owner->addAction(action);
    return action;
}

void FindDuplicateResultForm::buildActions()
{
    const auto press = [this](QWidget *owner, const QKeySequence &key, QAbstractButton *button) {
        connect(addKey(owner, key), &QAction::triggered, button, &QAbstractButton::click);
    };
    press(this, Qt::ALT | Qt::Key_Left, m_back);
    press(this, Qt::CTRL | Qt::Key_O, m_open);
    press(this, Qt::CTRL | Qt::Key_E, m_explorer);
    // Only where the file that it means is the one that the user looks at.
    press(m_memberTree, QKeySequence::Delete, m_recycleBin);
    m_openBin = new QAction(tr("Open Recycle Bin"), this);
    connect(m_openBin, &QAction::triggered, this, [this] {
        if (!platform::shell().openRecycleBin())
            showNotice(tr("The recycle bin could not be opened."));
    });
    m_cancelLook = new QAction(tr("Cancel"), this);
    connect(m_cancelLook, &QAction::triggered, m_removal, &duplicates::MemberRemoval::requestStop);
    connect(addKey(m_memberTree, QKeySequence::Copy), &QAction::triggered, this,
            &FindDuplicateResultForm::copyPath);
    connect(addKey(this, QKeySequence::Refresh), &QAction::triggered, this,
            &FindDuplicateResultForm::refresh);
    connect(addKey(this, QKeySequence::Find), &QAction::triggered, this, [this] {
        m_search->setFocus();
        m_search->selectAll();
    });
}

void FindDuplicateResultForm::showMemberMenu(const QPoint &where)
{
    auto *menu = new FLPopupMenu(m_memberTree);
    menu->setObjectName(QStringLiteral("memberMenu"));
    const auto add = [this, menu](const char *icon, const QString &text, const QKeySequence &key,
                                  bool enabled, auto slot) {
        QAction *action = menu->addAction(image(icon), text, this, slot);
        action->setShortcut(key);
        action->setShortcutVisibleInContextMenu(true);
        action->setEnabled(enabled);
    };
    add("Activate24", m_open->text(), Qt::CTRL | Qt::Key_O, m_open->isEnabled(),
        &FindDuplicateResultForm::on_openButton_clicked);
    add("FolderSearch24", m_explorer->text(), Qt::CTRL | Qt::Key_E, m_explorer->isEnabled(),
        &FindDuplicateResultForm::on_explorerButton_clicked);
    add("Copy24", tr("Copy Path"), QKeySequence::Copy, !selectedMembers().isEmpty(),
        &FindDuplicateResultForm::copyPath);
    menu->addSeparator();
    add("Compare24", m_compare->text(), {}, m_compare->isEnabled(),
        &FindDuplicateResultForm::compareContents);
    menu->addSeparator();
    add("RecycleBin24", m_recycleBin->text(), QKeySequence::Delete, m_recycleBin->isEnabled(),
        &FindDuplicateResultForm::on_RecycleBinButton_clicked);
    menu->popup(m_memberTree->viewport()->mapToGlobal(where));
}

void FindDuplicateResultForm::showGroupMenu(const QPoint &where)
{
    auto *menu = new FLPopupMenu(m_groupTree);
    menu->setObjectName(QStringLiteral("groupMenu"));
    addOpenFirsts(menu, duplicates::firstPaths(*m_groups, selectedGroups()),
                  [this](const OpenedSeveral &opened) { tell(opened); });
    menu->addSeparator();
    QAction *compare = menu->addAction(image("Compare24"), m_compare->text(), this,
                                       &FindDuplicateResultForm::compareContents);
    compare->setEnabled(m_compare->isEnabled());
    QAction *again =
        menu->addAction(image("Refresh24"), tr("Refresh"), this, &FindDuplicateResultForm::refresh);
    again->setShortcut(QKeySequence::Refresh);
    again->setShortcutVisibleInContextMenu(true);
    menu->popup(m_groupTree->viewport()->mapToGlobal(where));
}
