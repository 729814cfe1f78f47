// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/StartPage.h"

#include "platform/Dialogs.h"
#include "widgets/CardGridLayout.h"
#include "widgets/ClickableLabel.h"
#include "widgets/FLCardButton.h"
#include "widgets/NoticeBar.h"
#include "widgets/PageHeader.h"
#include "widgets/SlimScrollBar.h"
#include "widgets/Theme.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QShowEvent>
#include <QToolButton>

namespace startpage
{

namespace
{

constexpr int pictureSize = 48;
constexpr int cardWidth = 200;
constexpr int widestCard = 340;

// The dashed outline of the drop area.
class Target : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        const theme::Colors colors = theme::colors(this);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colors.borderHover, 2, Qt::DashLine));
        painter.setBrush(colors.card);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), theme::cardRadius, theme::cardRadius);
    }
};

void clear(CardGridLayout *grid)
{
    while (QLayoutItem *item = grid->takeAt(0)) {
        // Deleted later: this may run in the click handler of the card itself.
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
}

} // namespace

} // namespace startpage

StartPage::StartPage(const StartTexts &texts, QWidget *parent)
    : DropFrame(parent),
      m_header(new PageHeader(PageHeader::Kind::Start)),
      m_notice(new NoticeBar),
      m_content(new QWidget),
      m_page(new QVBoxLayout(m_content)),
      m_sectionColumn(new QVBoxLayout)
{
    setHint(texts.dropHint);
    m_header->setTitle(texts.title);
    m_header->setText(texts.description);
    m_page->setContentsMargins(theme::pageMargin, theme::spaceWide, theme::pageMargin, theme::pageMargin);
    m_page->setSpacing(theme::space);
    m_page->addWidget(m_header);
    m_page->addWidget(m_notice);
    if (!texts.dropText.isEmpty())
        buildTarget(texts);
    m_sectionColumn->setSpacing(theme::spaceSnug);
    m_page->addLayout(m_sectionColumn);
    if (!m_target)
        m_page->addStretch();

    QScrollArea *scroll = controls::scrollArea(m_content, this);
    scroll->setVerticalScrollBar(new SlimScrollBar);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);
}

void StartPage::buildTarget(const StartTexts &texts)
{
    auto *frame = new startpage::Target(m_content);
    frame->setObjectName(QStringLiteral("dropFrame"));
    auto *picture = new QLabel(frame);
    const QSize size(startpage::pictureSize, startpage::pictureSize);
    picture->setPixmap(controls::image(texts.image).pixmap(size, devicePixelRatio()));
    auto *drop = new QLabel(texts.dropText, frame);
    drop->setObjectName(QStringLiteral("dropLabel"));
    drop->setFont(theme::sectionTitle(font()));
    m_scope = new QLabel(frame);
    m_scope->setObjectName(QStringLiteral("scopeLabel"));
    m_scope->setWordWrap(true);
    m_scope->setTextFormat(Qt::PlainText);
    m_scope->setAlignment(Qt::AlignCenter);
    m_scope->hide();
    theme::makeMuted(m_scope);

    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::pageMargin);
    column->setSpacing(theme::space);
    column->addStretch();
    column->addWidget(picture, 0, Qt::AlignHCenter);
    column->addWidget(drop, 0, Qt::AlignHCenter);
    auto *buttons = new QHBoxLayout;
    m_target = new QVBoxLayout;
    buttons->addStretch();
    buttons->addLayout(m_target);
    buttons->addStretch();
    m_target->setSpacing(theme::spaceSnug);
    column->addLayout(buttons);
    column->addWidget(m_scope);
    column->addStretch();
    m_page->addWidget(frame, 1);
}

QPushButton *StartPage::addSelect(const controls::Button &button, std::function<void()> clicked)
{
    controls::Button described = button;
    if (!m_first && described.key.isEmpty())
        described.key = QKeySequence::Open;
    const auto rank = m_first ? controls::Rank::Secondary : controls::Rank::Primary;
    QPushButton *added;
    if (m_target) {
        added = controls::pushButton(m_content, described, rank);
        m_target->addWidget(added);
    } else {
        added = m_header->addButton(described, rank);
    }
    if (!m_first)
        m_first = added;
    m_buttons.append(added);
    connect(added, &QAbstractButton::clicked, this, std::move(clicked));
    return added;
}

QToolButton *StartPage::addOptions(const QString &tip)
{
    QToolButton *options = m_header->addToolButton({"optionsButton", "Settings24", tr("Options"), tip});
    m_buttons.append(options);
    connect(options, &QAbstractButton::clicked, this, &StartPage::optionsRequested);
    return options;
}

void StartPage::offerFolder(const controls::Button &button, const QString &dialogTitle)
{
    addSelect(button, [this, dialogTitle] {
        const QString folder = platform::dialogs().chooseFolder(this, dialogTitle);
        if (!folder.isEmpty())
            emit folderChosen(folder);
    });
    connect(this, &DropFrame::folderDropped, this, &StartPage::folderChosen);
    connect(this, &StartPage::recentChosen, this, &StartPage::folderChosen);
}

FLCardButton *StartPage::addFolderCard(CardGridLayout *grid, const QString &title, const QIcon &icon,
                                       const QString &folder)
{
    return addCard(grid, title, icon, [this, folder] { emit folderChosen(folder); });
}

void StartPage::addSpecialFolders(const QList<platform::KnownFolder> &folders)
{
    using platform::KnownFolder;
    const struct {
        KnownFolder folder;
        QString title;
        const char *icon;
    } known[] = {{KnownFolder::Desktop, tr("Desktop"), "Desktop24"},
                 {KnownFolder::Documents, tr("Documents"), "Documents24"},
                 {KnownFolder::Downloads, tr("Downloads"), "Downloads24"},
                 {KnownFolder::Music, tr("Music"), "Music24"},
                 {KnownFolder::Pictures, tr("Pictures"), "Pictures24"},
                 {KnownFolder::Videos, tr("Videos"), "Videos24"},
                 {KnownFolder::Profile, tr("Home folder"), "User24"}};
    CardGridLayout *grid = addSection(tr("Special Folders"), startpage::cardWidth);
    for (const KnownFolder wanted : folders)
        for (const auto &[folder, title, icon] : known)
            if (const QString path = folder == wanted ? platform::knownFolder(folder) : QString();
                !path.isEmpty())
                addFolderCard(grid, title, controls::image(icon), path)->setToolTip(path);
    orderTabs();
}

void StartPage::setScope(const QString &text)
{
    m_scope->setText(text);
    m_scope->setVisible(!text.isEmpty());
}

StartPage::Section StartPage::makeSection(const QString &title, int cardWidth, bool canClear)
{
    auto *line = new QHBoxLayout;
    Section section{new QLabel(title, m_content), nullptr, nullptr};
    section.title->setFont(theme::sectionTitle(font()));
    section.title->setTextFormat(Qt::PlainText);
    line->addWidget(section.title);
    if (canClear) {
        section.clear = new ClickableLabel(tr("Clear"), m_content);
        section.clear->setAccessibleName(tr("Clear: %1").arg(title));
        line->addWidget(section.clear, 0, Qt::AlignBottom);
        connect(section.clear, &ClickableLabel::clicked, this, &StartPage::recentCleared);
    }
    line->addStretch();
    section.grid = new CardGridLayout(cardWidth, startpage::widestCard, theme::spaceSnug);
    auto *box = new QVBoxLayout;
    box->setSpacing(theme::spaceSnug);
    box->setContentsMargins(0, theme::spaceTight, 0, 0);
    box->addLayout(line);
    box->addLayout(section.grid);
    const bool recentLast = !m_sections.isEmpty() && m_sections.constLast().clear;
    const qsizetype place = m_sections.size() - (recentLast ? 1 : 0);
    m_sectionColumn->insertLayout(static_cast<int>(place), box);
    m_sections.insert(place, section);
    return section;
}

CardGridLayout *StartPage::addSection(const QString &title, int cardWidth)
{
    return makeSection(title, cardWidth, false).grid;
}

FLCardButton *StartPage::addCard(CardGridLayout *grid, const QString &title, const QIcon &icon,
                                 std::function<void()> clicked)
{
    auto *card = new FLCardButton(m_content);
    card->setText(title);
    card->setIcon(icon);
    card->setAccessibleName(title);
    grid->addWidget(card);
    card->show();
    connect(card, &QAbstractButton::clicked, this, std::move(clicked));
    return card;
}

void StartPage::setRecent(const QString &title, const QStringList &paths, const char *image)
{
    if (m_sections.isEmpty() || !m_sections.constLast().clear)
        makeSection(title, startpage::cardWidth, true);
    const Section &recent = m_sections.constLast();
    startpage::clear(recent.grid);
    for (const QString &path : paths) {
        const QString name = QFileInfo(path).fileName();
        FLCardButton *card = addCard(recent.grid, name.isEmpty() ? path : name, controls::image(image),
                                     [this, path] { emit recentChosen(path); });
        card->setObjectName(QStringLiteral("recentCard"));
        card->setCaption(path);
        card->setCaptionElide(Qt::ElideMiddle);
    }
    recent.title->setVisible(!paths.isEmpty());
    recent.clear->setVisible(!paths.isEmpty());
    orderTabs();
}

void StartPage::orderTabs()
{
    QWidgetList order = m_buttons;
    for (const Section &section : std::as_const(m_sections)) {
        if (section.clear)
            order.append(section.clear);
        for (int i = 0; i < section.grid->count(); ++i)
            order.append(section.grid->itemAt(i)->widget());
    }
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}

void StartPage::showEvent(QShowEvent *event)
{
    DropFrame::showEvent(event);
    if (m_first && !event->spontaneous()) // a restored window keeps its previous focus
        m_first->setFocus();
}
