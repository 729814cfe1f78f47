// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFrame>

class QAction;
class QLabel;
class QToolButton;
class WrappedLabel;

// One sentence about what is shown below, with an icon, a button that puts it away, and perhaps one that does
// what it speaks of. Hidden until there is one.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget *parent = nullptr);

    // With a button for the action, if there is one; the action belongs to the caller.
    void showNotice(const QIcon &icon, const QString &text, QAction *action = nullptr);
    QString text() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QLabel *m_icon;
    WrappedLabel *m_text;
    QToolButton *m_close;
    QToolButton *m_action;
};
