// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageStartForm.h"

#include "platform/Dialogs.h"
#include "platform/KnownFolders.h"
#include "widgets/CardGridLayout.h"
#include "widgets/FLCardButton.h"
#include "widgets/NoticeBar.h"
#include "widgets/Theme.h"

#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{

constexpr int cardWidth = 180;
constexpr int widestCard = 340;
constexpr int pictureSize = 48;
constexpr int dropAreaHeight = 190;

QIcon image(const char *name)
{
    return QIcon(QStringLiteral(":/resources/images/%1.png").arg(QLatin1String(name)));
}

} // namespace

FindDuplicateImageStartForm::FindDuplicateImageStartForm(QWidget *parent)
    : DropFrame(parent),
      m_select(new QPushButton(image("FolderOpen24"), tr("Select Folder"), this)),
      m_notice(new NoticeBar(this))
{
    setHint(tr("Drop folders here"));
    buildPage();
    connect(m_select, &QAbstractButton::clicked, this,
            &FindDuplicateImageStartForm::on_selectFolderButton_clicked);
    connect(this, &DropFrame::folderDropped, this, &FindDuplicateImageStartForm::folderChosen);
}

void FindDuplicateImageStartForm::buildPage()
{
    auto *title = new QLabel(tr("Find all duplicate images"), this);
    title->setObjectName(QStringLiteral("titleLabel"));
    title->setFont(theme::headline(font()));
    auto *about =
        new QLabel(tr("Pictures are compared by what they show: copies in another format, size or brightness "
                      "are found as well. Nothing is removed unless you say so."),
                   this);
    about->setWordWrap(true);
    theme::makeMuted(about);

    auto *page = new QVBoxLayout(this);
    page->setContentsMargins(theme::pageMargin, theme::spaceWide, theme::pageMargin, theme::pageMargin);
    page->setSpacing(theme::spaceSnug);
    page->addWidget(title);
    page->addWidget(about);
    page->addWidget(m_notice);
    page->addSpacing(theme::spaceSnug);
    page->addWidget(buildDropArea());
    page->addSpacing(theme::spaceSnug);
    page->addWidget(buildFolders());
    page->addStretch();
}

QWidget *FindDuplicateImageStartForm::buildDropArea()
{
    m_dropArea = new QWidget(this);
    m_dropArea->setObjectName(QStringLiteral("dropArea"));
    m_dropArea->setMinimumHeight(dropAreaHeight);
    auto *picture = new QLabel(m_dropArea);
    picture->setPixmap(
        image("FindDuplicateImage48").pixmap(QSize(pictureSize, pictureSize), devicePixelRatio()));
    auto *drop = new QLabel(tr("Drop folders here"), m_dropArea);
    drop->setObjectName(QStringLiteral("dropLabel"));
    drop->setFont(theme::sectionTitle(font()));
    m_select->setObjectName(QStringLiteral("selectFolderButton"));
    m_select->setIconSize({24, 24});
    m_select->setMinimumSize(160, 40);
    m_select->setShortcut(QKeySequence::Open);
    m_select->setToolTip(tr("Select the folder to scan (Ctrl+O)"));
    theme::makePrimary(m_select);

    auto *layout = new QVBoxLayout(m_dropArea);
    layout->setContentsMargins(theme::spaceWide, theme::spaceWide, theme::spaceWide, theme::spaceWide);
    layout->setSpacing(theme::space);
    layout->addStretch();
    layout->addWidget(picture, 0, Qt::AlignHCenter);
    layout->addWidget(drop, 0, Qt::AlignHCenter);
    layout->addWidget(m_select, 0, Qt::AlignHCenter);
    layout->addStretch();
    return m_dropArea;
}

QWidget *FindDuplicateImageStartForm::buildFolders()
{
    using platform::KnownFolder;
    auto *section = new QWidget(this);
    auto *title = new QLabel(tr("Special Folders"), section);
    title->setFont(theme::sectionTitle(font()));
    auto *grid = new CardGridLayout(cardWidth, widestCard, theme::spaceSnug);
    const struct {
        KnownFolder folder;
        QString title;
        const char *icon;
    } folders[] = {{KnownFolder::Pictures, tr("Pictures"), "Pictures24"},
                   {KnownFolder::Downloads, tr("Downloads"), "Downloads24"},
                   {KnownFolder::Desktop, tr("Desktop"), "Desktop24"},
                   {KnownFolder::Documents, tr("Documents"), "Documents24"}};
    for (const auto &[folder, text, icon] : folders) {
        const QString path = platform::knownFolder(folder);
        if (path.isEmpty())
            continue;
        auto *card = new FLCardButton(section);
        card->setText(text);
        card->setIcon(image(icon));
        card->setAccessibleName(text);
        card->setToolTip(path);
        grid->addWidget(card);
        connect(card, &QAbstractButton::clicked, this, [this, path] { emit folderChosen(path); });
    }
    auto *layout = new QVBoxLayout(section);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::spaceSnug);
    layout->addWidget(title);
    layout->addLayout(grid);
    return section;
}

void FindDuplicateImageStartForm::offerResult(const QString &text, QAction *show)
{
    m_notice->showNotice(image("Info16"), text, show);
}

void FindDuplicateImageStartForm::hideNotice()
{
    m_notice->hide();
}

void FindDuplicateImageStartForm::showNotice(const QString &text)
{
    m_notice->showNotice(image("Warning16"), text);
}

void FindDuplicateImageStartForm::showEvent(QShowEvent *event)
{
    DropFrame::showEvent(event);
    m_select->setFocus();
}

void FindDuplicateImageStartForm::paintEvent(QPaintEvent *event)
{
    DropFrame::paintEvent(event);
    const theme::Colors colors = theme::colors(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors.borderHover, 1, Qt::DashLine));
    painter.setBrush(colors.card);
    painter.drawRoundedRect(QRectF(m_dropArea->geometry()).adjusted(0.5, 0.5, -0.5, -0.5), theme::cardRadius,
                            theme::cardRadius);
}

void FindDuplicateImageStartForm::on_selectFolderButton_clicked()
{
    const QString folder = platform::dialogs().chooseFolder(this, tr("Select Folder"));
    if (!folder.isEmpty())
        emit folderChosen(folder);
}
