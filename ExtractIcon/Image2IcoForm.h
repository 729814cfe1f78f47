// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconPicture.h"
#include "core/LatestAnswer.h"
#include "imaging/DecoderPool.h"
#include "widgets/FLWidget.h"

#include <QImage>
#include <QList>
#include <QTimer>

#include <functional>
#include <memory>

class IconPreview;
class JobHost;
class NoticeBar;
class QAction;
class QCheckBox;
class QListWidget;
class QPushButton;

namespace icons
{
class CropView;
}

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
    struct Picture {
        QString path;
        QRect square; // empty until the image is decoded
    };
    struct Saved {
        QStringList files;
        QStringList failures;
    };

    QWidget *buildHeader();
    QWidget *buildSources();
    QWidget *buildCrop();
    QWidget *buildSizes();
    void choosePictures();
    void removePicture();
    void showCurrent();
    void showDecoded(const QString &path, const QImage &image);
    void squareWasChanged(const QRect &square);
    void setSquare(const QRect &square);
    void updatePreview();
    void updateButtons();
    void saveCurrent();
    void saveAll();
    // Returns the icon path for an image; called on the worker with the paths that the job has used so far.
    using FindTarget = std::function<QString(const QString &picture, const QStringList &taken)>;
    void save(QList<Picture> pictures, FindTarget findTarget);
    void showSaved(const Saved &saved, const QString &error);
    QList<int> chosenSizes() const;
    Picture *current();

    QList<Picture> m_pictures; // one per row of the list
    QListWidget *m_list = nullptr;
    icons::CropView *m_crop = nullptr;
    IconPreview *m_preview = nullptr;
    NoticeBar *m_notice = nullptr;
    QList<QCheckBox *> m_sizes; // in the order of usualSizes
    QCheckBox *m_sharpen = nullptr;
    QPushButton *m_save = nullptr;
    QPushButton *m_saveAll = nullptr;
    QPushButton *m_remove = nullptr;
    QPushButton *m_largest = nullptr;
    QPushButton *m_whole = nullptr;
    QAction *m_reveal = nullptr;
    QString m_lastSaved;
    QImage m_image; // of the current row; null while it is being decoded
    std::shared_ptr<imaging::DecoderPool> m_decoders;
    QTimer m_pause; // delays the preview while the square is being changed
    core::LatestAnswer m_decoding;
    core::LatestAnswer m_making;
    JobHost *m_job;
};
