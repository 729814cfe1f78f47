// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileType.h"
#include "Handler.h"

#include <QIODevice>
#include <QImageIOPlugin>

class HeifPlugin : public QImageIOPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QImageIOHandlerFactoryInterface_iid FILE "heif.json")

public:
    Capabilities capabilities(QIODevice *device, const QByteArray &format) const override
    {
        if (format == "avif" || format == "heic" || format == "heif")
            return CanRead | CanWrite;
        if (!format.isEmpty() || !device || !device->isReadable())
            return {};
        return heif::formatOf(*device).isEmpty() ? Capabilities() : CanRead;
    }

    QImageIOHandler *create(QIODevice *device, const QByteArray &format) const override
    {
        auto *handler = new heif::Handler;
        handler->setDevice(device);
        handler->setFormat(format);
        return handler;
    }
};

#include "Plugin.moc"
