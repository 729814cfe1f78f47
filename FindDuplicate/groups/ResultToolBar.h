// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QToolBar>

class ElidedLabel;
class QToolButton;

namespace duplicates
{

// The toolbar of a results page: back, title and totals, and actions for files.
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
    // `offered`: the selected files can be opened and shown; `removable`: the selected file can be removed.
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
