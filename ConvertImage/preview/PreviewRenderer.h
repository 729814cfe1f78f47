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

// A preview request: one source with the current settings.
struct PreviewWish {
    QString path;
    conversion::Rendering rendering;
    conversion::Encoding encoding;
    QString defaultFont;
    QSize area; // view size in device pixels; the result includes an image fitted to it
};

struct PreviewImage {
    quint64 number = 0; // of the request
    QString path;
    QImage before; // as loaded
    QImage after;
    QImage beforeFitted; // no larger than the view; null if the image already fits
    QImage afterFitted;
    std::vector<conversion::PlacedMark> marks; // without their images
    QString problem;
};
Q_DECLARE_METATYPE(std::shared_ptr<const PreviewImage>)

// Renders previews on one thread, only for the latest request. The last source stays decoded until
// dropCache(). Conversions do not use this class.
class PreviewRenderer : public QObject
{
    Q_OBJECT

public:
    explicit PreviewRenderer(std::shared_ptr<imaging::DecoderPool> decoders, QObject *parent = nullptr);
    ~PreviewRenderer() override;

    // Replaces all earlier requests; nothing more is emitted for those.
    void render(const PreviewWish &wish);
    // Discards the decoded source, which may have changed on disk.
    void dropCache();
    // Drops all requests.
    void cancel();

signals:
    void rendered(const std::shared_ptr<const PreviewImage> &picture);
    // The approximate file size, emitted later since it takes longer. 0 if unknown.
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
    Cache m_cache; // used only on the thread
    QThreadPool m_thread;
    QThreadPool m_estimates; // separate, since some encoders take seconds
};
