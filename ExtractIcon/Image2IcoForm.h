// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/generator/IconSaving.h"
#include "core/LatestAnswer.h"
#include "imaging/DecoderPool.h"
#include "widgets/FLWidget.h"

#include <QImage>
#include <QList>

#include <memory>

class JobHost;
class NoticeBar;
class QAction;
class QListWidget;
class QPushButton;
class QStackedLayout;
class ScanPage;

namespace icons
{
class CropView;
class SizesPanel;
} // namespace icons

// The icon generator: makes icon files from images. Each image has its own crop square; sizes and sharpening
// apply to all. Images are decoded in separate processes.
class Image2IcoForm : public FLWidget
{
    Q_OBJECT

public:
    explicit Image2IcoForm(QWidget *parent = nullptr);

    void shellEvent(ShellEvent event, quint32 value) override;

    void addPictures(const QStringList &paths);

private:
    QWidget *buildPage();
    QWidget *buildHeader();
    QWidget *buildSources();
    QWidget *buildCrop();
    void choosePictures();
    void removePicture();
    void showCurrent();
    void showDecoded(const QString &path, const QImage &image);
    void squareWasChanged(const QRect &square);
    void setSquare(const QRect &square);
    void updateButtons();
    void saveCurrent();
    void saveAll();
    // With the chosen sizes and sharpening. Several images are saved behind a page that shows the progress.
    void save(icons::SaveTask task);
    void showStopped(const icons::SaveResult &saved, qsizetype count);
    void showSaved(const icons::SaveResult &saved, const QString &error);
    icons::SourcePicture *current();

    QList<icons::SourcePicture> m_pictures; // one per row of the list
    QListWidget *m_list = nullptr;
    icons::CropView *m_crop = nullptr;
    icons::SizesPanel *m_sizes = nullptr;
    NoticeBar *m_notice = nullptr;
    QPushButton *m_save = nullptr;
    QPushButton *m_saveAll = nullptr;
    QPushButton *m_remove = nullptr;
    QPushButton *m_largest = nullptr;
    QPushButton *m_whole = nullptr;
    QAction *m_reveal = nullptr;
    QString m_lastSaved;
    QImage m_image; // of the current row; null while it is being decoded
    std::shared_ptr<imaging::DecoderPool> m_decoders;
    core::LatestAnswer m_decoding;
    QStackedLayout *m_pages;
    ScanPage *m_progress; // of saving several
    JobHost *m_job;
};
