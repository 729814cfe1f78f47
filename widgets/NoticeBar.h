// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFrame>

class QLabel;
class QToolButton;
class WrappedLabel;

// One sentence about what is shown below, with an icon and a button that puts it away. Hidden until there is
// one.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget *parent = nullptr);

    void showNotice(const QIcon &icon, const QString &text);
    QString text() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QLabel *m_icon;
    WrappedLabel *m_text;
    QToolButton *m_close;
};
