// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/AboutDialog.h"

#include "app/InstallationFolder.h"
#include "app/Product.h"
#include "platform/Paths.h"
#include "platform/Shell.h"
#include "widgets/Theme.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace
{

constexpr int iconSide = 64;
constexpr int dialogWidth = 600;
constexpr int licencesHeight = 230;

QString ownFolder()
{
    return platform::shownPath(QCoreApplication::applicationDirPath());
}

QString licencesFolder()
{
    return ownFolder() + QLatin1String("\\licenses");
}

} // namespace

AboutDialog::AboutDialog(QWidget *parent) : QDialog(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("About"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::spaceSection, theme::spaceSection, theme::spaceSection,
                               theme::spaceWide);
    layout->setSpacing(theme::spaceWide);
    layout->addLayout(buildHeader());
    layout->addWidget(buildLicences());
    layout->addLayout(buildFolder());
    layout->addWidget(buildButtons());
    setFixedWidth(dialogWidth);
}

QLayout *AboutDialog::buildHeader()
{
    auto *icon = new QLabel;
    icon->setPixmap(QIcon(QStringLiteral(":/resources/images/rocket.ico"))
                        .pixmap(QSize(iconSide, iconSide), devicePixelRatio()));
    auto *title = new QLabel(QString(product::name));
    title->setObjectName(QStringLiteral("productLabel"));
    title->setFont(theme::headline(font()));
    auto *version = new QLabel(
        tr("Version %1, built with Qt %2").arg(product::version().toString(), QLatin1StringView(qVersion())));
    version->setObjectName(QStringLiteral("versionLabel"));
    version->setTextInteractionFlags(Qt::TextSelectableByMouse);
    theme::makeMuted(version);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(theme::spaceTight);
    texts->addStretch();
    texts->addWidget(title);
    texts->addWidget(version);
    texts->addStretch();
    auto *header = new QHBoxLayout;
    header->setSpacing(theme::spaceWide);
    header->addWidget(icon);
    header->addLayout(texts, 1);
    return header;
}

QWidget *AboutDialog::buildLicences()
{
    // Only the table of the notices is shown; the text above it is covered by the sentence here.
    QFile notices(QStringLiteral(":/documents/third-party-notices.md"));
    notices.open(QIODevice::ReadOnly);
    const QString text = QString::fromUtf8(notices.readAll());
    const QString table = text.mid(text.indexOf(QLatin1String("\n|")));

    auto *browser = new QTextBrowser;
    browser->setObjectName(QStringLiteral("licencesTextBrowser"));
    browser->setAccessibleName(tr("Licences"));
    browser->setTabChangesFocus(true);
    browser->setMarkdown(
        tr("Free software under the GNU General Public License, version 3 or any later version "
           "(GPL-3.0-or-later). It comes without any warranty. It uses:") +
        QLatin1Char('\n') + table);
    browser->setMinimumHeight(licencesHeight);
    return browser;
}

QLayout *AboutDialog::buildFolder()
{
    auto *title = new QLabel(tr("Companion programs are started from:"));
    // A line edit, since a label would clip a long path that cannot be wrapped.
    m_folder = new QLineEdit;
    m_folder->setObjectName(QStringLiteral("installationFolderEdit"));
    m_folder->setReadOnly(true);
    title->setBuddy(m_folder);
    m_reset = new QPushButton(tr("Reset to this program's folder"));
    m_reset->setObjectName(QStringLiteral("resetFolderButton"));
    m_reset->setAutoDefault(false);
    connect(m_reset, &QPushButton::clicked, this, &AboutDialog::resetFolder);

    auto *folder = new QVBoxLayout;
    folder->setSpacing(theme::spaceSnug);
    folder->addWidget(title);
    folder->addWidget(m_folder);
    folder->addWidget(m_reset, 0, Qt::AlignLeading);
    showFolder();
    return folder;
}

QWidget *AboutDialog::buildButtons()
{
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    if (platform::fileExists(licencesFolder())) {
        QPushButton *open = buttons->addButton(tr("Full licence texts"), QDialogButtonBox::ActionRole);
        connect(open, &QPushButton::clicked, this, [] { platform::shell().openFile(licencesFolder()); });
    }
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    buttons->button(QDialogButtonBox::Close)->setFocus();
    return buttons;
}

void AboutDialog::resetFolder()
{
    installation::setFolder(ownFolder());
    showFolder();
}

void AboutDialog::showFolder()
{
    const QString folder = platform::shownPath(installation::folder());
    m_folder->setText(folder);
    m_folder->setCursorPosition(0);
    m_reset->setEnabled(folder.compare(ownFolder(), Qt::CaseInsensitive) != 0);
}
