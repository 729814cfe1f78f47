// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/Controls.h"

#include <QWidget>

class ElidedLabel;
class QHBoxLayout;
class WrappedLabel;

// The top of a page: optionally a back button, a title, a line below it, and the page's buttons on the right.
class PageHeader : public QWidget
{
    Q_OBJECT

public:
    enum class Kind {
        Start, // a large title and a description of the tool, wrapped if necessary
        Result // what is shown, for example a path, and its totals, one line each
    };

    explicit PageHeader(Kind kind, QWidget *parent = nullptr);

    void setTitle(const QString &title);
    // The description, or the totals.
    void setText(const QString &text);
    // Shows the button "backButton"; Alt+Left triggers it while the focus is on the page.
    void showBack(const QString &tip);
    QToolButton *backButton() const { return m_back; } // null before showBack()

    // Adds a button on the right. Tests find it by objectName; the header owns it.
    QPushButton *addButton(const controls::Button &button, controls::Rank rank = controls::Rank::Secondary);
    QToolButton *addToolButton(const controls::Button &button, bool showText = true);
    void addWidget(QWidget *widget);

    QSize sizeHint() const override;

signals:
    void back();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QToolButton *m_back = nullptr;
    ElidedLabel *m_title;
    ElidedLabel *m_totals = nullptr;
    WrappedLabel *m_description = nullptr;
    QHBoxLayout *m_row;
    int m_height = 0; // needed by the texts at this width
};
