// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;

// Shown in place of an empty list or image: an icon, the reason, and what can be done.
class EmptyState : public QWidget
{
    Q_OBJECT

public:
    explicit EmptyState(QWidget *parent = nullptr);

    void setContent(const QIcon &icon, const QString &title, const QString &text = {});

private:
    QLabel *m_icon;
    QLabel *m_title;
    QLabel *m_text;
};
