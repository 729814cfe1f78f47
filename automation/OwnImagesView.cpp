// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/OwnImagesView.h"

#include "automation/DroppedImages.h"
#include "automation/engine/WallpaperJob.h"
#include "imaging/DecoderPool.h"
#include "platform/Dialogs.h"
#include "platform/KnownFolders.h"
#include "widgets/Controls.h"
#include "widgets/RowDelegate.h"
#include "widgets/Theme.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QImageReader>
#include <QMimeData>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

using automation::maxOwnImages;

namespace
{

constexpr QSize thumbnail(64, 40); // size in a row
constexpr QSize keptThumbnail(192, 120);
constexpr int listHeight = 210;
constexpr int listWidth = 420;
constexpr int nameWidth = 230;
constexpr int pathRole = Qt::UserRole;

QStringList localFiles(const QMimeData *data)
{
    QStringList files;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile())
            files.append(QDir::toNativeSeparators(url.toLocalFile()));
    }
    return files;
}

QStringList imageSuffixes()
{
    QStringList suffixes;
    for (const QByteArray &format : QImageReader::supportedImageFormats())
        suffixes.append(QString::fromLatin1(format));
    return suffixes;
}

// Cropped to one shape, so that all thumbnails are aligned.
QImage rowShaped(const QImage &image)
{
    const QImage filled =
        image.scaled(keptThumbnail, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    return filled.copy((filled.width() - keptThumbnail.width()) / 2,
                       (filled.height() - keptThumbnail.height()) / 2, keptThumbnail.width(),
                       keptThumbnail.height());
}

// Makes rows as high as their thumbnails.
class ThumbnailRows : public RowDelegate
{
public:
    using RowDelegate::RowDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return {RowDelegate::sizeHint(option, index).width(), thumbnail.height() + theme::spaceSnug};
    }
};

} // namespace

// Accepts dropped files and folders.
class OwnImagesView::List : public FLTreeWidget
{
public:
    explicit List(OwnImagesView *view) : FLTreeWidget(view), m_view(view)
    {
        setItemDelegate(new ThumbnailRows(this));
        setAcceptDrops(true);
        viewport()->setAcceptDrops(true);
    }

    QSize sizeHint() const override { return {listWidth, listHeight}; }

protected:
    void dragEnterEvent(QDragEnterEvent *event) override
    {
        if (!localFiles(event->mimeData()).isEmpty())
            event->acceptProposedAction();
    }
    void dragMoveEvent(QDragMoveEvent *event) override { event->acceptProposedAction(); }
    void dropEvent(QDropEvent *event) override
    {
        event->acceptProposedAction();
        m_view->drop(localFiles(event->mimeData()));
    }

private:
    OwnImagesView *m_view;
};

OwnImagesView::OwnImagesView(QWidget *parent)
    : QWidget(parent),
      m_list(new List(this)),
      m_decoders(std::make_shared<imaging::DecoderPool>(
          imaging::DecoderPool::Options{imaging::DecoderPool::decoderProgram()}))
{
    m_list->setObjectName(QStringLiteral("ownPicturesTreeWidget"));
    m_list->setAccessibleName(tr("Your pictures"));
    m_list->setHeaderLabels({tr("Picture"), tr("Folder")});
    m_list->setRootIsDecorated(false);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setIconSize(thumbnail);
    m_list->setPlaceholder(tr("Add pictures, or drop them here."));
    m_list->setFixedHeight(listHeight);
    m_list->header()->resizeSection(0, nameWidth);
    QPushButton *addButton = controls::pushButton(this, {"addPicturesButton", "", tr("Add...")});
    m_remove = controls::pushButton(this, {"removePicturesButton", "", tr("Remove")});
    m_up = controls::pushButton(this, {"upButton", "", tr("Move Up")});
    m_down = controls::pushButton(this, {"downButton", "", tr("Move Down")});

    auto *buttons = new QVBoxLayout;
    buttons->setSpacing(theme::spaceSnug);
    for (QPushButton *button : {addButton, m_remove, m_up, m_down})
        buttons->addWidget(button);
    buttons->addStretch();
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::spaceSnug);
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);

    connect(addButton, &QPushButton::clicked, this, &OwnImagesView::choose);
    connect(m_remove, &QPushButton::clicked, this, &OwnImagesView::removeSelected);
    connect(m_up, &QPushButton::clicked, this, [this] { move(-1); });
    connect(m_down, &QPushButton::clicked, this, [this] { move(1); });
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &OwnImagesView::showButtons);
    controls::shortcut(m_list, QKeySequence::Delete, [this] { removeSelected(); });
    controls::shortcut(m_list, QKeySequence(Qt::ALT | Qt::Key_Up), [this] { move(-1); });
    controls::shortcut(m_list, QKeySequence(Qt::ALT | Qt::Key_Down), [this] { move(1); });
    showButtons();
}

OwnImagesView::~OwnImagesView() = default;

QStringList OwnImagesView::files() const
{
    QStringList files;
    for (int row = 0; row < m_list->topLevelItemCount(); ++row)
        files.append(m_list->topLevelItem(row)->data(0, pathRole).toString());
    return files;
}

void OwnImagesView::setFiles(const QStringList &files)
{
    m_list->clear();
    for (const QString &file : files)
        append(file);
    loadThumbnails();
    showButtons();
}

void OwnImagesView::append(const QString &file)
{
    auto *item = new QTreeWidgetItem(m_list);
    const qsizetype end = file.lastIndexOf(u'\\');
    item->setData(0, pathRole, file);
    item->setText(0, file.mid(end + 1));
    item->setText(1, file.left(end));
    item->setToolTip(0, file);
    item->setToolTip(1, file);
}

// Returns how many exceeded the limit.
qsizetype OwnImagesView::addTo(const QStringList &added)
{
    const QStringList before = files();
    QSet<QString> known(before.begin(), before.end());
    qsizetype homeless = 0;
    for (const QString &file : added) {
        if (known.contains(file))
            continue;
        known.insert(file);
        if (m_list->topLevelItemCount() < maxOwnImages)
            append(file);
        else
            ++homeless;
    }
    if (m_list->topLevelItemCount() > before.size()) {
        loadThumbnails();
        showButtons();
        emit changed();
    }
    return homeless;
}

void OwnImagesView::add(const QStringList &files)
{
    take({.files = files});
}

void OwnImagesView::drop(const QStringList &paths)
{
    m_dropped += paths; // a new request replaces the running one
    m_listings.ask(
        [paths = m_dropped](const core::Asking &asking) {
            const QStringList suffixes = imageSuffixes();
            return automation::droppedImages(paths, {suffixes.begin(), suffixes.end()}, asking.cancel());
        },
        [this](const automation::DroppedImages &dropped) {
            m_dropped.clear();
            take(dropped);
        });
}

void OwnImagesView::take(const automation::DroppedImages &dropped)
{
    const qsizetype homeless = addTo(dropped.files);
    QStringList told;
    if (homeless > 0)
        told.append((homeless == 1 ? tr("1 picture was left out: the list holds %1.")
                                   : tr("%2 pictures were left out: the list holds %1."))
                        .arg(maxOwnImages)
                        .arg(homeless));
    if (!dropped.isWhole)
        told.append(tr("Only %1 files of a large folder were checked.").arg(automation::maxFolderEntries));
    if (dropped.emptyFolders.size() == 1)
        told.append(tr("No picture was found in %1.").arg(dropped.emptyFolders.first()));
    else if (dropped.emptyFolders.size() > 1)
        told.append(tr("No picture was found in %1 of the folders.").arg(dropped.emptyFolders.size()));
    if (!told.isEmpty())
        emit leftOut(told.join(u' '));
}

void OwnImagesView::choose()
{
    QStringList files = platform::dialogs().chooseFilesToOpen(
        this, tr("Add pictures"), platform::knownFolder(platform::KnownFolder::Pictures),
        tr("Pictures (%1);;All files (*)")
            .arg(QStringLiteral("*.") + imageSuffixes().join(QStringLiteral(" *."))));
    add(files);
}

void OwnImagesView::removeSelected()
{
    const QList<QTreeWidgetItem *> selected = m_list->selectedItems();
    if (selected.isEmpty())
        return;
    const int row = m_list->indexOfTopLevelItem(selected.first());
    qDeleteAll(selected);
    if (m_list->topLevelItemCount() > 0)
        m_list->setCurrentItem(m_list->topLevelItem(std::min(row, m_list->topLevelItemCount() - 1)));
    showButtons();
    emit changed();
}

void OwnImagesView::move(int by)
{
    QTreeWidgetItem *current = m_list->currentItem();
    const int row = m_list->indexOfTopLevelItem(current);
    const int to = row + by;
    if (row < 0 || to < 0 || to >= m_list->topLevelItemCount())
        return;
    m_list->takeTopLevelItem(row);
    m_list->insertTopLevelItem(to, current);
    m_list->setCurrentItem(current);
    showButtons();
    emit changed();
}

void OwnImagesView::showButtons()
{
    const QList<QTreeWidgetItem *> selected = m_list->selectedItems();
    const int row = selected.size() == 1 ? m_list->indexOfTopLevelItem(selected[0]) : -1;
    m_remove->setEnabled(!selected.isEmpty());
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_list->topLevelItemCount());
}

// Returns whether the file has been checked already.
bool OwnImagesView::showThumbnail(QTreeWidgetItem *item)
{
    const auto known = m_thumbnails.constFind(item->data(0, pathRole).toString());
    if (known == m_thumbnails.constEnd())
        return false;
    if (!known->isNull())
        item->setIcon(0, QIcon(*known));
    else
        item->setText(1, tr("Missing, or not a picture"));
    return true;
}

// Loads the missing thumbnails.
void OwnImagesView::loadThumbnails()
{
    QStringList unknown;
    for (int row = 0; row < m_list->topLevelItemCount(); ++row) {
        QTreeWidgetItem *item = m_list->topLevelItem(row);
        if (!showThumbnail(item))
            unknown.append(item->data(0, pathRole).toString());
    }
    if (unknown.isEmpty())
        return;
    m_loading.ask(
        [this, unknown, decoders = m_decoders](const core::Asking &asking) {
            for (const QString &file : unknown) {
                const auto examined = decoders->examine(file, {}, asking.cancel());
                if (asking.isCancelled())
                    break;
                const QImage image = examined ? rowShaped(examined->thumbnail) : QImage();
                asking.tell([this, file, image] {
                    m_thumbnails.insert(file, QPixmap::fromImage(image));
                    const qsizetype row = files().indexOf(file);
                    if (row >= 0)
                        showThumbnail(m_list->topLevelItem(static_cast<int>(row)));
                });
            }
            decoders->rest();
            return true;
        },
        [](bool) {});
}
