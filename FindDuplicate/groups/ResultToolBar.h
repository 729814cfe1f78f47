// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QToolBar>

class ElidedLabel;
class QToolButton;

namespace duplicates
{

// The tool bar of a results page: back, what is shown and its totals, and what can be done with a file.
class ResultToolBar : public QToolBar
{
    Q_OBJECT

public:
    struct Tips {
        QString open;
        QString explorer;
        QString recycleBin;
    };

    ResultToolBar(const Tips &tips, QWidget *parent = nullptr);

    void setTitle(const QString &title);
    void setTotals(const QString &totals);
    // `offered`: the selected files can be opened and shown; `removable`: the one that is selected can go.
    void enable(bool offered, bool removable);

    QToolButton *back() const { return m_back; }
    QToolButton *open() const { return m_open; }
    QToolButton *explorer() const { return m_explorer; }
    QToolButton *recycleBin() const { return m_recycleBin; }

private:
    QToolButton *m_back;
    QToolButton *m_open;
    QToolButton *m_explorer;
    QToolButton *m_recycleBin;
    ElidedLabel *m_title;
    ElidedLabel *m_totals;
};

} // namespace duplicates
