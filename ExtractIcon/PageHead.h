// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QHBoxLayout;

namespace icons
{

// The top of both pages: title, description, and a row for buttons.
class PageHead : public QWidget
{
    Q_OBJECT

public:
    PageHead(const QString &title, const QString &text, QWidget *parent);

    QHBoxLayout *buttonRow() const { return m_row; }

private:
    QHBoxLayout *m_row;
};

} // namespace icons
