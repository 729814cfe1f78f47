// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/HomeForm.h"

#include "app/ModuleCard.h"
#include "app/NamedSlots.h"
#include "settings/Keys.h"
#include "settings/Values.h"
#include "widgets/Controls.h"
#include "widgets/SlimScrollBar.h"
#include "widgets/Theme.h"

#include <QDebug>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr settings::Text storedStars{settings::keys::root, u"StarredWidget", u"9,2,5"};
constexpr int searchWidth = 220;
constexpr int cardGap = theme::space / 2; // margin of a card around its frame

// Keeps the page's margins around the cards, with the scroll bar at the window's edge.
class CardArea : public QScrollArea
{
public:
    CardArea()
    {
        constexpr int side = theme::pageMargin - cardGap;
        setViewportMargins(side, 0, side, 0);
    }
};

} // namespace

HomeForm::HomeForm(QWidget *parent, const ModuleTable &table)
    : QWidget(parent),
      m_catalogue(table.catalogue())
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, theme::spaceWide, 0, 0);
    layout->setSpacing(theme::spaceSnug);
    layout->addLayout(buildHeader());
    layout->addWidget(buildGrid(), 1);
    setFocusProxy(m_search);
    buildCards(table);
    loadStarredWidgetList();
}

HomeForm::~HomeForm() = default;

QLayout *HomeForm::buildHeader()
{
    auto *headline = new QLabel(tr("All-In-One App to Make Your Everyday Life Easier"));
    headline->setObjectName(QStringLiteral("headlineLabel"));
    headline->setFont(theme::headline(font()));
    headline->setWordWrap(true);

    m_search = new QLineEdit;
    m_search->setObjectName(QStringLiteral("searchLineEdit"));
    m_search->setPlaceholderText(tr("Search tools (Ctrl+F)"));
    m_search->setAccessibleName(tr("Search tools"));
    m_search->setClearButtonEnabled(true);
    m_search->addAction(controls::image("Search16"), QLineEdit::LeadingPosition);
    m_search->setMinimumWidth(searchWidth);
    m_search->setMinimumHeight(theme::rowHeight + theme::spaceTight);
    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, [this] { columnCount(true); });
    connect(m_search, &QLineEdit::returnPressed, this, &HomeForm::openFirstMatch);
    auto *find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, this, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });

    auto *header = new QHBoxLayout;
    header->setContentsMargins(theme::pageMargin, 0, theme::pageMargin, 0);
    header->setSpacing(theme::spaceSection);
    header->addWidget(headline, 1);
    header->addWidget(m_search, 0, Qt::AlignVCenter);
    return header;
}

QWidget *HomeForm::buildGrid()
{
    m_contents = new QWidget;
    m_contents->setObjectName(QStringLiteral("cardContents"));
    // The scroll area determines the width: a wide grid must not keep the page from shrinking.
    m_contents->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_contents->installEventFilter(this);

    m_nothingFound = new QLabel;
    m_nothingFound->setAlignment(Qt::AlignCenter);
    m_nothingFound->setWordWrap(true);
    m_nothingFound->setMargin(theme::spaceSection);
    theme::makeMuted(m_nothingFound);
    m_nothingFound->hide();

    m_grid = new QGridLayout;
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setSpacing(0); // the cards include their gaps
    auto *column = new QVBoxLayout(m_contents);
    column->setContentsMargins(0, 0, 0, theme::spaceWide);
    column->setSpacing(0);
    column->addLayout(m_grid);
    column->addWidget(m_nothingFound);
    column->addStretch();

    m_scrollArea = new CardArea;
    m_scrollArea->setObjectName(QStringLiteral("cardScrollArea"));
    m_scrollArea->setFrameShape(QFrame::NoFrame);
    m_scrollArea->setVerticalScrollBar(new SlimScrollBar);
    m_scrollArea->setWidgetResizable(true);
    // Always present, so that the width does not change when it is needed; invisible while it is not.
    m_scrollArea->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scrollArea->setFocusPolicy(Qt::NoFocus);
    m_scrollArea->setWidget(m_contents);
    return m_scrollArea;
}

void HomeForm::buildCards(const ModuleTable &table)
{
    for (const Module &module : table.rows()) {
        auto *card = new ModuleCard(module, m_contents);
        m_cards.insert(module.id, card);
        card->setObjectName(QLatin1StringView(module.cardName));
        card->starButton()->setObjectName(QLatin1StringView(module.starName));
        connectCard(card);
    }
}

void HomeForm::connectCard(ModuleCard *card)
{
    const int id = card->moduleId();
    connectNamed(card, this, [this, id] { emit openModule(id); });
    connectNamed(card->starButton(), this, [this, id] { toggleStar(id); });
    connect(card, &ModuleCard::moveRequested, this, [this, card](int key) { moveFrom(card, key); });
    card->installEventFilter(this);
    card->starButton()->installEventFilter(this);
}

void HomeForm::loadStarredWidgetList()
{
    const QString text = storedStars.read();
    qDebug() << "loadStarredWidgetList: " << text;
    m_starred = StarredModules(text);
    showStars();
}

void HomeForm::showStars()
{
    for (ModuleCard *card : std::as_const(m_cards)) {
        const bool starred = m_starred.contains(card->moduleId());
        card->setStarred(starred, starred && m_starred.size() == 1);
    }
}

void HomeForm::saveStarredWidgetList()
{
    // An empty list is deliberately not stored.
    if (!m_starred.isEmpty())
        storedStars.write(m_starred.text());
}

void HomeForm::toggleStar(int id)
{
    m_starred.toggle(id);
    showStars();
    saveStarredWidgetList();
    columnCount(true);
    if (m_current && m_current->hasFocus())
        m_scrollArea->ensureWidgetVisible(m_current, 0, theme::space);
}

// Before a page is shown its width is temporary; showing it triggers a layout anyway.
void HomeForm::relayout()
{
    if (m_onScreen)
        columnCount();
}

void HomeForm::columnCount(bool force)
{
    const int count = columns();
    if (count == m_columnCount && !force) {
        spreadColumns();
        return;
    }
    m_columnCount = count;
    qDebug() << "columnCount: " << count;
    placeCards();
}

int HomeForm::columns() const
{
    return m_contents->width() / ModuleCard::narrowest(font());
}

void HomeForm::placeCards()
{
    // A single repaint for all changes.
    m_contents->setUpdatesEnabled(false);
    while (QLayoutItem *item = m_grid->takeAt(0))
        delete item;
    m_shown.clear();

    const int columns = std::max(1, m_columnCount); // 0 if narrower than one card
    for (const int id : m_starred.arranged(m_catalogue)) {
        ModuleCard *next = card(id);
        next->setVisible(matchesSearch(*next));
        if (next->isHidden())
            continue;
        const int place = static_cast<int>(m_shown.size());
        m_grid->addWidget(next, place / columns, place % columns);
        m_shown.append(next);
    }
    QWidget *before = m_search;
    for (ModuleCard *shown : std::as_const(m_shown)) {
        setTabOrder(before, shown);
        setTabOrder(shown, shown->starButton());
        before = shown->starButton();
    }
    if (!m_shown.contains(m_current))
        makeCurrent(m_shown.isEmpty() ? nullptr : m_shown.first());

    m_nothingFound->setText(tr("No tool matches \"%1\".").arg(m_search->text().trimmed()));
    m_nothingFound->setVisible(m_shown.isEmpty());
    spreadColumns();
    m_contents->layout()->activate();
    m_contents->setUpdatesEnabled(true);
}

// Equal columns over the whole width. The remainder of the division goes to the right margin, so that all
// cards have the same width.
void HomeForm::spreadColumns()
{
    const int columns = std::max(1, m_columnCount);
    const int width = std::max(ModuleCard::narrowest(font()), m_contents->width() / columns);
    for (int column = 0; column < std::max(m_grid->columnCount(), columns); ++column)
        m_grid->setColumnMinimumWidth(column, column < columns ? width : 0);
    m_grid->setContentsMargins(0, 0, std::max(0, m_contents->width() - columns * width), 0);
}

bool HomeForm::matchesSearch(const ModuleCard &card) const
{
    const QStringList words = m_search->text().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return std::ranges::all_of(words, [&card](const QString &word) {
        return card.text().contains(word, Qt::CaseInsensitive) ||
               card.accessibleDescription().contains(word, Qt::CaseInsensitive);
    });
}

bool HomeForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_contents && event->type() == QEvent::Resize) {
        relayout();
    } else if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Escape && !m_search->text().isEmpty()) {
            m_search->clear();
            return true;
        }
        if (key == Qt::Key_Down && !m_shown.isEmpty()) {
            focusCard(m_shown.first());
            return true;
        }
    } else if (event->type() == QEvent::FocusIn) {
        auto *focused = qobject_cast<ModuleCard *>(watched);
        if (!focused)
            focused = qobject_cast<ModuleCard *>(watched->parent()); // a star button
        if (focused)
            makeCurrent(focused);
    }
    return QWidget::eventFilter(watched, event);
}

void HomeForm::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    relayout();
}

void HomeForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_onScreen = true;
    columnCount(true);
}

void HomeForm::hideEvent(QHideEvent *event)
{
    m_onScreen = false;
    QWidget::hideEvent(event);
}

// Twenty cards with their stars would be forty tab stops; instead the Tab key visits one card and its star.
// Arrow keys select the card.
void HomeForm::makeCurrent(ModuleCard *card)
{
    m_current = card;
    for (ModuleCard *each : std::as_const(m_cards)) {
        const Qt::FocusPolicy policy = each == card ? Qt::StrongFocus : Qt::ClickFocus;
        each->setFocusPolicy(policy);
        each->starButton()->setFocusPolicy(policy);
    }
}

void HomeForm::focusCard(ModuleCard *card)
{
    card->setFocus(Qt::TabFocusReason);
    m_scrollArea->ensureWidgetVisible(card, 0, theme::space);
}

void HomeForm::moveFrom(ModuleCard *card, int key)
{
    const qsizetype at = m_shown.indexOf(card);
    const qsizetype last = m_shown.size() - 1;
    const qsizetype columns = std::max(1, m_columnCount);
    const bool mirrored = isRightToLeft();
    qsizetype to = at;
    switch (key) {
    case Qt::Key_Left:
        to = mirrored ? at + 1 : at - 1;
        break;
    case Qt::Key_Right:
        to = mirrored ? at - 1 : at + 1;
        break;
    case Qt::Key_Up:
        to = at - columns;
        break;
    case Qt::Key_Down:
        // From the last full row to a shorter last row.
        to = at / columns < last / columns ? std::min(at + columns, last) : at;
        break;
    case Qt::Key_Home:
        to = 0;
        break;
    default:
        to = last;
    }
    if (to >= 0 && to <= last && to != at)
        focusCard(m_shown.at(to));
    else if (key == Qt::Key_Up)
        m_search->setFocus(Qt::TabFocusReason);
}

void HomeForm::openFirstMatch()
{
    if (!m_search->text().trimmed().isEmpty() && !m_shown.isEmpty())
        m_shown.first()->click();
}
