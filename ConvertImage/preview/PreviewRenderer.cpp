// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/preview/PreviewRenderer.h"

#include "ConvertImage/engine/ImageWriter.h"
#include "imaging/DecoderPool.h"

#include <utility>

namespace
{

// For display: 32 bits, sRGB, and no larger than the view.
QImage fitted(const QImage &image, const QSize &area)
{
    if (image.isNull() || area.isEmpty() ||
        (image.width() <= area.width() && image.height() <= area.height()))
        return {};
    const QSize size = image.size().scaled(area, Qt::KeepAspectRatio).expandedTo({1, 1});
    // A much larger image is subsampled first: smooth scaling reads every pixel.
    const QSize coarse = 3 * size;
    QImage source = image;
    if (coarse.width() < image.width() && coarse.height() < image.height())
        source = image.scaled(coarse, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    return source.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

PreviewRenderer::PreviewRenderer(std::shared_ptr<imaging::DecoderPool> decoders, QObject *parent)
    : QObject(parent),
      m_decoders(std::move(decoders))
{
    m_thread.setMaxThreadCount(1);
    m_thread.setExpiryTimeout(-1);
    m_estimates.setMaxThreadCount(1);
    m_estimates.setThreadPriority(QThread::LowPriority);
}

PreviewRenderer::~PreviewRenderer()
{
    cancel();
    m_ending.set();
    m_thread.waitForDone();
    m_estimates.waitForDone();
}

void PreviewRenderer::render(const PreviewWish &wish)
{
    const quint64 number = ++m_latest;
    m_thread.clear(); // earlier requests that have not started
    m_estimates.clear();
    m_thread.start([this, number, wish] { work(number, wish); });
}

void PreviewRenderer::dropCache()
{
    m_cache.stale = true;
}

void PreviewRenderer::cancel()
{
    ++m_latest;
    m_thread.clear();
}

void PreviewRenderer::load(const PreviewWish &wish)
{
    const auto read = [this](const QString &path) {
        auto loaded = m_decoders->source(path, {}, m_ending);
        return loaded ? std::move(loaded->image) : QImage();
    };
    const bool stale = m_cache.stale.exchange(false);
    if (stale || m_cache.path != wish.path) {
        m_cache.image = {};
        m_cache.fitted = {};
        m_cache.fitArea = {};
        m_cache.image = read(wish.path);
        m_cache.path = wish.path;
    }
    if (m_cache.fitArea != wish.area) {
        m_cache.fitted = fitted(m_cache.image, wish.area);
        m_cache.fitArea = wish.area;
    }
    const QString &mark = wish.rendering.marks.picture.path;
    if (stale || m_cache.markPath != mark) {
        m_cache.mark = mark.isEmpty() ? QImage() : read(mark);
        m_cache.markPath = mark;
    }
}

void PreviewRenderer::work(quint64 number, const PreviewWish &wish)
{
    if (!isLatest(number))
        return;
    load(wish);
    if (!isLatest(number))
        return;
    auto picture = std::make_shared<PreviewImage>();
    picture->number = number;
    picture->path = wish.path;
    const conversion::MarkSources sources{m_cache.mark, wish.defaultFont};
    const conversion::Rendered made = conversion::render(m_cache.image, wish.rendering, sources, true);
    picture->before = m_cache.image;
    picture->beforeFitted = m_cache.fitted;
    picture->after = made.image;
    picture->problem = problemText(made.problem);
    picture->afterFitted =
        made.image.cacheKey() == m_cache.image.cacheKey() ? m_cache.fitted : fitted(made.image, wish.area);
    picture->marks = conversion::placedMarks(made.image.size(), m_cache.image.dotsPerMeterY(),
                                             wish.rendering.marks, sources);
    for (conversion::PlacedMark &mark : picture->marks)
        mark.image = {};
    const QImage after = picture->after;
    QMetaObject::invokeMethod(this, [this, number, picture] {
        if (isLatest(number))
            emit rendered(picture);
    });
    if (after.isNull() || wish.encoding.target == conversion::Target::Pdf || !isLatest(number))
        return;
    m_estimates.start([this, number, after, encoding = wish.encoding] {
        if (!isLatest(number))
            return;
        const qint64 bytes = conversion::estimatedBytes(after, encoding);
        QMetaObject::invokeMethod(this, [this, number, bytes] {
            if (isLatest(number))
                emit estimated(bytes);
        });
    });
}
