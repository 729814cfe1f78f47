// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/DropFrame.h"

#include "widgets/Theme.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QPainter>

namespace
{

// The first dropped thing, when it is a folder. Whoever drags it has just been shown it, so asking what it is
// does not take long; it is asked when the drag enters and when it is dropped, not while it moves.
QString droppedFolder(const QMimeData *data)
{
    for (const QUrl &url : data->urls()) {
        const QString path = url.toLocalFile();
        if (!path.isEmpty())
            return QFileInfo(path).isDir() ? QDir::toNativeSeparators(path) : QString();
    }
    return {};
}

// Lies over the children of the frame, which would paint over anything that the frame itself paints.
class Overlay : public QWidget
{
public:
    Overlay(QWidget *parent, const QString &hint) : QWidget(parent), m_hint(hint)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const theme::Colors colors = theme::colors(this);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QColor veil = colors.window;
        veil.setAlphaF(0.85F);
        painter.fillRect(rect(), veil);
        const QRectF frame =
            QRectF(rect()).adjusted(theme::space, theme::space, -theme::space, -theme::space);
        painter.setPen(QPen(colors.accent, 2, Qt::DashLine));
        painter.setBrush(colors.accentSoft);
        painter.drawRoundedRect(frame, theme::cardRadius, theme::cardRadius);
        painter.setFont(theme::sectionTitle(font()));
        painter.setPen(colors.text);
        painter.drawText(frame, Qt::AlignCenter | Qt::TextWordWrap, m_hint);
    }

private:
    const QString &m_hint;
};

} // namespace

DropFrame::DropFrame(QWidget *parent) : QWidget(parent), m_overlay(new Overlay(this, m_hint))
{
    setAcceptDrops(true);
}

void DropFrame::dragEnterEvent(QDragEnterEvent *event)
{
    if (!isEnabled() || droppedFolder(event->mimeData()).isEmpty())
        return;
    m_overlay->raise();
    m_overlay->show();
    event->acceptProposedAction();
}

void DropFrame::dragLeaveEvent(QDragLeaveEvent *)
{
    m_overlay->hide();
}

void DropFrame::dropEvent(QDropEvent *event)
{
    m_overlay->hide();
    const QString folder = droppedFolder(event->mimeData());
    if (folder.isEmpty())
        return;
    event->acceptProposedAction();
    emit folderDropped(folder);
}

void DropFrame::resizeEvent(QResizeEvent *event)
{
    m_overlay->setGeometry(rect());
    QWidget::resizeEvent(event);
}
