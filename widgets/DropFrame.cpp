// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/DropFrame.h"

#include "widgets/Theme.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QPainter>

#include <utility>

namespace
{

// Each check accesses the disk on the interface thread.
constexpr qsizetype maxAsked = 20;

// The first folder among the dragged items, possibly after files. The user has just seen these items, so
// checking them is quick. It is done when the drag enters, and the result is kept for the drop.
QString droppedFolder(const QMimeData *data)
{
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls.first(qMin(urls.size(), maxAsked))) {
        const QString path = url.toLocalFile();
        if (!path.isEmpty() && QFileInfo(path).isDir())
            return QDir::toNativeSeparators(path);
    }
    return {};
}

QStringList droppedPaths(const QMimeData *data)
{
    QStringList paths;
    for (const QUrl &url : data->urls())
        if (url.isLocalFile())
            paths.append(QDir::toNativeSeparators(url.toLocalFile()));
    return paths;
}

// On top of the child widgets, which would cover anything the frame itself paints.
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
    if (!isEnabled() || !event->mimeData()->hasUrls())
        return;
    if (m_accepts == Accepts::Anything ? droppedPaths(event->mimeData()).isEmpty()
                                       : (m_folder = droppedFolder(event->mimeData())).isEmpty())
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
    if (m_accepts == Accepts::Anything) {
        event->acceptProposedAction();
        if (const QStringList paths = droppedPaths(event->mimeData()); !paths.isEmpty())
            emit pathsDropped(paths);
        return;
    }
    const QString folder = std::exchange(m_folder, {});
    if (folder.isEmpty())
        return;
    event->acceptProposedAction();
    const bool others = event->mimeData()->urls().size() > 1;
    emit folderDropped(folder);
    if (others)
        emit othersLeftOut(tr("Only %1 was scanned: one folder is taken at a time.").arg(folder));
}

void DropFrame::resizeEvent(QResizeEvent *event)
{
    m_overlay->setGeometry(rect());
    QWidget::resizeEvent(event);
}
