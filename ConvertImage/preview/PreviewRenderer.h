// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Render.h"
#include "core/CancelFlag.h"

#include <QObject>
#include <QSize>
#include <QThreadPool>

#include <atomic>
#include <memory>

namespace imaging
{
class DecoderPool;
}

// What the preview shows: one source with the settings of this moment.
struct PreviewWish {
    QString path;
    conversion::Rendering rendering;
    conversion::Encoding encoding;
    QString defaultFont;
    QSize area; // of the view, in device pixels: a picture fitted into it is made as well
};

struct PreviewPicture {
    quint64 number = 0; // of the wish
    QString path;
    QImage before; // as loaded
    QImage after;
    QImage beforeFitted; // no larger than the view; null where the picture itself is not
    QImage afterFitted;
    std::vector<conversion::PlacedMark> marks; // without their images
    QString problem;
};
Q_DECLARE_METATYPE(std::shared_ptr<const PreviewPicture>)

// Renders previews on a thread of its own, the latest wish only. The last source is kept decoded, until
// dropCache(). Conversions do not go through it.
class PreviewRenderer : public QObject
{
    Q_OBJECT

public:
    explicit PreviewRenderer(std::shared_ptr<imaging::DecoderPool> decoders, QObject *parent = nullptr);
    ~PreviewRenderer() override;

    // Supersedes every earlier wish: nothing about those is told any more.
    void render(const PreviewWish &wish);
    // Forgets the decoded source, which may have changed on the disk.
    void dropCache();
    // Nothing is wished for.
    void cancel();

signals:
    void rendered(const std::shared_ptr<const PreviewPicture> &picture);
    // About the size that the file would have; later, as that takes longer. 0: unknown.
    void estimated(qint64 bytes);

private:
    struct Cache {
        QString path;
        QImage image;
        QSize fitArea;
        QImage fitted;
        QString markPath;
        QImage mark;
        std::atomic_bool stale{false};
    };

    void work(quint64 number, const PreviewWish &wish);
    bool isLatest(quint64 number) const { return number == m_latest; }
    void load(const PreviewWish &wish);

    std::shared_ptr<imaging::DecoderPool> m_decoders;
    core::CancelFlag m_ending;
    std::atomic<quint64> m_latest{0};
    Cache m_cache; // of the thread
    QThreadPool m_thread;
    QThreadPool m_estimates; // a thread of its own: some encoders take longer than a person waits
};
