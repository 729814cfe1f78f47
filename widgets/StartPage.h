// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/KnownFolders.h"
#include "widgets/Controls.h"
#include "widgets/DropFrame.h"

#include <functional>

class CardGridLayout;
class ClickableLabel;
class FLCardButton;
class NoticeBar;
class PageHeader;
class QLabel;
class QVBoxLayout;

// The texts of a module's start page.
struct StartTexts {
    QString title;
    QString description;
    QString dropHint;       // shown over the page during a drag: "Drop the folder to scan it"
    QString dropText = {};  // shown in the drop area: "Drop folders here"
    const char *image = ""; // shown above it, 48 pixels
};

// The start page of a module: title and description, a drop area with one or more select buttons, recent
// items and options. A module sets the texts, adds its buttons and sections, and connects the signals, or
// derives a page of its own. The page scrolls if the window is small.
//
//     m_start = new StartPage({tr("Secure Delete"), tr("Overwrites ..."), ...}, this);
//     m_start->setAccepts(DropFrame::Accepts::Anything);
//     m_start->addSelect({"selectFilesButton", "FolderOpen24", tr("Select Files")}, [this] { ... });
//     m_start->addOptions(tr("Method of overwriting"));
//     connect(m_start, &DropFrame::pathsDropped, this, &SecureDeleteForm::addPaths);
class StartPage : public DropFrame
{
    Q_OBJECT

public:
    explicit StartPage(const StartTexts &texts, QWidget *parent = nullptr);

    // Adds a button in the drop area, or in the header if there is none (no dropText). The first one is the
    // main action of the page: it gets Ctrl+O and the focus.
    QPushButton *addSelect(const controls::Button &button, std::function<void()> clicked);
    // The button "optionsButton" in the header; emits optionsRequested().
    QToolButton *addOptions(const QString &tip);
    // A line below the buttons, for example what will be searched. Object name "scopeLabel".
    void setScope(const QString &text);
    // Cards "recentCard" for recent items, newest first; the section is hidden if there are none.
    void setRecent(const QString &title, const QStringList &paths, const char *image = "Clock24");

    // For jobs on one folder: adds a button that asks for it in a dialog of this title. The button, a dropped
    // folder, a recent one and folder cards all emit folderChosen().
    void offerFolder(const controls::Button &button, const QString &dialogTitle);
    FLCardButton *addFolderCard(CardGridLayout *grid, const QString &title, const QIcon &icon,
                                const QString &folder);
    // Cards for the user's special folders that exist in this Windows, with their usual names.
    void addSpecialFolders(const QList<platform::KnownFolder> &folders);

    // A titled grid of the module's own cards, above the recent ones.
    CardGridLayout *addSection(const QString &title, int cardWidth);
    FLCardButton *addCard(CardGridLayout *grid, const QString &title, const QIcon &icon,
                          std::function<void()> clicked);
    // Sets the tab order of the cards to their layout order; call after adding or removing cards.
    void orderTabs();

    PageHeader *header() const { return m_header; }
    NoticeBar *notice() const { return m_notice; }

signals:
    void folderChosen(const QString &folder);
    void optionsRequested();
    void recentChosen(const QString &path);
    void recentCleared();

protected:
    void showEvent(QShowEvent *event) override;

private:
    struct Section {
        QLabel *title;
        CardGridLayout *grid;
        ClickableLabel *clear; // null except for the recent items
    };

    void buildTarget(const StartTexts &texts);
    Section makeSection(const QString &title, int cardWidth, bool canClear);

    PageHeader *m_header;
    NoticeBar *m_notice;
    QWidget *m_content;
    QVBoxLayout *m_page;
    QVBoxLayout *m_sectionColumn;
    QVBoxLayout *m_target = nullptr; // layout of the drop area
    QLabel *m_scope = nullptr;
    QPushButton *m_first = nullptr;
    QList<QWidget *> m_buttons;
    QList<Section> m_sections; // the recent items are last
};
