// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/ExtractIconForm.h"

#include "ExtractIcon/ExportIconDialog.h"
#include "ExtractIcon/IconFiles.h"
#include "ExtractIcon/IconListView.h"
#include "ExtractIcon/IconSizesView.h"
#include "ExtractIcon/PageHead.h"
#include "ExtractIcon/Settings.h"
#include "ExtractIcon/engine/BitmapDecoder.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "platform/TopLevelWindows.h"
#include "widgets/Controls.h"
#include "widgets/DropFrame.h"
#include "widgets/ElidedLabel.h"
#include "widgets/EmptyState.h"
#include "widgets/FLPopupMenu.h"
#include "widgets/NoticeBar.h"
#include "widgets/SearchLine.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace
{

constexpr int thumbnailSide = 2 * icons::IconListModel::iconSide; // for up to 200 % scaling
constexpr int thumbnailBatch = 24;
constexpr int sizesWidth = 310; // an icon of 256 pixels with margins

} // namespace

ExtractIconForm::ExtractIconForm(QWidget *parent) : FLWidget(parent)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(buildPage());
    m_reveal = new QAction(tr("Show in Explorer"), this);
    connect(m_reveal, &QAction::triggered, this, [this] { platform::shell().revealInExplorer(m_exported); });
    icons::recordList() = {};
}

QWidget *ExtractIconForm::buildPage()
{
    auto *page = new DropFrame(this);
    page->setAccepts(DropFrame::Accepts::Anything);
    page->setHint(tr("Drop a library, a program or an icon file to see its icons"));
    connect(page, &DropFrame::pathsDropped, this, [this](const QStringList &paths) { open(paths.first()); });
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(theme::pageMargin, theme::space, theme::pageMargin, theme::space);
    column->setSpacing(theme::space);
    column->addWidget(buildHeader());
    m_notice = new NoticeBar(page);
    column->addWidget(m_notice);

    auto *line = new QHBoxLayout;
    m_openFile = new ElidedLabel(page, Qt::ElideMiddle);
    m_openFile->setObjectName(QStringLiteral("openFileLabel"));
    m_openFile->setText(tr("No icon file is opened."));
    line->addWidget(m_openFile, 1);
    m_count = new QLabel(page);
    m_count->setObjectName(QStringLiteral("countLabel"));
    theme::makeMuted(m_count);
    line->addWidget(m_count);
    m_search = new SearchLine(page);
    m_search->setObjectName(QStringLiteral("searchLine"));
    m_search->setPlaceholderText(tr("Search by number"));
    m_search->setAccessibleName(m_search->placeholderText());
    m_search->setFixedWidth(200);
    connect(m_search, &SearchLine::searched, this, &ExtractIconForm::showFiltered);
    line->addWidget(m_search);
    column->addLayout(line);
    column->addWidget(buildBody(), 1);
    controls::shortcut(this, QKeySequence::Find, [this] { m_search->setFocus(); });
    return page;
}

QWidget *ExtractIconForm::buildHeader()
{
    auto *head = new icons::PageHead(tr("Windows Icon Extractor"),
                                     tr("Extract Icons from Windows libraries and exe files."), this);
    QHBoxLayout *row = head->buttonRow();
    m_load = controls::pushButton(head, {.objectName = "loadButton",
                                         .image = "FolderSearch24",
                                         .text = tr("Load Icons from Windows Library")});
    connect(m_load, &QPushButton::clicked, this, &ExtractIconForm::showLibraries);
    QPushButton *file = controls::pushButton(head, {.objectName = "loadFileButton",
                                                    .image = "FolderOpen24",
                                                    .text = tr("Load Icons from File"),
                                                    .key = QKeySequence::Open});
    connect(file, &QPushButton::clicked, this, &ExtractIconForm::chooseFile);
    m_recent = controls::pushButton(head, {.objectName = "recentButton", .text = tr("Recent")});
    m_recent->setEnabled(!icons::recentFiles().isEmpty());
    connect(m_recent, &QPushButton::clicked, this, &ExtractIconForm::showRecent);
    m_export = controls::pushButton(head,
                                    {.objectName = "exportButton",
                                     .image = "Export24",
                                     .text = tr("Export Icon"),
                                     .key = QKeySequence::Save},
                                    controls::Rank::Primary);
    m_export->setEnabled(false);
    connect(m_export, &QPushButton::clicked, this, &ExtractIconForm::exportSelected);
    row->addWidget(m_load);
    row->addWidget(file);
    row->addWidget(m_recent);
    row->addStretch();
    row->addWidget(m_export);
    return head;
}

QWidget *ExtractIconForm::buildBody()
{
    auto *body = new QWidget(this);
    m_body = new QStackedLayout(body);
    m_empty = new EmptyState(body);
    m_empty->setContent(controls::image("Image24"), tr("No icons to show"),
                        tr("Choose a library of Windows or a file, or drop a file here."));
    m_body->addWidget(m_empty);
    auto *splitter = new QSplitter(body);
    m_list = new icons::IconListView(&m_model, splitter);
    connect(m_list, &QListView::doubleClicked, this, &ExtractIconForm::OnDoubleClickListView);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ExtractIconForm::OnSelectionChanged);
    connect(m_list, &icons::IconListView::exportRequested, this, &ExtractIconForm::exportSelected);
    connect(m_list, &icons::IconListView::copyRequested, this, &ExtractIconForm::copySelected);
    splitter->addWidget(m_list);
    auto *scroll = new QScrollArea(splitter);
    m_sizes = new IconSizesView;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::StrongFocus);
    scroll->setWidget(m_sizes);
    splitter->addWidget(scroll);
    splitter->setStretchFactor(0, 1);
    splitter->setCollapsible(0, false);
    splitter->setSizes({3 * sizesWidth, sizesWidth});
    m_body->addWidget(splitter);
    return body;
}

void ExtractIconForm::shellEvent(ShellEvent event, quint32)
{
    if (event == ShellEvent::RefreshIcons)
        refresh();
}

void ExtractIconForm::showLibraries()
{
    auto *menu = new FLPopupMenu(this);
    for (const QString &name : icons::libraryNames())
        connect(menu->addAction(name), &QAction::triggered, this,
                [this, name] { open(icons::libraryPath(name)); });
    menu->popup(m_load->mapToGlobal(m_load->rect().bottomLeft()));
}

void ExtractIconForm::showRecent()
{
    auto *menu = new FLPopupMenu(this);
    for (const QString &path : icons::recentFiles())
        connect(menu->addAction(QString(path).replace(u'&', QStringLiteral("&&"))), &QAction::triggered, this,
                [this, path] { open(path); });
    menu->popup(m_recent->mapToGlobal(m_recent->rect().bottomLeft()));
}

void ExtractIconForm::chooseFile()
{
    const QStringList chosen = platform::dialogs().chooseFilesToOpen(
        this, tr("Load Icon Files"), icons::loadFolder.read(), tr("Icon Files (*.dll *.exe *.ico)"));
    if (chosen.isEmpty())
        return;
    icons::loadFolder.write(QDir::toNativeSeparators(QFileInfo(chosen.first()).path()));
    open(chosen.first());
}

void ExtractIconForm::open(const QString &path)
{
    const QString shown = QDir::toNativeSeparators(path);
    m_openFile->setText(shown);
    m_notice->hide();
    m_search->clear();
    m_list->showAll();
    icons::recordList() = {.path = shown, .records = {}, .thumbnails = {}};
    m_model.clear();
    m_sizes->setImages({});
    m_count->clear();
    m_empty->setContent(controls::image("Image24"), tr("Loading ..."));
    m_body->setCurrentIndex(0);
    m_loading.ask(
        [this, shown](const core::Asking &asking) {
            const std::unique_ptr<icons::IconSource> source = icons::openIcons(shown);
            const QList<icons::IconRecord> records = icons::listIcons(*source, asking.cancel());
            asking.tell([this, records] { addRecords(records); });
            QList<QImage> pictures;
            for (qsizetype i = 0; i < records.size() && !asking.isCancelled(); ++i) {
                pictures.append(icons::thumbnail(*source, records[i], thumbnailSide));
                if (pictures.size() < thumbnailBatch && i + 1 < records.size())
                    continue;
                const int first = static_cast<int>(i + 1 - pictures.size());
                asking.tell([this, first, pictures] { setThumbnails(first, pictures); });
                pictures.clear();
            }
            return Opened{static_cast<int>(records.size())};
        },
        [this](const Opened &opened) { loaded(opened); }, [this](const QString &) { loaded({}); });
}

void ExtractIconForm::addRecords(QList<icons::IconRecord> records)
{
    icons::RecordList &list = icons::recordList();
    list.thumbnails.resize(records.size());
    list.records = std::move(records);
    postRefresh();
}

// Posted to the main window, which forwards the message to this page. Other windows do not.
void ExtractIconForm::postRefresh()
{
    if (!platform::postToWindow(window()->winId(), platform::messageRefreshIconExtractor))
        refresh();
}

void ExtractIconForm::refresh()
{
    m_model.showNew();
    const int shown = m_model.rowCount();
    if (shown == 0)
        return;
    m_body->setCurrentIndex(1);
    m_count->setText(shown == 1 ? tr("1 icon") : tr("%1 icons").arg(shown));
    if (!m_list->currentIndex().isValid() && !m_search->hasFocus())
        m_list->setFocus();
    if (m_list->selectionModel()->selectedIndexes().isEmpty())
        m_list->selectFirst();
}

void ExtractIconForm::setThumbnails(int first, QList<QImage> images)
{
    icons::RecordList &list = icons::recordList();
    for (qsizetype i = 0; i < images.size() && first + i < list.thumbnails.size(); ++i)
        list.thumbnails[first + i] = images[i];
    m_model.thumbnailsChanged(first, first + static_cast<int>(images.size()) - 1);
}

void ExtractIconForm::loaded(const Opened &opened)
{
    if (opened.icons == 0) {
        m_empty->setContent(controls::image("Image24"), tr("No icons found"),
                            tr("The file cannot be read, or it has no icons with a number."));
        return;
    }
    icons::addRecentFile(icons::recordList().path);
    m_recent->setEnabled(true);
}

void ExtractIconForm::OnSelectionChanged(const QItemSelection &, const QItemSelection &)
{
    m_export->setEnabled(!m_list->selectionModel()->selectedIndexes().isEmpty());
    showSizes();
}

// With several selected icons, those of the current one.
void ExtractIconForm::showSizes()
{
    const QList<int> rows = m_list->selectedRows();
    if (rows.isEmpty()) {
        m_reading.forget();
        m_sizes->setImages({});
        return;
    }
    const int wanted = m_list->currentRow();
    const int row = rows.contains(wanted) ? wanted : rows.last();
    const quint32 id = icons::recordList().records[row].id;
    m_reading.ask(
        [path = icons::recordList().path, id](const core::Asking &) { return icons::readImages(path, id); },
        [this](const QList<icons::IconImage> &images) { m_sizes->setImages(images); });
}

void ExtractIconForm::OnDoubleClickListView(const QModelIndex &index)
{
    if (index.isValid())
        openExport({m_list->rowOf(index)});
}

void ExtractIconForm::exportSelected()
{
    openExport(m_list->selectedRows());
}

void ExtractIconForm::openExport(const QList<int> &rows)
{
    if (rows.isEmpty())
        return;
    ExportIconDialog::Choice choice;
    choice.source = icons::recordList().path;
    for (const int row : rows)
        choice.records.append(icons::recordList().records[row]);
    if (rows.size() > 1) {
        showExport(new ExportIconDialog(std::move(choice), this));
        return;
    }
    m_choosing.ask([path = choice.source, id = choice.records.first().id](
                       const core::Asking &) { return icons::readImages(path, id); },
                   [this, choice](const QList<icons::IconImage> &images) {
                       ExportIconDialog::Choice whole = choice;
                       whole.images = images;
                       if (!images.isEmpty())
                           showExport(new ExportIconDialog(std::move(whole), this));
                       else
                           m_notice->showNotice(NoticeBar::Kind::Error,
                                                tr("The icon cannot be read any more."));
                   });
}

void ExtractIconForm::showExport(ExportIconDialog *dialog)
{
    connect(dialog, &ExportIconDialog::exported, this, [this](int files, const QString &first) {
        m_exported = first;
        const QString folder = QDir::toNativeSeparators(QFileInfo(first).path());
        m_notice->showNotice(NoticeBar::Kind::Success,
                             files == 1 ? tr("Exported to %1").arg(first)
                                        : tr("%1 files were exported to %2").arg(files).arg(folder),
                             m_reveal);
    });
    dialog->open();
}

void ExtractIconForm::copySelected()
{
    const QList<int> rows = m_list->selectedRows();
    if (rows.isEmpty())
        return;
    m_choosing.ask(
        [path = icons::recordList().path,
         record = icons::recordList().records[rows.first()]](const core::Asking &) {
            const std::unique_ptr<icons::IconSource> source = icons::openIcons(path);
            return icons::thumbnail(*source, record, icons::maxSide);
        },
        [this](const QImage &image) {
            if (image.isNull())
                return;
            QGuiApplication::clipboard()->setImage(image);
            m_notice->showNotice(NoticeBar::Kind::Info, tr("The image was copied."));
        });
}

void ExtractIconForm::showFiltered(const QString &number)
{
    const int found = m_list->showMatches(number);
    if (m_model.rowCount() > 0)
        m_count->setText(number.isEmpty() ? tr("%1 icons").arg(found)
                                          : tr("%1 of %2 icons").arg(found).arg(m_model.rowCount()));
}
