// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageStartForm.h"

#include "core/SizeText.h"
#include "platform/Dialogs.h"
#include "platform/KnownFolders.h"
#include "widgets/CardGridLayout.h"
#include "widgets/ClickableLabel.h"
#include "widgets/FLCardButton.h"
#include "widgets/NoticeBar.h"
#include "widgets/SlimScrollBar.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QShowEvent>
#include <QToolButton>
#include <QVBoxLayout>

using platform::Drive;

namespace
{

constexpr int cardWidth = 200;
constexpr int driveCardWidth = 275; // "NTFS, 1000.00 GB free of 1000.00 GB"
constexpr int widestCard = 340;

QString image(const QString &name)
{
    return QStringLiteral(":/resources/images/%1.png").arg(name);
}

QString driveIcon(Drive::Type type)
{
    switch (type) {
    case Drive::Type::Removable:
        return QStringLiteral("DriveUsb48");
    case Drive::Type::Network:
        return QStringLiteral("DriveNetwork48");
    case Drive::Type::Optical:
        return QStringLiteral("DriveCd48");
    default:
        return QStringLiteral("Drive48");
    }
}

// As Explorer names drives: the label, or the kind where there is none, and the letter.
QString driveName(const Drive &drive)
{
    QString name = drive.label;
    if (name.isEmpty()) {
        switch (drive.type) {
        case Drive::Type::Removable:
            name = DiskUsageStartForm::tr("Removable Disk");
            break;
        case Drive::Type::Network:
            name = DiskUsageStartForm::tr("Network Drive");
            break;
        case Drive::Type::Optical:
            name = DiskUsageStartForm::tr("CD Drive");
            break;
        case Drive::Type::RamDisk:
            name = DiskUsageStartForm::tr("RAM Disk");
            break;
        default:
            name = DiskUsageStartForm::tr("Local Disk");
        }
    }
    return QStringLiteral("%1 (%2)").arg(name, drive.root.left(2));
}

} // namespace

DiskUsageStartForm::DiskUsageStartForm(QWidget *parent) : DiskUsageStartForm(platform::readDrive, parent) {}

DiskUsageStartForm::DiskUsageStartForm(platform::DriveLister::Reader reader, QWidget *parent)
    : DropFrame(parent),
      m_select(new QPushButton(tr("Select folder to scan"), this)),
      m_options(new QToolButton(this)),
      m_notice(new NoticeBar(this)),
      m_recentTitle(new QLabel(tr("Recent Scanned Folders"), this)),
      m_clearRecent(new ClickableLabel(tr("Clear"), this)),
      m_lister(std::move(reader))
{
    setHint(tr("Drop the folder to scan it"));
    buildPage();
    connectAll();
}

DiskUsageStartForm::~DiskUsageStartForm() = default;

void DiskUsageStartForm::buildPage()
{
    auto *content = new QWidget(this);
    auto *page = new QVBoxLayout(content);
    page->setContentsMargins(theme::pageMargin, theme::spaceWide, theme::pageMargin, theme::pageMargin);
    page->setSpacing(theme::spaceSnug);
    page->addWidget(buildHeader());
    page->addWidget(m_notice);
    m_driveGrid = addSection(page, new QLabel(tr("Drives"), this), driveCardWidth);
    m_specialGrid = addSection(page, new QLabel(tr("Special Folders"), this), cardWidth);
    buildSpecialFolders();
    m_clearRecent->setAccessibleName(tr("Clear the recent folders"));
    m_recentGrid = addSection(page, m_recentTitle, cardWidth, m_clearRecent);
    page->addStretch();

    auto *scroll = new QScrollArea(this);
    scroll->setVerticalScrollBar(new SlimScrollBar);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(content);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);
    showRecentFolders({});
}

QWidget *DiskUsageStartForm::buildHeader()
{
    auto *header = new QWidget(this);
    auto *title = new QLabel(tr("Folder Size Analyzer"), header);
    title->setFont(theme::headline(font()));
    auto *hint = new QLabel(
        tr("See which folders and files fill a drive. You can also drop a folder on this page."), header);
    hint->setWordWrap(true);
    theme::makeMuted(hint);
    m_select->setObjectName(QStringLiteral("selectFolderButton"));
    m_select->setIcon(QIcon(image(QStringLiteral("FolderOpen24"))));
    m_select->setIconSize({24, 24});
    m_select->setMinimumHeight(40);
    theme::makePrimary(m_select);
    m_select->setShortcut(QKeySequence::Open);
    m_select->setToolTip(tr("Select folder to scan (Ctrl+O)"));
    m_options->setObjectName(QStringLiteral("optionsButton"));
    m_options->setIcon(QIcon(image(QStringLiteral("Settings24"))));
    m_options->setIconSize({24, 24});
    m_options->setText(tr("Options"));
    m_options->setToolTip(tr("File types and folders to leave out"));
    m_options->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_options->setAutoRaise(true);
    m_options->setFocusPolicy(Qt::StrongFocus);
    m_options->setMinimumHeight(40);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addWidget(title);
    texts->addWidget(hint);
    auto *layout = new QHBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::space);
    layout->addLayout(texts, 1);
    layout->addWidget(m_select);
    layout->addWidget(m_options);
    return header;
}

CardGridLayout *DiskUsageStartForm::addSection(QVBoxLayout *page, QLabel *title, int width, QWidget *beside)
{
    title->setFont(theme::sectionTitle(font()));
    auto *line = new QHBoxLayout;
    line->addWidget(title);
    if (beside)
        line->addWidget(beside, 0, Qt::AlignBottom);
    line->addStretch();
    page->addSpacing(theme::spaceSnug);
    page->addLayout(line);
    auto *grid = new CardGridLayout(width, widestCard, theme::spaceSnug);
    page->addLayout(grid);
    return grid;
}

FLCardButton *DiskUsageStartForm::addCard(CardGridLayout *grid, const QString &title, const QString &icon,
                                          const QString &folder)
{
    auto *card = new FLCardButton(this);
    card->setText(title);
    card->setIcon(QIcon(icon));
    card->setAccessibleName(title);
    grid->addWidget(card);
    card->show();
    connect(card, &QAbstractButton::clicked, this, [this, folder] { emit folderChosen(folder); });
    return card;
}

void DiskUsageStartForm::buildSpecialFolders()
{
    using platform::KnownFolder;
    const struct {
        KnownFolder folder;
        QString title;
        const char *icon;
    } special[] = {{KnownFolder::Desktop, tr("Desktop"), "Desktop24"},
                   {KnownFolder::Documents, tr("Documents"), "Documents24"},
                   {KnownFolder::Downloads, tr("Downloads"), "Downloads24"},
                   {KnownFolder::Music, tr("Music"), "Music24"},
                   {KnownFolder::Pictures, tr("Pictures"), "Pictures24"},
                   {KnownFolder::Videos, tr("Videos"), "Videos24"},
                   {KnownFolder::Profile, tr("Home folder"), "User24"}};
    for (const auto &[folder, title, icon] : special) {
        const QString path = platform::knownFolder(folder);
        if (path.isEmpty())
            continue;
        FLCardButton *card = addCard(m_specialGrid, title, image(QLatin1String(icon)), path);
        card->setToolTip(path);
    }
}

void DiskUsageStartForm::connectAll()
{
    connect(m_select, &QAbstractButton::clicked, this, &DiskUsageStartForm::selectFolder);
    connect(m_options, &QAbstractButton::clicked, this, &DiskUsageStartForm::optionsRequested);
    connect(m_clearRecent, &ClickableLabel::clicked, this, &DiskUsageStartForm::recentFoldersCleared);
    connect(this, &DropFrame::folderDropped, this, &DiskUsageStartForm::folderChosen);
    connect(&m_lister, &platform::DriveLister::driveRead, this, &DiskUsageStartForm::showDrive);
    auto *refresh = new QAction(this);
    refresh->setShortcuts(QKeySequence::Refresh);
    refresh->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(refresh);
    connect(refresh, &QAction::triggered, this, &DiskUsageStartForm::refreshDrives);
}

void DiskUsageStartForm::showEvent(QShowEvent *event)
{
    DropFrame::showEvent(event);
    if (!event->spontaneous()) // a window that is restored has its focus where it was
        m_select->setFocus();
    refreshDrives();
}

void DiskUsageStartForm::selectFolder()
{
    const QString folder = platform::dialogs().chooseFolder(this, tr("Select folder to scan"));
    if (!folder.isEmpty())
        emit folderChosen(folder);
}

void DiskUsageStartForm::refreshDrives()
{
    const QStringList roots = platform::driveRoots();
    const QStringList shown = m_driveCards.keys();
    for (const QString &gone : shown)
        if (!roots.contains(gone)) {
            m_drives.remove(gone);
            delete m_driveCards.take(gone);
        }
    for (const QString &root : roots) {
        if (m_driveCards.contains(root))
            continue;
        FLCardButton *card = addCard(m_driveGrid, root, image(driveIcon(Drive::Type::Unknown)), root);
        card->setObjectName(QStringLiteral("driveCard") + root.left(1));
        card->setIconSize({36, 36});
        card->setCaption(tr("Reading ..."));
        card->setShare(0);
        m_driveCards.insert(root, card);
    }
    while (QLayoutItem *item = m_driveGrid->takeAt(0))
        delete item;
    for (const QString &root : roots) // one that is plugged in stands in its place among the others
        m_driveGrid->addWidget(m_driveCards.value(root));
    orderTabs();
    m_lister.refresh(roots);
}

void DiskUsageStartForm::showDrive(const Drive &drive)
{
    FLCardButton *card = m_driveCards.value(drive.root);
    if (!card)
        return;
    m_drives.insert(drive.root, drive);
    emit driveRead(drive);
    card->setText(driveName(drive));
    card->setAccessibleName(card->text());
    card->setIcon(QIcon(image(driveIcon(drive.type))));
    card->setEnabled(drive.ready);
    if (!drive.ready) {
        card->setCaption(tr("Not ready"));
        card->setShare(0);
        return;
    }
    const quint64 used = drive.usedBytes();
    card->setCaption(
        tr("%1, %2 free of %3")
            .arg(drive.fileSystem, core::sizeText(drive.freeBytes), core::sizeText(drive.totalBytes)));
    card->setToolTip(tr("%1, %2\n%3 used\n%4 free\n%5 in all")
                         .arg(card->text(), drive.fileSystem, core::sizeText(used),
                              core::sizeText(drive.freeBytes), core::sizeText(drive.totalBytes)));
    card->setShare(drive.totalBytes == 0 ? 0
                                         : static_cast<double>(used) / static_cast<double>(drive.totalBytes));
}

std::optional<Drive> DiskUsageStartForm::drive(const QString &root) const
{
    const auto found = m_drives.constFind(root.toUpper());
    return found == m_drives.constEnd() || !found->ready ? std::nullopt : std::optional(*found);
}

void DiskUsageStartForm::showRecentFolders(const QStringList &folders)
{
    while (QLayoutItem *item = m_recentGrid->takeAt(0)) {
        // The card may be the one whose click is being handled.
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
    for (const QString &folder : folders) {
        const QString name = QFileInfo(folder).fileName();
        FLCardButton *card =
            addCard(m_recentGrid, name.isEmpty() ? folder : name, image(QStringLiteral("Clock24")), folder);
        card->setObjectName(QStringLiteral("recentFolderCard"));
        card->setCaption(folder);
        card->setCaptionElide(Qt::ElideMiddle);
    }
    m_recentTitle->setVisible(!folders.isEmpty());
    m_clearRecent->setVisible(!folders.isEmpty());
    orderTabs();
}

// Cards come and go; the Tab key visits them as they are laid out.
void DiskUsageStartForm::orderTabs()
{
    QWidgetList order{m_select, m_options};
    const auto append = [&order](const CardGridLayout *grid) {
        for (int i = 0; i < grid->count(); ++i)
            order.append(grid->itemAt(i)->widget());
    };
    append(m_driveGrid);
    append(m_specialGrid);
    order.append(m_clearRecent);
    append(m_recentGrid);
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}

void DiskUsageStartForm::showNotice(const QString &text)
{
    m_notice->showNotice(NoticeBar::Kind::Warning, text);
}

void DiskUsageStartForm::hideNotice()
{
    m_notice->hide();
}
