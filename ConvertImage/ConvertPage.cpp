// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/ConvertPage.h"

#include "ConvertImage/FindSources.h"
#include "ConvertImage/options/SettingsPanel.h"
#include "ConvertImage/preview/PreviewView.h"
#include "core/CountText.h"
#include "core/SizeText.h"
#include "platform/Dialogs.h"
#include "widgets/Controls.h"
#include "widgets/EmptyState.h"
#include "widgets/FLPopupMenu.h"
#include "widgets/FileRowDelegate.h"
#include "widgets/NoticeBar.h"
#include "widgets/PageHeader.h"
#include "widgets/SettingsBinding.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QListView>
#include <QMimeData>
#include <QPushButton>
#include <QSplitter>
#include <QStackedLayout>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace
{

// Rows as wide as the list, which has no horizontal scroll bar.
class SourceRowDelegate : public FileRowDelegate
{
public:
    using FileRowDelegate::FileRowDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return {1, FileRowDelegate::sizeHint(option, index).height()};
    }
};

} // namespace

ConvertPage::ConvertPage(std::shared_ptr<imaging::DecoderPool> decoders, SettingsBinding *binding,
                         QWidget *parent)
    : DropFrame(parent),
      m_binding(binding),
      m_sources(new SourceModel(decoders, this)),
      m_renderer(new PreviewRenderer(decoders, this)),
      m_header(new PageHeader(PageHeader::Kind::Start, this)),
      m_notice(new NoticeBar(this))
{
    setAccepts(Accepts::Anything);
    setHint(tr("Drop pictures or folders to add them"));
    m_header->setTitle(tr("Bulk Image Converter"));
    m_convert = m_header->addButton({.objectName = "convertButton",
                                     .text = tr("Convert"),
                                     .tip = tr("Convert all pictures of the list"),
                                     .key = QKeySequence(Qt::CTRL | Qt::Key_Return)},
                                    controls::Rank::Primary);
    connect(m_convert, &QPushButton::clicked, this, &ConvertPage::convertRequested);
    connect(this, &DropFrame::pathsDropped, this, &ConvertPage::pathsAdded);
    auto *columns = new QSplitter(this);
    columns->setChildrenCollapsible(false);
    columns->addWidget(makeList());
    columns->addWidget(makePreview());
    columns->addWidget(makeSettings());
    columns->setStretchFactor(0, 2);
    columns->setStretchFactor(1, 4);
    columns->setStretchFactor(2, 0);
    columns->setSizes({250, 420, 310});
    auto *page = new QVBoxLayout(this);
    page->setContentsMargins(theme::spaceWide, theme::space, theme::spaceWide, theme::space);
    page->setSpacing(theme::spaceSnug);
    page->addWidget(m_header);
    page->addWidget(m_notice);
    page->addWidget(columns, 1);
    // A moving slider emits every step; the preview is updated after a short pause.
    m_wishTimer.setSingleShot(true);
    m_wishTimer.setInterval(10);
    connect(&m_wishTimer, &QTimer::timeout, this, &ConvertPage::wishPreview);
    connect(m_binding, &SettingsBinding::changed, &m_wishTimer, qOverload<>(&QTimer::start));
    // The estimated size is hidden as soon as a setting changes.
    connect(m_binding, &SettingsBinding::changed, this, [this] { m_facts->setText(m_sizes); });
    connect(m_sources, &SourceModel::changed, this, &ConvertPage::showList);
    connect(m_renderer, &PreviewRenderer::rendered, this, &ConvertPage::showImage);
    showList();
}

QWidget *ConvertPage::makeList()
{
    auto *side = new QWidget(this);
    m_list = new QListView(side);
    m_list->setObjectName(QStringLiteral("sourceListView"));
    m_list->setAccessibleName(tr("Pictures to convert"));
    m_list->setModel(m_sources);
    m_list->setItemDelegate(new SourceRowDelegate(1, m_list));
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setResizeMode(QListView::Adjust);
    m_list->setUniformItemSizes(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, &m_wishTimer,
            qOverload<>(&QTimer::start));
    auto *empty = new EmptyState(side);
    empty->setContent(controls::image("ConvertImage48"), tr("No pictures yet"),
                      tr("Add or drop pictures or folders."));
    auto *stack = new QWidget(side);
    m_listStack = new QStackedLayout(stack);
    m_listStack->addWidget(empty);
    m_listStack->addWidget(m_list);
    m_totals = new QLabel(side);
    m_totals->setObjectName(QStringLiteral("totalsLabel"));
    m_totals->setWordWrap(true);
    theme::makeMuted(m_totals);
    auto *tools = new QHBoxLayout;
    tools->setSpacing(theme::spaceTight);
    addTools(tools);
    auto *column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, theme::spaceSnug, 0);
    column->setSpacing(theme::spaceSnug);
    column->addLayout(tools);
    column->addWidget(stack, 1);
    column->addWidget(m_totals);
    side->setMinimumWidth(200);
    return side;
}

void ConvertPage::addTools(QHBoxLayout *row)
{
    const auto add = [this, row](const controls::Button &button, auto clicked) {
        QToolButton *tool = controls::toolButton(this, button);
        connect(tool, &QToolButton::clicked, this, clicked);
        row->addWidget(tool);
    };
    add({.objectName = "addFilesButton",
         .image = "Add24",
         .text = tr("Add pictures"),
         .key = QKeySequence::Open},
        &ConvertPage::chooseFiles);
    add({.objectName = "addFolderButton", .image = "FolderOpen24", .text = tr("Add a folder")},
        &ConvertPage::chooseFolder);
    add({.objectName = "pasteButton",
         .image = "Copy24",
         .text = tr("Paste pictures"),
         .key = QKeySequence::Paste},
        &ConvertPage::paste);
    add({.objectName = "removeButton", .image = "Removed24", .text = tr("Take from the list")},
        &ConvertPage::removeSelected);
    controls::shortcut(m_list, QKeySequence::Delete, [this] { removeSelected(); });
    auto *more = controls::toolButton(
        this, {.objectName = "listMenuButton", .image = "Settings24", .text = tr("Sort and more")});
    auto *menu = new QMenu(more); // reused each time
    const std::pair<SourceModel::Order, QString> orders[] = {{SourceModel::Order::Name, tr("Sort by name")},
                                                             {SourceModel::Order::Type, tr("Sort by type")},
                                                             {SourceModel::Order::Size, tr("Sort by size")},
                                                             {SourceModel::Order::Date, tr("Sort by date")}};
    for (const auto &[order, text] : orders)
        connect(menu->addAction(text), &QAction::triggered, m_sources,
                [this, order = order] { m_sources->sortBy(order); });
    menu->addSeparator();
    QAction *subfolders = menu->addAction(tr("Folders with their subfolders"));
    subfolders->setCheckable(true);
    m_binding->add(subfolders, conversion::stored::withSubfolders);
    connect(menu->addAction(tr("Empty the list")), &QAction::triggered, m_sources, &SourceModel::clear);
    more->setMenu(menu);
    more->setPopupMode(QToolButton::InstantPopup);
    row->addStretch();
    row->addWidget(more);
    setTabOrder(more, m_list);
}

QWidget *ConvertPage::makePreview()
{
    auto *middle = new QWidget(this);
    m_preview = new PreviewView(middle);
    m_facts = new QLabel(middle);
    m_facts->setObjectName(QStringLiteral("previewFactsLabel"));
    m_facts->setMinimumWidth(1);
    theme::makeMuted(m_facts);
    m_zoom = new QLabel(middle);
    m_zoom->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("1000 %")));
    auto *shown = new QComboBox(middle);
    shown->setObjectName(QStringLiteral("previewModeComboBox"));
    shown->setAccessibleName(tr("What the preview shows"));
    shown->addItems({tr("After"), tr("Before"), tr("Before | After")});
    connect(shown, &QComboBox::currentIndexChanged, m_preview,
            [this](int index) { m_preview->setShow(static_cast<PreviewView::Show>(index)); });
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceTight);
    row->addWidget(shown);
    row->addStretch();
    const auto add = [&](const controls::Button &button, auto clicked, bool showText = false) {
        QToolButton *tool = controls::toolButton(middle, button, showText);
        connect(tool, &QToolButton::clicked, m_preview, clicked);
        row->addWidget(tool);
        setTabOrder(tool, m_preview); // after the last tool button
    };
    row->addWidget(m_zoom);
    add({.objectName = "zoomOutButton", .image = "ZoomOut24", .text = tr("Zoom out")}, &PreviewView::zoomOut);
    add({.objectName = "zoomInButton", .image = "ZoomIn24", .text = tr("Zoom in")}, &PreviewView::zoomIn);
    add(
        {.objectName = "zoomFitButton", .text = tr("Fit")}, [this] { m_preview->setZoom(0.0); }, true);
    add(
        {.objectName = "zoomFullButton", .text = tr("1:1")}, [this] { m_preview->setZoom(1.0); }, true);
    connect(m_preview, &PreviewView::zoomChanged, this, [this] { m_zoom->setText(m_preview->zoomText()); });
    connect(m_preview, &PreviewView::resized, &m_wishTimer, qOverload<>(&QTimer::start));
    connect(m_preview, &PreviewView::markPlaced, this, &ConvertPage::placeMark);
    auto *column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(theme::spaceSnug);
    column->addLayout(row);
    column->addWidget(m_preview, 1);
    column->addWidget(m_facts);
    connect(m_renderer, &PreviewRenderer::estimated, this, [this](qint64 bytes) {
        if (bytes > 0 && !m_wishTimer.isActive()) // otherwise the settings have changed since
            m_facts->setText(m_sizes + tr(", about %1").arg(core::sizeText(static_cast<quint64>(bytes))));
    });
    return middle;
}

QWidget *ConvertPage::makeSettings()
{
    auto *side = new QWidget(this);
    m_presets = new QComboBox(side);
    m_presets->setObjectName(QStringLiteral("presetComboBox"));
    m_presets->setAccessibleName(tr("Sets of settings"));
    connect(m_presets, &QComboBox::activated, this, &ConvertPage::choosePreset);
    auto *save = controls::toolButton(
        side,
        {.objectName = "savePresetButton", .image = "Save24", .text = tr("Save these settings as a set")});
    connect(save, &QToolButton::clicked, this, &ConvertPage::savePreset);
    m_removePreset = controls::toolButton(
        side, {.objectName = "removePresetButton", .image = "Delete24", .text = tr("Remove this set")});
    connect(m_removePreset, &QToolButton::clicked, this, &ConvertPage::removePreset);
    connect(m_presets, &QComboBox::currentIndexChanged, this,
            [this](int index) { m_removePreset->setEnabled(index > 0); });
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceTight);
    row->addWidget(m_presets, 1);
    row->addWidget(save);
    row->addWidget(m_removePreset);
    m_settings = new SettingsPanel(m_binding, side);
    auto *column = new QVBoxLayout(side);
    column->setContentsMargins(theme::spaceSnug, 0, 0, 0);
    column->setSpacing(theme::spaceSnug);
    column->addLayout(row);
    column->addWidget(m_settings, 1);
    side->setMinimumWidth(312); // fits the names of all tabs
    fillPresets();
    return side;
}

void ConvertPage::chooseFiles()
{
    const QStringList files = platform::dialogs().chooseFilesToOpen(
        this, tr("Add pictures"), {}, tr("Pictures (%1);;All files (*)").arg(pictureFilter()));
    if (!files.isEmpty())
        emit pathsAdded(files);
}

void ConvertPage::chooseFolder()
{
    const QString folder = platform::dialogs().chooseFolder(this, tr("Add a folder"));
    if (!folder.isEmpty())
        emit pathsAdded({folder});
}

void ConvertPage::paste()
{
    QStringList paths;
    const QMimeData *held = QGuiApplication::clipboard()->mimeData();
    for (const QUrl &url : held ? held->urls() : QList<QUrl>()) {
        if (url.isLocalFile())
            paths.append(url.toLocalFile().replace(u'/', u'\\'));
    }
    if (paths.isEmpty())
        m_notice->showNotice(NoticeBar::Kind::Info, tr("There are no files in the clipboard."));
    else
        emit pathsAdded(paths);
}

void ConvertPage::removeSelected()
{
    QModelIndexList rows = m_list->selectionModel()->selectedRows();
    if (rows.isEmpty())
        return;
    const int first = std::ranges::min_element(rows)->row();
    m_sources->remove(std::move(rows));
    m_list->setCurrentIndex(m_sources->index(std::min(first, m_sources->rowCount() - 1)));
}

void ConvertPage::showList()
{
    const int count = m_sources->rowCount();
    m_listStack->setCurrentIndex(count == 0 ? 0 : 1);
    m_convert->setEnabled(count > 0);
    m_totals->setText(count == 0 ? QString()
                                 : tr("%1, %2 (%3)")
                                       .arg(core::countText(count, tr("1 picture"), tr("%1 pictures")),
                                            core::sizeText(m_sources->totalBytes()), m_sources->formats()));
    if (count > 0 && !m_list->currentIndex().isValid())
        m_list->setCurrentIndex(m_sources->index(0));
    refreshPreview();
}

void ConvertPage::refreshPreview()
{
    m_renderer->dropCache();
    m_wishTimer.start();
}

void ConvertPage::wishPreview()
{
    const QString path = m_sources->path(m_list->currentIndex());
    if (path.isEmpty()) {
        m_renderer->cancel();
        m_preview->setMessage(tr("The selected picture is shown here as it will be."));
        m_settings->setImageSize({});
        m_sizes.clear();
        m_facts->clear();
        return;
    }
    if (m_preview->isEmpty())
        m_preview->setMessage(tr("Reading the picture ..."));
    PreviewWish wish;
    wish.path = path;
    const conversion::Settings settings = conversion::settingsFrom(m_binding->values());
    wish.rendering = settings.rendering;
    wish.encoding = settings.encoding;
    wish.defaultFont = font().family();
    wish.area = m_preview->size() * m_preview->devicePixelRatioF();
    m_renderer->render(wish);
}

void ConvertPage::showImage(const std::shared_ptr<const PreviewImage> &picture)
{
    m_settings->setImageSize(picture->before.size());
    m_preview->setPicture(picture);
    const QSize before = picture->before.size();
    const QSize after = picture->after.size();
    m_sizes = after.isEmpty() ? QString()
                              : tr("%1 x %2 becomes %3 x %4")
                                    .arg(before.width())
                                    .arg(before.height())
                                    .arg(after.width())
                                    .arg(after.height());
    m_facts->setText(m_sizes);
    m_zoom->setText(m_preview->zoomText());
}

void ConvertPage::placeMark(conversion::MarkKind kind, conversion::Position position, int margin)
{
    namespace stored = conversion::stored;
    const auto put = [this, position, margin](const settings::Number &place, const settings::Number &gap) {
        m_binding->show({{place.name.toString(), static_cast<int>(position)}, {gap.name.toString(), margin}});
    };
    if (kind == conversion::MarkKind::Text)
        put(stored::textPosition, stored::textMargin);
    else if (kind == conversion::MarkKind::Picture)
        put(stored::imagePosition, stored::imageMargin);
    else
        put(stored::qrCodePosition, stored::qrCodeMargin);
}

void ConvertPage::fillPresets()
{
    m_presets->clear();
    m_presets->addItem(tr("Sets of settings"));
    m_presets->addItems(m_sets.names());
    m_presets->setCurrentIndex(0);
    m_removePreset->setEnabled(false);
}

void ConvertPage::choosePreset(int index)
{
    const auto values = index > 0 ? m_sets.find(m_presets->itemText(index)) : std::nullopt;
    if (values)
        m_binding->show(conversion::withoutPlaces(*values));
}
