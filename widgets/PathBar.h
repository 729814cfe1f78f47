// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QStringList>
#include <QWidget>

class QToolButton;

// A path as a row of buttons. Parts that do not fit are removed from the left, and moved to the menu of a
// button in front.
class PathBar : public QWidget
{
    Q_OBJECT

public:
    explicit PathBar(QWidget *parent = nullptr);

    void setPath(const QStringList &parts);
    QStringList path() const { return m_parts; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    // A part was chosen; 0 is the first.
    void partActivated(int index);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QToolButton *makeButton(int index);
    void arrange();
    void showHiddenParts();

    QStringList m_parts;
    QList<QToolButton *> m_buttons; // one per part
    QToolButton *m_more;            // gives access to the parts that do not fit
    int m_firstShown = 0;
};
