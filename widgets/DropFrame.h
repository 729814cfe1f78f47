// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QWidget>

// A page onto which files and folders can be dropped: shows a frame and a hint while they are dragged over
// it.
class DropFrame : public QWidget
{
    Q_OBJECT

public:
    enum class Accepts {
        OneFolder, // the first folder among the dropped items; folderDropped() and othersLeftOut()
        Anything   // all local files and folders, unchecked: a worker checks them later; pathsDropped()
    };

    explicit DropFrame(QWidget *parent = nullptr);

    void setAccepts(Accepts accepts) { m_accepts = accepts; }
    void setHint(const QString &hint) { m_hint = hint; }

signals:
    // An existing folder, with native separators.
    void folderDropped(const QString &folder);
    // Emitted afterwards if other items were dropped too; a text for the user.
    void othersLeftOut(const QString &notice);
    // With native separators, in drop order, never empty.
    void pathsDropped(const QStringList &paths);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    Accepts m_accepts = Accepts::OneFolder;
    QString m_hint;
    QString m_folder; // that is being dragged over it
    QWidget *m_overlay;
};
