// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Render.h"

#include "ConvertImage/engine/Adjustments.h"
#include "ConvertImage/engine/ImageFormat.h"
#include "ConvertImage/engine/Resizing.h"

#include <QColorSpace>
#include <QCoreApplication>

namespace conversion
{

namespace
{

// Converts CMYK to RGB: no later step, and hardly any viewer, supports CMYK.
QImage withoutInks(const QImage &image)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    if (image.format() == QImage::Format_CMYK8888) {
        const QColorSpace srgb(QColorSpace::SRgb);
        QImage converted;
        if (image.colorSpace().isValid())
            converted = image.convertedToColorSpace(srgb, QImage::Format_RGB32);
        if (converted.isNull())
            converted = image.convertToFormat(QImage::Format_RGB32);
        converted.setColorSpace(srgb);
        return converted;
    }
#endif
    return image;
}

} // namespace

QString problemText(RenderProblem problem)
{
    switch (problem) {
    case RenderProblem::None:
        return {};
    case RenderProblem::NoImage:
        return QCoreApplication::translate("conversion", "The file is not a readable picture");
    case RenderProblem::NoSize:
        return QCoreApplication::translate("conversion", "The new size would be less than one pixel");
    case RenderProblem::TooLarge:
        return QCoreApplication::translate("conversion", "The new size would be too large");
    case RenderProblem::NoMemory:
        break;
    }
    return QCoreApplication::translate("conversion", "There is not enough memory for this picture");
}

Rendered render(const QImage &loaded, const Rendering &rendering, const MarkSources &sources, bool preview)
{
    if (loaded.isNull())
        return {{}, RenderProblem::NoImage};
    const QSize size = resizedSize(loaded.size(), rendering.resize);
    if (size.isEmpty())
        return {{}, RenderProblem::NoSize};
    const qint64 bytesPerPixel = isDeep(loaded) ? 8 : 4;
    if (qint64(size.width()) > maxRenderedBytes / bytesPerPixel / size.height())
        return {{}, RenderProblem::TooLarge};
    QImage image = resized(withoutInks(loaded), size, preview);
    image = adjusted(image, rendering.adjustments);
    if (rendering.adjustments.grayScale && !image.isNull())
        image = grey(image);
    if (!rendering.marks.isEmpty() && !image.isNull())
        image = withMarks(image, placedMarks(size, loaded.dotsPerMeterY(), rendering.marks, sources));
    if (image.isNull())
        return {{}, RenderProblem::NoMemory};
    return {std::move(image), RenderProblem::None};
}

} // namespace conversion
