// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/Image2IcoForm.h"

#include "ExtractIcon/PageHead.h"
#include "ExtractIcon/Settings.h"
#include "ExtractIcon/engine/CropSquare.h"
#include "ExtractIcon/generator/CropView.h"
#include "ExtractIcon/generator/SizesPanel.h"
#include "platform/Dialogs.h"
#include "platform/KnownFolders.h"
#include "platform/Shell.h"
#include "widgets/Controls.h"
#include "widgets/DropFrame.h"
#include "widgets/JobHost.h"
#include "widgets/NoticeBar.h"
#include "widgets/ScanPage.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <algorithm>

using icons::CropView;

namespace
{

constexpr int listWidth = 200;
constexpr int previewWidth = 290;
constexpr int maxFailuresShown = 3;

QString pictureFilter()
{
    QStringList patterns;
    for (const QByteArray &format : QImageReader::supportedImageFormats())
        patterns.append(QStringLiteral("*.") + QString::fromLatin1(format));
    return Image2IcoForm::tr("Pictures (%1)").arg(patterns.join(QLatin1Char(' '))) + QStringLiteral(";;") +
           Image2IcoForm::tr("All files (*.*)");
}

} // namespace

Image2IcoForm::Image2IcoForm(QWidget *parent)
    : FLWidget(parent),
      m_decoders(std::make_shared<imaging::DecoderPool>(
          imaging::DecoderPool::Options{imaging::DecoderPool::decoderProgram()})),
      m_pages(new QStackedLayout(this)),
      m_progress(
          new ScanPage(this, {ScanPage::Figure::Steps, ScanPage::Figure::Time, ScanPage::Figure::TimeLeft})),
      m_job(new JobHost(this))
{
    m_pages->addWidget(buildPage());
    m_pages->addWidget(m_progress);
    connect(m_progress, &ScanPage::scanCancel, m_job, &JobHost::cancel);
    m_reveal = new QAction(tr("Show in Explorer"), this);
    connect(m_reveal, &QAction::triggered, this, [this] { platform::shell().revealInExplorer(m_lastSaved); });
    updateButtons();
}

QWidget *Image2IcoForm::buildPage()
{
    auto *page = new DropFrame(this);
    page->setAccepts(DropFrame::Accepts::Anything);
    page->setHint(tr("Drop pictures to make icons of them"));
    connect(page, &DropFrame::pathsDropped, this, &Image2IcoForm::addPictures);
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(theme::pageMargin, theme::space, theme::pageMargin, theme::space);
    column->setSpacing(theme::space);
    column->addWidget(buildHeader());
    m_notice = new NoticeBar(page);
    column->addWidget(m_notice);
    auto *splitter = new QSplitter(page);
    splitter->addWidget(buildSources());
    splitter->addWidget(buildCrop());
    m_sizes = new icons::SizesPanel(splitter);
    connect(m_sizes, &icons::SizesPanel::sizesChanged, this, &Image2IcoForm::updateButtons);
    splitter->addWidget(m_sizes);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({listWidth, 2 * listWidth, previewWidth});
    column->addWidget(splitter, 1);
    return page;
}

QWidget *Image2IcoForm::buildHeader()
{
    auto *head = new icons::PageHead(tr("Windows Icon Generator"),
                                     tr("Create Windows icon from any PNG or JPG image."), this);
    QHBoxLayout *row = head->buttonRow();
    QPushButton *add = controls::pushButton(head, {.objectName = "addButton",
                                                   .image = "FolderOpen24",
                                                   .text = tr("Add Pictures"),
                                                   .key = QKeySequence::Open});
    connect(add, &QPushButton::clicked, this, &Image2IcoForm::choosePictures);
    m_saveAll = controls::pushButton(head, {.objectName = "saveAllButton", .text = tr("Save All ...")});
    connect(m_saveAll, &QPushButton::clicked, this, &Image2IcoForm::saveAll);
    m_save = controls::pushButton(head,
                                  {.objectName = "saveButton",
                                   .image = "Save24",
                                   .text = tr("Save Icon ..."),
                                   .key = QKeySequence::Save},
                                  controls::Rank::Primary);
    connect(m_save, &QPushButton::clicked, this, &Image2IcoForm::saveCurrent);
    row->addWidget(add);
    row->addStretch();
    row->addWidget(m_saveAll);
    row->addWidget(m_save);
    return head;
}

QWidget *Image2IcoForm::buildSources()
{
    auto *panel = new QWidget(this);
    auto *column = new QVBoxLayout(panel);
    column->setContentsMargins({});
    m_list = new QListWidget(panel);
    m_list->setObjectName(QStringLiteral("pictureList"));
    m_list->setAccessibleName(tr("Pictures"));
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(m_list, &QListWidget::currentRowChanged, this, &Image2IcoForm::showCurrent);
    column->addWidget(m_list, 1);
    m_remove = controls::pushButton(panel, {.objectName = "removeButton", .text = tr("Remove")});
    connect(m_remove, &QPushButton::clicked, this, &Image2IcoForm::removePicture);
    controls::shortcut(m_list, QKeySequence::Delete, [this] { removePicture(); });
    column->addWidget(m_remove);
    return panel;
}

QWidget *Image2IcoForm::buildCrop()
{
    auto *panel = new QWidget(this);
    auto *column = new QVBoxLayout(panel);
    column->setContentsMargins({});
    m_crop = new CropView(panel);
    connect(m_crop, &CropView::squareChanged, this, &Image2IcoForm::squareWasChanged);
    column->addWidget(m_crop, 1);
    auto *row = new QHBoxLayout;
    m_largest = controls::pushButton(panel, {.objectName = "largestButton", .text = tr("Largest Square")});
    connect(m_largest, &QPushButton::clicked, this,
            [this] { setSquare(icons::largestSquare(m_image.size())); });
    m_whole = controls::pushButton(panel, {.objectName = "wholeButton", .text = tr("Whole Picture")});
    connect(m_whole, &QPushButton::clicked, this, [this] { setSquare(icons::squareAround(m_image.size())); });
    row->addWidget(m_largest);
    row->addWidget(m_whole);
    row->addStretch();
    column->addLayout(row);
    return panel;
}

void Image2IcoForm::shellEvent(ShellEvent event, quint32)
{
    if (event == ShellEvent::ShiftDown || event == ShellEvent::ShiftUp)
        m_crop->setCentreKept(event == ShellEvent::ShiftDown);
}

void Image2IcoForm::choosePictures()
{
    addPictures(platform::dialogs().chooseFilesToOpen(
        this, tr("Add Pictures"), platform::knownFolder(platform::KnownFolder::Pictures), pictureFilter()));
}

void Image2IcoForm::addPictures(const QStringList &paths)
{
    const int first = m_list->count();
    for (const QString &path : paths) {
        const QString shown = QDir::toNativeSeparators(path);
        m_pictures.append({shown, {}});
        auto *item = new QListWidgetItem(QFileInfo(shown).fileName(), m_list);
        item->setToolTip(shown);
    }
    if (m_list->count() > first)
        m_list->setCurrentRow(first);
    updateButtons();
}

void Image2IcoForm::removePicture()
{
    const int row = m_list->currentRow();
    if (row < 0)
        return;
    m_pictures.removeAt(row);
    delete m_list->takeItem(row);
    showCurrent();
}

icons::SourcePicture *Image2IcoForm::current()
{
    const int row = m_list->currentRow();
    return row >= 0 && row < m_pictures.size() ? &m_pictures[row] : nullptr;
}

void Image2IcoForm::showCurrent()
{
    m_image = {};
    m_crop->setPicture({}, {});
    m_sizes->setPicture({}, {});
    updateButtons();
    const icons::SourcePicture *picture = current();
    if (!picture) {
        m_decoding.forget();
        return;
    }
    m_decoding.ask(
        [decoders = m_decoders, path = picture->path](const core::Asking &asking) {
            std::optional<imaging::LoadedImage> loaded = decoders->picture(path, asking.cancel());
            return loaded ? loaded->image : QImage();
        },
        [this, path = picture->path](const QImage &image) { showDecoded(path, image); },
        [this, path = picture->path](const QString &) { showDecoded(path, {}); });
}

void Image2IcoForm::showDecoded(const QString &path, const QImage &image)
{
    icons::SourcePicture *picture = current();
    if (!picture || picture->path != path)
        return;
    if (image.isNull()) {
        m_notice->showNotice(
            NoticeBar::Kind::Error,
            tr("%1 cannot be read: it is no picture of a known format, or it is damaged.").arg(path));
        return;
    }
    m_image = image;
    if (picture->square.isEmpty())
        picture->square = icons::largestSquare(image.size());
    m_crop->setPicture(image, picture->square);
    m_sizes->setPicture(image, picture->square);
    updateButtons();
}

void Image2IcoForm::squareWasChanged(const QRect &square)
{
    if (icons::SourcePicture *picture = current())
        picture->square = square;
    m_sizes->setSquare(square);
}

void Image2IcoForm::setSquare(const QRect &square)
{
    m_crop->setSquare(square);
    squareWasChanged(square);
}

void Image2IcoForm::updateButtons()
{
    const bool free = !m_job->isBusy() && !m_sizes->sizes().isEmpty();
    m_save->setEnabled(free && !m_image.isNull());
    m_saveAll->setEnabled(free && m_pictures.size() > 1);
    m_remove->setEnabled(current() != nullptr);
    m_largest->setEnabled(!m_image.isNull());
    m_whole->setEnabled(!m_image.isNull());
}

void Image2IcoForm::saveCurrent()
{
    const icons::SourcePicture *picture = current();
    if (!picture)
        return;
    const QString name = QFileInfo(picture->path).completeBaseName() + QStringLiteral(".ico");
    const QString target = platform::dialogs().chooseFileToSave(
        this, tr("Save to ICO File"), QDir(icons::exportFolder.read()).filePath(name),
        tr("ICO files (*.ico)"));
    if (target.isEmpty() || !current())
        return;
    icons::exportFolder.write(QDir::toNativeSeparators(QFileInfo(target).path()));
    save({.pictures = {*current()}, .file = QDir::toNativeSeparators(target)});
}

void Image2IcoForm::saveAll()
{
    const QString folder =
        platform::dialogs().chooseFolder(this, tr("Select folder ..."), icons::exportFolder.read());
    if (folder.isEmpty())
        return;
    icons::exportFolder.write(folder);
    save({.pictures = m_pictures, .folder = folder});
}

void Image2IcoForm::save(icons::SaveTask task)
{
    const auto count = task.pictures.size();
    task.sizes = m_sizes->sizes();
    task.sharpen = m_sizes->sharpens();
    const bool several = count > 1;
    if (several)
        m_pages->setCurrentWidget(m_progress);
    m_job->run(
        {.busyText = tr("the making of icons"),
         .page = several ? m_progress : nullptr,
         .title = tr("Saving icons. Please wait ..."),
         .subject = task.folder,
         .stoppingTitle = tr("Stopping ...")},
        [decoders = m_decoders, task = std::move(task)](const core::JobControl &job) {
            return icons::saveIcons(task, *decoders, job);
        },
        [this, count](auto &job) {
            const icons::SaveResult saved = job.takeResult().value_or(icons::SaveResult());
            m_pages->setCurrentIndex(0);
            updateButtons();
            if (job.stopRequested())
                showStopped(saved, count);
            else
                showSaved(saved, job.error());
        });
    updateButtons();
}

void Image2IcoForm::showStopped(const icons::SaveResult &saved, qsizetype count)
{
    m_lastSaved = saved.files.value(0);
    m_notice->showNotice(NoticeBar::Kind::Warning,
                         tr("Stopped. %1 of %2 icons were saved.").arg(saved.files.size()).arg(count),
                         saved.files.isEmpty() ? nullptr : m_reveal);
}

void Image2IcoForm::showSaved(const icons::SaveResult &saved, const QString &error)
{
    QStringList failures = saved.failures;
    if (!error.isEmpty())
        failures.append(error);
    m_lastSaved = saved.files.value(0);
    const QString folder = QDir::toNativeSeparators(QFileInfo(m_lastSaved).path());
    if (!failures.isEmpty()) {
        m_notice->showNotice(NoticeBar::Kind::Error,
                             tr("%1 icons were saved, %2 were not: %3")
                                 .arg(saved.files.size())
                                 .arg(failures.size())
                                 .arg(failures.first(std::min<qsizetype>(failures.size(), maxFailuresShown))
                                          .join(QStringLiteral("; "))));
    } else if (!saved.files.isEmpty()) {
        m_notice->showNotice(NoticeBar::Kind::Success,
                             saved.files.size() == 1
                                 ? tr("Saved as %1").arg(m_lastSaved)
                                 : tr("%1 icons were saved in %2").arg(saved.files.size()).arg(folder),
                             m_reveal);
    }
}
