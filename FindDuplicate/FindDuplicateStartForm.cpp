// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateStartForm.h"

#include "platform/Dialogs.h"
#include "widgets/NoticeBar.h"
#include "widgets/Theme.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace
{

constexpr int buttonHeight = 40;
constexpr int pictureSize = 48;

QIcon image(const char *name)
{
    return QIcon(QStringLiteral(":/resources/images/%1.png").arg(QLatin1String(name)));
}

// The dashed outline of the place to drop on.
class TargetFrame : public QWidget
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

} // namespace

FindDuplicateStartForm::FindDuplicateStartForm(QWidget *parent)
    : DropFrame(parent),
      m_select(new QPushButton(image("FolderOpen24"), tr("Select Folder"), this)),
      m_options(new QToolButton(this)),
      m_scope(new QLabel(this)),
      m_notice(new NoticeBar(this))
{
    setHint(tr("Drop the folder to search it"));
    auto *page = new QVBoxLayout(this);
    page->setContentsMargins(theme::pageMargin, theme::spaceWide, theme::pageMargin, theme::pageMargin);
    page->setSpacing(theme::space);
    buildHeader(page);
    page->addWidget(m_notice);
    buildFrame(page);
    connect(m_select, &QAbstractButton::clicked, this, &FindDuplicateStartForm::selectFolder);
    connect(m_options, &QAbstractButton::clicked, this, &FindDuplicateStartForm::optionsRequested);
    connect(this, &DropFrame::folderDropped, this, &FindDuplicateStartForm::folderChosen);
}

void FindDuplicateStartForm::buildHeader(QVBoxLayout *page)
{
    auto *title = new QLabel(tr("Find Duplicate"), this);
    title->setFont(theme::headline(font()));
    auto *hint = new QLabel(tr("Finds files of the same type, size and time of the last change. Nothing is "
                               "opened, and nothing is removed without being asked for."),
                            this);
    hint->setWordWrap(true);
    theme::makeMuted(hint);
    m_options->setObjectName(QStringLiteral("optionsButton"));
    m_options->setIcon(image("Settings24"));
    m_options->setIconSize({24, 24});
    m_options->setText(tr("Options"));
    m_options->setToolTip(tr("File types to search for, and the smallest size"));
    m_options->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_options->setAutoRaise(true);
    m_options->setFocusPolicy(Qt::StrongFocus);
    m_options->setMinimumHeight(buttonHeight);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addWidget(title);
    texts->addWidget(hint);
    auto *header = new QHBoxLayout;
    header->setSpacing(theme::space);
    header->addLayout(texts, 1);
    header->addWidget(m_options);
    page->addLayout(header);
}

void FindDuplicateStartForm::buildFrame(QVBoxLayout *page)
{
    auto *frame = new TargetFrame(this);
    frame->setObjectName(QStringLiteral("dropFrame"));
    auto *picture = new QLabel(frame);
    picture->setPixmap(image("FileDuplicate48").pixmap(QSize(pictureSize, pictureSize), devicePixelRatio()));
    auto *drop = new QLabel(tr("Drop folders here"), frame);
    drop->setObjectName(QStringLiteral("dropLabel"));
    drop->setFont(theme::sectionTitle(font()));
    m_select->setObjectName(QStringLiteral("selectFolderButton"));
    m_select->setIconSize({24, 24});
    m_select->setMinimumHeight(buttonHeight);
    theme::makePrimary(m_select);
    m_select->setShortcut(QKeySequence::Open);
    m_select->setToolTip(tr("Select the folder to search (Ctrl+O)"));
    m_scope->setObjectName(QStringLiteral("scopeLabel"));
    m_scope->setWordWrap(true);
    m_scope->setTextFormat(Qt::PlainText);
    m_scope->setAlignment(Qt::AlignCenter);
    theme::makeMuted(m_scope);

    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::pageMargin);
    column->setSpacing(theme::space);
    column->addStretch();
    column->addWidget(picture, 0, Qt::AlignHCenter);
    column->addWidget(drop, 0, Qt::AlignHCenter);
    column->addWidget(m_select, 0, Qt::AlignHCenter);
    column->addSpacing(theme::spaceSnug);
    column->addWidget(m_scope);
    column->addStretch();
    page->addWidget(frame, 1);
}

void FindDuplicateStartForm::showEvent(QShowEvent *event)
{
    DropFrame::showEvent(event);
    m_select->setFocus();
}

void FindDuplicateStartForm::selectFolder()
{
    const QString folder = platform::dialogs().chooseFolder(this, tr("Select Folder"));
    if (!folder.isEmpty())
        emit folderChosen(folder);
}

void FindDuplicateStartForm::offerResult(const QString &text, QAction *show)
{
    m_notice->showNotice(image("Info16"), text, show);
}

void FindDuplicateStartForm::hideNotice()
{
    m_notice->hide();
}

void FindDuplicateStartForm::showNotice(const QString &text)
{
    m_notice->showNotice(image("Warning16"), text);
}

void FindDuplicateStartForm::showScope(const QString &text)
{
    m_scope->setText(text);
}
