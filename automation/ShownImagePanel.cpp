// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/ShownImagePanel.h"

#include "platform/Dialogs.h"
#include "platform/KnownFolders.h"
#include "platform/Shell.h"
#include "widgets/Controls.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QFile>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

using automation::ShownImage;

namespace
{

constexpr int maxRows = 4;
constexpr QSize largeImage(192, 108);
constexpr QSize smallImage(96, 54);
constexpr qint64 maxThumbnailBytes = 4 << 20;
constexpr QSize maxThumbnail(2048, 2048); // limit for a file that could have been replaced by someone else

// The file is written by our helper process, but is still treated as untrusted.
QImage readThumbnail(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > maxThumbnailBytes)
        return {};
    QImageReader reader(&file, "png");
    const QSize size = reader.size();
    return size.width() <= maxThumbnail.width() && size.height() <= maxThumbnail.height() ? reader.read()
                                                                                          : QImage();
}

// Scales the image to its size and to the screen's scale factor.
class Thumbnail : public QWidget
{
public:
    Thumbnail(QImage image, QSize size, QWidget *parent) : QWidget(parent), m_image(std::move(image))
    {
        setFixedSize(size);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        QPainterPath shape;
        shape.addRoundedRect(rect(), theme::controlRadius, theme::controlRadius);
        painter.setClipPath(shape);
        painter.fillRect(rect(), theme::colors(this).track);
        if (m_image.isNull()) {
            const QRect place(0, 0, 24, 24);
            controls::image("Image24").paint(&painter, place.translated(rect().center() - place.center()));
            return;
        }
        const QSize filled = m_image.size().scaled(size(), Qt::KeepAspectRatioByExpanding);
        painter.drawImage(
            QRect(QPoint((width() - filled.width()) / 2, (height() - filled.height()) / 2), filled), m_image);
    }

private:
    QImage m_image;
};

} // namespace

ShownImagePanel::ShownImagePanel(QWidget *parent)
    : QWidget(parent),
      m_folder(automation::wallpaperFolder(platform::knownFolder(platform::KnownFolder::LocalAppData))),
      m_rows(new QVBoxLayout(this))
{
    m_rows->setContentsMargins(0, 0, 0, 0);
    show({});
}

void ShownImagePanel::refresh()
{
    QFile file(m_folder + u'\\' + automation::shownFile.toString());
    const QByteArray bytes =
        file.open(QIODevice::ReadOnly) ? file.read(automation::maxJobFileBytes) : QByteArray();
    if (bytes == m_read)
        return;
    m_read = bytes;
    const auto shown = automation::parseAnswer(bytes);
    show(shown ? shown->pictures : QList<ShownImage>());
}

void ShownImagePanel::show(const QList<ShownImage> &pictures)
{
    delete std::exchange(m_content, new QWidget(this));
    auto *layout = new QVBoxLayout(m_content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::spaceSnug);
    QList<ShownImage> each; // distinct ones: monitors may share an image
    for (const ShownImage &picture : pictures) {
        if (!each.contains(picture) && each.size() < maxRows)
            each.append(picture);
    }
    if (each.isEmpty())
        each.append({.title = tr("No picture of this tool is on the desktop")});
    for (const ShownImage &picture : each)
        layout->addWidget(row(picture, each.size() == 1));
    m_rows->addWidget(m_content);
}

QWidget *ShownImagePanel::row(const ShownImage &picture, bool alone)
{
    auto *row = new QWidget(m_content);
    auto *image = new Thumbnail(readThumbnail(picture.thumbnail), alone ? largeImage : smallImage, row);
    image->setObjectName(QStringLiteral("thumbnailLabel"));
    image->setAccessibleName(tr("Picture on the desktop: %1").arg(picture.title));
    auto *title = new WrappedLabel(row);
    title->setObjectName(QStringLiteral("titleLabel"));
    title->setFont(theme::sectionTitle(font()));
    title->setText(picture.title);
    auto *credit = new WrappedLabel(row);
    credit->setObjectName(QStringLiteral("creditLabel"));
    theme::makeMuted(credit);
    credit->setText(picture.credit);
    credit->setVisible(!picture.credit.isEmpty());

    auto *texts = new QVBoxLayout;
    texts->setSpacing(theme::spaceTight);
    texts->addWidget(title);
    texts->addWidget(credit);
    if (!picture.page.isEmpty()) {
        QPushButton *open = controls::pushButton(row, {"openPageButton", "", tr("Open Its Page")});
        open->setToolTip(picture.page.toString());
        connect(open, &QPushButton::clicked, this, [this, page = picture.page] {
            if (!platform::shell().openWebPage(page))
                platform::dialogs().warn(
                    this, tr("Auto Wallpaper Changer"),
                    tr("The browser could not be started. The address is:\n%1").arg(page.toString()));
        });
        texts->addWidget(open, 0, Qt::AlignLeft);
    }
    texts->addStretch();
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::spaceWide);
    layout->addWidget(image, 0, Qt::AlignTop);
    layout->addLayout(texts, 1);
    return row;
}
