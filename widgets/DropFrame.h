// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// A page onto which a folder can be dropped: shows a frame and a hint while one is dragged over it. Of
// several things the first folder is taken.
class DropFrame : public QWidget
{
    Q_OBJECT

public:
    explicit DropFrame(QWidget *parent = nullptr);

    void setHint(const QString &hint) { m_hint = hint; }

signals:
    // A folder that exists, with native separators.
    void folderDropped(const QString &folder);
    // After it, when there was more than that folder; in words for the user.
    void othersLeftOut(const QString &notice);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QString m_hint;
    QString m_folder; // that is being dragged over it
    QWidget *m_overlay;
};
