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

// What the start page of a module says.
struct StartTexts {
    QString title;
    QString description;
    QString dropHint;       // over the page while something is dragged over it: "Drop the folder to scan it"
    QString dropText = {};  // in the place to drop on: "Drop folders here"
    const char *image = ""; // above it, of 48 pixels
};

// Where a job begins: title and description, a place to drop on with one or more buttons to select, what was
// used before, and the options. A module gives the texts, adds its buttons and sections, and connects the
// signals; a page of its own derives from this class. It scrolls where the window is small.
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

    // A button in the place to drop on; in the header while there is no such place (no dropText). The first
    // is the main action of the page: it gets Ctrl+O and the focus.
    QPushButton *addSelect(const controls::Button &button, std::function<void()> clicked);
    // The button "optionsButton" in the header; emits optionsRequested().
    QToolButton *addOptions(const QString &tip);
    // A line below the buttons: what will be searched, say. Object name "scopeLabel".
    void setScope(const QString &text);
    // Cards "recentCard" for what was used before, newest first; the section is hidden while there is
    // nothing.
    void setRecent(const QString &title, const QStringList &paths, const char *image = "Clock24");

    // For jobs on one folder: a select button that asks for it with this title. It, a dropped folder, a
    // recent one and the cards of folders emit folderChosen().
    void offerFolder(const controls::Button &button, const QString &dialogTitle);
    FLCardButton *addFolderCard(CardGridLayout *grid, const QString &title, const QIcon &icon,
                                const QString &folder);
    // The user's folders, as far as Windows knows them, with their usual names.
    void addSpecialFolders(const QList<platform::KnownFolder> &folders);

    // A titled grid of cards of the module's own, above the recent ones.
    CardGridLayout *addSection(const QString &title, int cardWidth);
    FLCardButton *addCard(CardGridLayout *grid, const QString &title, const QIcon &icon,
                          std::function<void()> clicked);
    // Tab visits the cards as they are laid out; after cards came or went.
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
        ClickableLabel *clear; // null but for the recent ones
    };

    void buildTarget(const StartTexts &texts);
    Section makeSection(const QString &title, int cardWidth, bool canClear);

    PageHeader *m_header;
    NoticeBar *m_notice;
    QWidget *m_content;
    QVBoxLayout *m_page;
    QVBoxLayout *m_sectionColumn;
    QVBoxLayout *m_target = nullptr; // the column of the place to drop on
    QLabel *m_scope = nullptr;
    QPushButton *m_first = nullptr;
    QList<QWidget *> m_buttons;
    QList<Section> m_sections; // the recent ones last
};
