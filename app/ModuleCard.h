// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/RunningJobs.h"

#include <QAbstractButton>
#include <QHash>

struct Module;
class StarButton;

// A module's card on the home page: icon, title, a description that wraps and is never cut off, and a star
// button in the corner. The card itself is a button; clicks on the star do not reach it.
class ModuleCard : public QAbstractButton
{
    Q_OBJECT

public:
    explicit ModuleCard(const Module &module, QWidget *parent = nullptr);

    int moduleId() const { return m_id; }
    QAbstractButton *starButton() const;
    // See StarButton::setStarred().
    void setStarred(bool starred, bool lastStar);

    // Shows below the description what is running on the module's page.
    void showJob(RunningJobs::State state);

    // Minimum width of a card including its gap; applies to all cards of a page.
    static int narrowest(const QFont &font);

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    // A key that moves between cards: arrows, Home, End.
    void moveRequested(int key);

protected:
    bool hitButton(const QPoint &position) const override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QRect frame() const;
    // The rectangles of title and description in a card of this width, in left-to-right coordinates.
    struct TextPlaces {
        QRect title;
        QRect description;
        QRect job; // empty while nothing is running
    };
    const TextPlaces &textPlaces(int cardWidth) const;

    int m_id;
    QString m_description;
    RunningJobs::State m_job = RunningJobs::State::None;
    StarButton *m_star;
    mutable QHash<int, TextPlaces> m_places; // by the card's width
    bool m_focusVisible = false;             // the focus was set by keyboard
};
