// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QKeySequence>
#include <QString>

#include <functional>

class QAction;
class QPushButton;
class QScrollArea;
class QToolButton;
class QWidget;

// Images, buttons and keys of a page, one call each. Object names are plain ASCII.
namespace controls
{

// The compiled-in image of that name, say "Export24"; Qt takes the one of twice its size on scaled screens.
// One image serves the light and the dark palette (resources/README.md). Empty for no name.
QIcon image(const char *name);

enum class Rank { Primary, Secondary };

// What a button is and says. The tip gets the key in parentheses; without a tip it is the text.
struct Button {
    const char *objectName = "";
    const char *image = ""; // "" for none
    QString text = {};
    QString tip = {};
    QKeySequence key = {};
};

// A button with a text, as high as all of its row. Of first rank is the one main action of a page.
QPushButton *pushButton(QWidget *parent, const Button &button, Rank rank = Rank::Secondary);
// A flat button of a header or a tool row: its image alone, or with `showText` its text beside it. Without
// one the text is its accessible name and its tip.
QToolButton *toolButton(QWidget *parent, const Button &button, bool showText = false);

// Shows `content`, which it takes, in the colour of the page behind it. As wide as its room; what is higher
// than the room scrolls.
QScrollArea *scrollArea(QWidget *content, QWidget *parent = nullptr);

// A key that works while the focus is in `owner` or below it. It stands in no menu; for one that does, see
// action().
QAction *shortcut(QWidget *owner, const QKeySequence &key, std::function<void()> pressed);
// An action of `owner`, for context menus: its key works while the focus is in `owner` or below it.
QAction *action(QWidget *owner, const Button &button, std::function<void()> triggered);

} // namespace controls
