// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/UpdateDialog.h"

#include "app/Product.h"
#include "app/UpdateCheck.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "widgets/Controls.h"
#include "widgets/Theme.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace
{

constexpr int iconSide = 24;
constexpr int textWidth = 340;

} // namespace

UpdateDialog::UpdateDialog(QWidget *parent) : QDialog(parent), m_check(new UpdateCheck(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Check Update"));
    buildWidgets();
    connect(m_check, &UpdateCheck::finished, this, &UpdateDialog::showAnswer);
    connect(m_open, &QPushButton::clicked, this, &UpdateDialog::openPage);
    connect(m_again, &QPushButton::clicked, this, &UpdateDialog::check);
    check();
}

void UpdateDialog::buildWidgets()
{
    m_icon = new QLabel;
    m_icon->setAlignment(Qt::AlignTop);
    m_title = new QLabel;
    m_title->setObjectName(QStringLiteral("updateTitleLabel"));
    m_title->setFont(theme::sectionTitle(font()));
    m_title->setWordWrap(true);
    m_detail = new QLabel;
    m_detail->setObjectName(QStringLiteral("updateDetailLabel"));
    m_detail->setTextFormat(Qt::PlainText);
    m_detail->setWordWrap(true);
    m_detail->setMinimumWidth(textWidth);
    m_detail->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_progress = new QProgressBar;
    m_progress->setRange(0, 0);
    m_progress->setTextVisible(false);
    m_progress->setMaximumHeight(theme::barHeight);

    auto *buttons = new QDialogButtonBox;
    m_open = buttons->addButton(tr("Open the download page"), QDialogButtonBox::AcceptRole);
    m_open->setObjectName(QStringLiteral("openPageButton"));
    theme::makePrimary(m_open);
    m_again = buttons->addButton(tr("Try again"), QDialogButtonBox::ActionRole);
    m_again->setObjectName(QStringLiteral("tryAgainButton"));
    m_close = buttons->addButton(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(theme::spaceSection, theme::spaceSection, theme::spaceSection,
                               theme::spaceWide);
    layout->setHorizontalSpacing(theme::spaceWide);
    layout->setVerticalSpacing(theme::spaceSnug);
    layout->addWidget(m_icon, 0, 0, 2, 1);
    layout->addWidget(m_title, 0, 1);
    layout->addWidget(m_detail, 1, 1);
    layout->addWidget(m_progress, 2, 1);
    layout->setRowMinimumHeight(3, theme::spaceSnug);
    layout->addWidget(buttons, 4, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void UpdateDialog::check()
{
    const QIcon icon = controls::image("Update24");
    m_icon->setPixmap(icon.pixmap(QSize(iconSide, iconSide), devicePixelRatio()));
    m_title->setText(tr("Looking for a newer version..."));
    m_detail->setText(tr("You have version %1.").arg(product::version().toString()));
    m_progress->show();
    m_open->hide();
    m_again->hide();
    m_close->setText(tr("Cancel"));
    m_close->setFocus();
    const QString feed = product::updateFeed.read();
    if (feed == product::updateFeed.fallback)
        showNoFeed();
    else
        m_check->start(QUrl(feed, QUrl::StrictMode), product::version());
}

void UpdateDialog::showNoFeed()
{
    m_title->setText(tr("Updates cannot be checked"));
    m_detail->setText(tr("No release feed is set up for this build. You have version %1.")
                          .arg(product::version().toString()));
    m_progress->hide();
    m_close->setText(tr("Close"));
}

void UpdateDialog::showAnswer(const UpdateAnswer &answer)
{
    const bool newer = answer.kind == UpdateAnswer::Kind::Newer;
    const bool failed = answer.kind == UpdateAnswer::Kind::Failed;
    const QIcon icon = controls::image(failed ? "Warning16" : newer ? "Downloads24" : "Checkmark16");
    m_icon->setPixmap(icon.pixmap(QSize(iconSide, iconSide), devicePixelRatio()));
    m_title->setText(failed  ? tr("The check for updates failed")
                     : newer ? tr("Version %1 is available").arg(answer.version.toString())
                             : tr("Fernlight Larkspur is up to date"));
    const QString have = tr("You have version %1.").arg(product::version().toString());
    m_detail->setText(failed ? answer.problem : have);
    m_page = answer.page;
    m_progress->hide();
    m_open->setVisible(newer);
    m_again->setVisible(failed);
    m_close->setText(tr("Close"));
    (newer ? m_open : failed ? m_again : m_close)->setFocus();
}

void UpdateDialog::openPage()
{
    if (!platform::shell().openWebPage(m_page)) {
        platform::dialogs().warn(
            this, windowTitle(),
            tr("The browser could not be started. The address is:\n%1").arg(m_page.toString()));
        return;
    }
    accept();
}
