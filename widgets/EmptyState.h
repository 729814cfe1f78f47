// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;

// What stands where a list or picture has nothing to show: an icon, what is the matter, and what can be done.
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
