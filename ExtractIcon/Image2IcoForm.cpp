// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/Image2IcoForm.h"

#include "ExtractIcon/IconFiles.h"
#include "ExtractIcon/PageHead.h"
#include "ExtractIcon/Settings.h"
#include "ExtractIcon/engine/CropSquare.h"
#include "ExtractIcon/engine/IconWriter.h"
#include "ExtractIcon/generator/CropView.h"
#include "ExtractIcon/generator/IconPreview.h"
#include "platform/Dialogs.h"
#include "platform/KnownFolders.h"
#include "platform/Shell.h"
#include "widgets/Controls.h"
#include "widgets/DropFrame.h"
#include "widgets/JobHost.h"
#include "widgets/NoticeBar.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QImageReader>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

using icons::CropView;

namespace
{

constexpr int previewPause = 60; // ms
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

QList<QImage> made(const QImage &picture, const QRect &square, const QList<int> &sizes, bool sharpen,
                   const core::CancelFlag &cancel)
{
    QList<QImage> images;
    const icons::IconPicture prepared(picture, square);
    for (const int side : sizes) {
        if (cancel.isSet() || !prepared.isValid())
            return {};
        images.append(prepared.made(side, sharpen));
    }
    return images;
}

// `folder`\NAME.ico, with a number if a file or another image of the same job has that name.
QString freeTarget(const QString &folder, const QString &name, const QStringList &taken)
{
    QString target = folder + QLatin1Char('\\') + name + QStringLiteral(".ico");
    for (int again = 2; taken.contains(target, Qt::CaseInsensitive) || QFileInfo::exists(target); ++again)
        target = folder + QLatin1Char('\\') + name + QStringLiteral(" (%1).ico").arg(again);
    return target;
}

} // namespace

Image2IcoForm::Image2IcoForm(QWidget *parent)
    : FLWidget(parent),
      m_decoders(std::make_shared<imaging::DecoderPool>(
          imaging::DecoderPool::Options{imaging::DecoderPool::decoderProgram()})),
      m_job(new JobHost(this))
{
    auto *page = new DropFrame(this);
    page->setAccepts(DropFrame::Accepts::Anything);
    page->setHint(tr("Drop pictures to make icons of them"));
    connect(page, &DropFrame::pathsDropped, this, &Image2IcoForm::addPictures);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins({});
    outer->addWidget(page);
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(theme::pageMargin, theme::space, theme::pageMargin, theme::space);
    column->setSpacing(theme::space);
    column->addWidget(buildHeader());
    m_notice = new NoticeBar(page);
    column->addWidget(m_notice);
    auto *splitter = new QSplitter(page);
    splitter->addWidget(buildSources());
    splitter->addWidget(buildCrop());
    splitter->addWidget(buildSizes());
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({listWidth, 2 * listWidth, previewWidth});
    column->addWidget(splitter, 1);
    m_reveal = new QAction(tr("Show in Explorer"), this);
    connect(m_reveal, &QAction::triggered, this, [this] { platform::shell().revealInExplorer(m_lastSaved); });
    m_pause.setSingleShot(true);
    m_pause.setInterval(previewPause);
    connect(&m_pause, &QTimer::timeout, this, &Image2IcoForm::updatePreview);
    updateButtons();
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

QWidget *Image2IcoForm::buildSizes()
{
    auto *panel = new QWidget(this);
    auto *column = new QVBoxLayout(panel);
    column->setContentsMargins({});
    auto *scroll = new QScrollArea(panel);
    m_preview = new IconPreview;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(m_preview);
    column->addWidget(scroll, 1);
    auto *grid = new QGridLayout;
    constexpr int columns = 5;
    for (const int side : icons::usualSizes) {
        auto *box = new QCheckBox(QString::number(side), panel);
        box->setObjectName(QStringLiteral("size%1").arg(side));
        box->setAccessibleName(tr("%1 pixels").arg(side));
        box->setChecked(true);
        connect(box, &QCheckBox::toggled, this, [this] {
            m_pause.start();
            updateButtons();
        });
        const int place = static_cast<int>(m_sizes.size());
        grid->addWidget(box, place / columns, place % columns);
        m_sizes.append(box);
    }
    column->addLayout(grid);
    m_sharpen = new QCheckBox(tr("Sharpen small sizes"), panel);
    m_sharpen->setObjectName(QStringLiteral("sharpenBox"));
    m_sharpen->setChecked(true);
    connect(m_sharpen, &QCheckBox::toggled, &m_pause, qOverload<>(&QTimer::start));
    column->addWidget(m_sharpen);
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

Image2IcoForm::Picture *Image2IcoForm::current()
{
    const int row = m_list->currentRow();
    return row >= 0 && row < m_pictures.size() ? &m_pictures[row] : nullptr;
}

void Image2IcoForm::showCurrent()
{
    m_image = {};
    m_crop->setPicture({}, {});
    m_preview->setImages({});
    m_making.forget();
    updateButtons();
    const Picture *picture = current();
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
    Picture *picture = current();
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
    updatePreview();
    updateButtons();
}

void Image2IcoForm::squareWasChanged(const QRect &square)
{
    if (Picture *picture = current())
        picture->square = square;
    if (!m_pause.isActive())
        m_pause.start();
}

void Image2IcoForm::setSquare(const QRect &square)
{
    m_crop->setSquare(square);
    squareWasChanged(square);
}

QList<int> Image2IcoForm::chosenSizes() const
{
    QList<int> sizes;
    for (qsizetype i = 0; i < m_sizes.size(); ++i) {
        if (m_sizes[i]->isChecked())
            sizes.append(icons::usualSizes[static_cast<std::size_t>(i)]);
    }
    return sizes;
}

void Image2IcoForm::updatePreview()
{
    const Picture *picture = current();
    if (!picture || m_image.isNull())
        return;
    m_making.ask(
        [image = m_image, square = picture->square, sizes = chosenSizes(), sharpen = m_sharpen->isChecked()](
            const core::Asking &asking) { return made(image, square, sizes, sharpen, asking.cancel()); },
        [this](const QList<QImage> &images) { m_preview->setImages(images); });
}

void Image2IcoForm::updateButtons()
{
    const bool free = !m_job->isBusy() && !chosenSizes().isEmpty();
    m_save->setEnabled(free && !m_image.isNull());
    m_saveAll->setEnabled(free && m_pictures.size() > 1);
    m_remove->setEnabled(current() != nullptr);
    m_largest->setEnabled(!m_image.isNull());
    m_whole->setEnabled(!m_image.isNull());
}

void Image2IcoForm::saveCurrent()
{
    const Picture *picture = current();
    if (!picture)
        return;
    const QString name = QFileInfo(picture->path).completeBaseName() + QStringLiteral(".ico");
    const QString target = platform::dialogs().chooseFileToSave(
        this, tr("Save to ICO File"), QDir(icons::exportFolder.read()).filePath(name),
        tr("ICO files (*.ico)"));
    if (target.isEmpty() || !current())
        return;
    icons::exportFolder.write(QDir::toNativeSeparators(QFileInfo(target).path()));
    save({*current()},
         [target](const QString &, const QStringList &) { return QDir::toNativeSeparators(target); });
}

void Image2IcoForm::saveAll()
{
    const QString folder =
        platform::dialogs().chooseFolder(this, tr("Select folder ..."), icons::exportFolder.read());
    if (folder.isEmpty())
        return;
    icons::exportFolder.write(folder);
    save(m_pictures, [folder](const QString &picture, const QStringList &taken) {
        return freeTarget(folder, QFileInfo(picture).completeBaseName(), taken);
    });
}

void Image2IcoForm::save(QList<Picture> pictures, FindTarget findTarget)
{
    const auto work = [decoders = m_decoders, pictures = std::move(pictures),
                       findTarget = std::move(findTarget), sizes = chosenSizes(),
                       sharpen = m_sharpen->isChecked()](const core::JobControl &job) {
        Saved saved;
        QStringList targets;
        for (qsizetype i = 0; i < pictures.size() && !job.cancel.isSet(); ++i) {
            targets.append(findTarget(pictures[i].path, targets));
            const auto loaded = decoders->picture(pictures[i].path, job.cancel);
            const QImage image = loaded ? loaded->image : QImage();
            const QRect square =
                pictures[i].square.isEmpty() ? icons::largestSquare(image.size()) : pictures[i].square;
            const QByteArray file = icons::makeIconFile(made(image, square, sizes, sharpen, job.cancel));
            const QString error =
                file.isEmpty() ? tr("the picture cannot be read") : icons::writeFile(targets[i], file);
            if (error.isEmpty())
                saved.files.append(targets[i]);
            else if (!job.cancel.isSet())
                saved.failures.append(QStringLiteral("%1: %2").arg(QFileInfo(targets[i]).fileName(), error));
        }
        return saved;
    };
    m_job->run({.busyText = tr("the making of icons")}, work, [this](auto &job) {
        const std::optional<Saved> saved = job.takeResult();
        showSaved(saved.value_or(Saved{}), job.error());
    });
    updateButtons();
}

void Image2IcoForm::showSaved(const Saved &saved, const QString &error)
{
    updateButtons();
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
