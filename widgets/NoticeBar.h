// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFrame>

class QAction;
class QLabel;
class QToolButton;
class WrappedLabel;

// One sentence about what is shown below, with an icon, a button that puts it away, and perhaps one that does
// what it speaks of. Hidden until there is one. A screen reader is told of each.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    enum class Kind { Info, Success, Warning, Error };

    explicit NoticeBar(QWidget *parent = nullptr);

    // With a button for the action, if there is one; the action belongs to the caller.
    void showNotice(Kind kind, const QString &text, QAction *action = nullptr);
    // Pages that still bring an icon of their own.
    void showNotice(const QIcon &icon, const QString &text, QAction *action = nullptr);
    QString text() const; // empty while hidden
    Kind kind() const { return m_kind; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Kind m_kind = Kind::Info;
    QLabel *m_icon;
    WrappedLabel *m_text;
    QToolButton *m_close;
    QToolButton *m_action;
};
