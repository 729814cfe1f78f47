// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFrame>

class QAction;
class QLabel;
class QToolButton;
class WrappedLabel;

// A one-sentence notice about the content below, with an icon, a close button, and optionally an action
// button. Hidden while there is none. Notices are announced to screen readers.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    enum class Kind { Info, Success, Warning, Error };

    explicit NoticeBar(QWidget *parent = nullptr);

    // Shows a button for the action, if there is one; the caller keeps ownership of the action.
    void showNotice(Kind kind, const QString &text, QAction *action = nullptr);
    // For pages that use an icon of their own.
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
