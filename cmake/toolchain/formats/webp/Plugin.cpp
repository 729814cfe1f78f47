// SPDX-License-Identifier: GPL-3.0-or-later
// Qt's reader and writer of WebP, which knows nothing of the orientation that cameras store, with that added.
#include "Exif.h"

#include "qwebphandler_p.h"

#include <QImage>
#include <QImageIOPlugin>
#include <QTransform>
#include <QVariant>

namespace webp
{

class Handler : public QWebpHandler
{
public:
    bool supportsOption(ImageOption option) const override
    {
        return option == ImageTransformation || QWebpHandler::supportsOption(option);
    }

    QVariant option(ImageOption option) const override
    {
        if (option != ImageTransformation)
            return QWebpHandler::option(option);
        return static_cast<int>(device()->isReadable() ? storedTransformation(*device())
                                                       : TransformationNone);
    }

    void setOption(ImageOption option, const QVariant &value) override
    {
        if (option == ImageTransformation)
            m_wanted = static_cast<Transformations>(value.toInt());
        else
            QWebpHandler::setOption(option, value);
    }

    // The orientation is not stored but done.
    bool write(const QImage &image) override
    {
        QImage upright = image.mirrored(m_wanted & TransformationMirror, m_wanted & TransformationFlip);
        if (m_wanted & TransformationRotate90)
            upright = upright.transformed(QTransform().rotate(90));
        return QWebpHandler::write(upright);
    }

private:
    Transformations m_wanted = TransformationNone;
};

} // namespace webp

class WebpPlugin : public QImageIOPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QImageIOHandlerFactoryInterface_iid FILE "webp.json")

public:
    Capabilities capabilities(QIODevice *device, const QByteArray &format) const override
    {
        if (format == "webp")
            return CanRead | CanWrite;
        if (!format.isEmpty() || !device || !device->isReadable())
            return {};
        return QWebpHandler::canRead(device) ? CanRead : Capabilities();
    }

    QImageIOHandler *create(QIODevice *device, const QByteArray &format) const override
    {
        auto *handler = new webp::Handler;
        handler->setDevice(device);
        handler->setFormat(format);
        return handler;
    }
};

#include "Plugin.moc"
