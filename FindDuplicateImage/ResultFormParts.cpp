// SPDX-License-Identifier: GPL-3.0-or-later

// How the results page is put together.
#include "FindDuplicate/engine/ListedGroups.h"
#include "FindDuplicateImage/ComparePane.h"
#include "FindDuplicateImage/FindDuplicateImageResultForm.h"
#include "FindDuplicateImage/ImageGroupModel.h"
#include "FindDuplicateImage/ImageMemberModel.h"
#include "FindDuplicateImage/PictureDelegates.h"
#include "platform/Shell.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLineEdit>
#include <QListView>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

using duplicates::GroupOrder;

namespace
{

constexpr int searchDelay = 150; // ms

QIcon image(const char *name)
{
    return QIcon(QStringLiteral(":/resources/images/%1.png").arg(QLatin1String(name)));
}

} // namespace

FindDuplicateImageResultForm::FindDuplicateImageResultForm(QWidget *parent)
    : QWidget(parent),
      m_groups(new ImageGroupModel(m_thumbnails, this)),
      m_members(new ImageMemberModel(m_thumbnails, this)),
      m_removal(new duplicates::MemberRemoval(this)),
      m_toolBar(new QToolBar(this)),
      m_title(new ElidedLabel(this, Qt::ElideMiddle)),
      m_totals(new ElidedLabel(this)),
      m_notice(new NoticeBar(this)),
      m_splitter(new QSplitter(Qt::Horizontal, this)),
      m_search(new QLineEdit(this)),
      m_order(new QComboBox(this)),
      m_side(new FLTreeView(this)),
      m_main(new QListView(this)),
      m_compare(new ComparePane(this)),
      m_jobs(this)
{
    buildToolBar();
    buildGroupList();
    buildMemberList();
    buildLayout();
    buildActions();
    connectAll();
    showButtons();
}

QToolButton *FindDuplicateImageResultForm::addTool(const char *name, const char *icon, const QString &text)
{
    auto *button = new QToolButton(m_toolBar);
    button->setObjectName(QLatin1String(name));
    button->setText(text);
    button->setIcon(image(icon));
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

void FindDuplicateImageResultForm::buildToolBar()
{
    m_toolBar->setObjectName(QStringLiteral("toolBar"));
    m_toolBar->setIconSize({24, 24});
    m_toolBar->setMovable(false);
    m_back = addTool("backButton", "ArrowLeft24", tr("Back"));
    m_back->setToolTip(tr("Back to the start page (Alt+Left)"));
    m_open = addTool("openButton", "Activate24", tr("Open File"));
    m_open->setToolTip(tr("Open the selected pictures with their programs (Ctrl+O)"));
    m_explorer = addTool("explorerButton", "FolderSearch24", tr("Explorer"));
    m_explorer->setToolTip(tr("Show the selected pictures in Explorer (Ctrl+E)"));
    m_recycle = addTool("RecycleBinButton", "RecycleBin24", tr("Move to Recycle Bin"));
    m_recycle->setToolTip(
        tr("Move the selected picture to the recycle bin (Delete in the list of pictures)"));

    auto *texts = new QWidget(m_toolBar);
    auto *column = new QVBoxLayout(texts);
    column->setContentsMargins(theme::spaceSnug, 0, theme::spaceSnug, 0);
    column->setSpacing(0);
    m_title->setObjectName(QStringLiteral("resultTitleLabel"));
    m_title->setFont(theme::sectionTitle(font()));
    m_totals->setObjectName(QStringLiteral("resultTotalsLabel"));
    theme::makeMuted(m_totals);
    column->addWidget(m_title);
    column->addWidget(m_totals);
    texts->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_toolBar->addWidget(m_back);
    m_toolBar->addWidget(texts);
    for (QToolButton *button : {m_open, m_explorer, m_recycle})
        m_toolBar->addWidget(button);
}

void FindDuplicateImageResultForm::buildGroupList()
{
    m_search->setObjectName(QStringLiteral("searchEdit"));
    m_search->setPlaceholderText(tr("Search by name or folder"));
    m_search->setAccessibleName(tr("Search by name or folder"));
    m_search->setToolTip(tr("Lists the groups with a picture of that name or folder (Ctrl+F)"));
    m_search->setClearButtonEnabled(true);
    m_search->addAction(image("Search16"), QLineEdit::LeadingPosition);
    m_order->setObjectName(QStringLiteral("orderComboBox"));
    m_order->setAccessibleName(tr("Order"));
    for (const auto &[order, text] : {std::pair{GroupOrder::Report, tr("Largest file first")},
                                      {GroupOrder::Freeable, tr("Most to free first")},
                                      {GroupOrder::Members, tr("Most pictures first")},
                                      {GroupOrder::Name, tr("By name")},
                                      {GroupOrder::Folder, tr("By folder")}})
        m_order->addItem(text, static_cast<int>(order));

    m_side->setObjectName(QStringLiteral("sideTreeView"));
    m_side->setAccessibleName(tr("Groups of pictures that are alike"));
    m_side->setPlaceholder(tr("No group has a file of that name or folder."));
    m_side->setModel(m_groups);
    m_side->setItemDelegate(new ImageGroupDelegate(m_side));
    setFocusProxy(m_side);
    m_side->setHeaderHidden(true);
    m_side->setRootIsDecorated(false);
    m_side->setAllColumnsShowFocus(false); // the delegate shows it
    m_side->setMouseTracking(true);
    m_side->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_side->setContextMenuPolicy(Qt::CustomContextMenu);
    m_side->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void FindDuplicateImageResultForm::buildMemberList()
{
    m_main->setObjectName(QStringLiteral("mainTreeView"));
    m_main->setAccessibleName(tr("Pictures of the group"));
    m_main->setModel(m_members);
    m_main->setItemDelegate(new ImageMemberDelegate(m_main));
    m_main->setFlow(QListView::LeftToRight);
    m_main->setWrapping(true);
    m_main->setResizeMode(QListView::Adjust);
    m_main->setUniformItemSizes(true);
    m_main->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_main->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_main->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_main->setMouseTracking(true);
    m_main->setFrameShape(QFrame::NoFrame);
    m_main->setContextMenuPolicy(Qt::CustomContextMenu);
    m_main->viewport()->setAutoFillBackground(false);
}

QWidget *FindDuplicateImageResultForm::buildRight()
{
    auto *right = new QSplitter(Qt::Vertical, this);
    right->addWidget(m_main);
    right->addWidget(m_compare);
    right->setStretchFactor(0, 1);
    right->setStretchFactor(1, 3);
    right->setChildrenCollapsible(false);
    right->setSizes({122, 300});
    return right;
}

void FindDuplicateImageResultForm::buildLayout()
{
    auto *left = new QWidget(this);
    auto *column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(theme::spaceSnug);
    column->addWidget(m_search);
    column->addWidget(m_order);
    column->addWidget(m_side, 1);

    m_splitter->addWidget(left);
    m_splitter->addWidget(buildRight());
    m_splitter->setStretchFactor(0, 0);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setSizes({236, 640});

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::space, theme::spaceSnug, theme::space, theme::space);
    layout->setSpacing(theme::spaceSnug);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_notice);
    layout->addWidget(m_splitter, 1);
}

void FindDuplicateImageResultForm::buildActions()
{
    const auto add = [this](QWidget *owner, const QString &text, const QKeySequence &key, auto slot) {
        auto *action = new QAction(text, this);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        owner->addAction(action);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    const auto addMember = [this, add](const char *name, const char *icon, const QString &text,
                                       const QKeySequence &key, auto slot) {
        QAction *action = add(m_main, text, key, slot);
        action->setObjectName(QLatin1String(name));
        action->setIcon(image(icon));
        return action;
    };
    m_openAction = addMember("openAction", "Activate24", tr("Open File"), Qt::CTRL | Qt::Key_O,
                             &FindDuplicateImageResultForm::on_openButton_clicked);
    m_explorerAction =
        addMember("showInExplorerAction", "FolderSearch24", tr("Show in Explorer"), Qt::CTRL | Qt::Key_E,
                  &FindDuplicateImageResultForm::on_explorerButton_clicked);
    m_copyAction = addMember("copyPathAction", "Copy24", tr("Copy Path"), QKeySequence::Copy,
                             &FindDuplicateImageResultForm::copyPath);
    m_recycleAction =
        addMember("recycleAction", "RecycleBin24", tr("Move to Recycle Bin"), QKeySequence::Delete,
                  &FindDuplicateImageResultForm::on_RecycleBinButton_clicked);
    m_openBin = new QAction(tr("Open Recycle Bin"), this);
    connect(m_openBin, &QAction::triggered, this, [this] {
        if (!platform::shell().openRecycleBin())
            warn(tr("The recycle bin could not be opened."));
    });
    m_cancelLook = new QAction(tr("Cancel"), this);
    connect(m_cancelLook, &QAction::triggered, m_removal, &duplicates::MemberRemoval::requestStop);
    add(this, tr("Refresh"), QKeySequence::Refresh, &FindDuplicateImageResultForm::refresh);
    add(this, tr("Search"), QKeySequence::Find, [this] {
        m_search->setFocus();
        m_search->selectAll();
    });
    m_back->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Left));
}

void FindDuplicateImageResultForm::connectAll()
{
    connect(m_back, &QAbstractButton::clicked, this, &FindDuplicateImageResultForm::backToMain);
    connect(m_open, &QAbstractButton::clicked, this, &FindDuplicateImageResultForm::on_openButton_clicked);
    connect(m_explorer, &QAbstractButton::clicked, this,
            &FindDuplicateImageResultForm::on_explorerButton_clicked);
    connect(m_recycle, &QAbstractButton::clicked, this,
            &FindDuplicateImageResultForm::on_RecycleBinButton_clicked);
    m_searchLater.setSingleShot(true);
    m_searchLater.setInterval(searchDelay);
    connect(m_search, &QLineEdit::textChanged, &m_searchLater, qOverload<>(&QTimer::start));
    connect(&m_searchLater, &QTimer::timeout, this, &FindDuplicateImageResultForm::showListed);
    connect(m_order, &QComboBox::currentIndexChanged, this, &FindDuplicateImageResultForm::showListed);
    connect(m_side->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &FindDuplicateImageResultForm::showGroup);
    connect(m_main->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &FindDuplicateImageResultForm::showMember);
    connect(m_main->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &FindDuplicateImageResultForm::showMember);
    connect(m_main, &QWidget::customContextMenuRequested, this, &FindDuplicateImageResultForm::showMenu);
    connect(m_side, &QWidget::customContextMenuRequested, this, &FindDuplicateImageResultForm::showGroupMenu);
    connect(m_removal, &duplicates::MemberRemoval::lookTakesLong, this,
            &FindDuplicateImageResultForm::showLooking);
    connect(m_removal, &duplicates::MemberRemoval::lookEnded, m_notice, &QWidget::hide);
    connect(m_removal, &duplicates::MemberRemoval::finished, this,
            &FindDuplicateImageResultForm::afterRemoval);
}
